#include "terminal/TerminalScreenRow.h"

#include <algorithm>

namespace tavrel {

TerminalCell TerminalScreenRow::cell(int column) const
{
    if (column >= length_)
        return fill_.cell(U' ');
    const auto at = static_cast<std::size_t>(column);
    return styles_[at].cell(characters_[at]);
}

bool TerminalScreenRow::isEmpty(int columns) const
{
    const auto isPlain = [](TerminalStyle style) {
        return style.background() == TerminalColor::defaultBackground();
    };
    return (length_ >= columns || isPlain(fill_)) &&
           std::ranges::all_of(characters(), [](char32_t c) { return c == U' '; }) &&
           std::ranges::all_of(styles(), isPlain);
}

void TerminalScreenRow::erase(int begin, int end, TerminalStyle style, int columns)
{
    if (end == columns) {
        if (style != fill_)
            padTo(begin, columns);
        length_ = std::min(length_, begin);
        fill_ = style;
        return;
    }
    if (begin >= end || (begin >= length_ && style == fill_))
        return;
    writeBlanks(begin, end - begin, style, columns);
}

void TerminalScreenRow::insertBlanks(int column, int count, TerminalStyle style, int columns)
{
    if (column < length_) {
        const int length = std::min(length_ + count, columns);
        const int moved = length - column - count;
        prepare(column, length - column, columns);
        char32_t* characters = characters_.data() + column;
        TerminalStyle* styles = styles_.data() + column;
        std::copy_backward(characters, characters + moved, characters + moved + count);
        std::copy_backward(styles, styles + moved, styles + moved + count);
    }
    erase(column, column + count, style, columns);
}

void TerminalScreenRow::removeCells(int column, int count, TerminalStyle style, int columns)
{
    if (style != fill_)
        padTo(columns, columns);
    if (column < length_) {
        const int kept = std::max(length_ - column - count, 0);
        char32_t* characters = characters_.data() + column;
        TerminalStyle* styles = styles_.data() + column;
        std::copy_n(characters + count, kept, characters);
        std::copy_n(styles + count, kept, styles);
        length_ = column + kept;
    }
    fill_ = style;
}

void TerminalScreenRow::setWidth(int columns, int newColumns)
{
    if (newColumns > columns && fill_ != TerminalStyle()) {
        padTo(columns, columns);
        fill_ = TerminalStyle();
    }
    length_ = std::min(length_, newColumns);
    if (width_ > 0)
        setRoom(newColumns);
}

void TerminalScreenRow::assign(int count, int columns)
{
    length_ = 0;
    fill_ = TerminalStyle();
    prepare(0, count, columns);
}

void TerminalScreenRow::padTo(int end, int columns)
{
    prepare(std::max(end, length_), 0, columns);
}

void TerminalScreenRow::writeBlanks(int column, int count, TerminalStyle style, int columns)
{
    constexpr auto blanks = [] {
        std::array<char32_t, blockSize> block{};
        block.fill(U' ');
        return block;
    }();
    prepare(column, count, columns);
    for (; count > blockSize; count -= blockSize, column += blockSize)
        writeBlock<blockSize>(column, blanks.data(), style);
    writeShort(column, blanks, count, style, columns);
}

void TerminalScreenRow::setRoom(int columns)
{
    characters_.resize(roomFor(columns));
    styles_.resize(roomFor(columns));
    width_ = columns;
}

void TerminalScreenRow::fillGap(int end)
{
    // Whole blocks: what they write behind `end` is no cell of the row yet.
    for (int column = length_; column < end; column += blockSize) {
        std::fill_n(characters_.begin() + column, blockSize, U' ');
        std::fill_n(styles_.begin() + column, blockSize, fill_);
    }
}

}  // namespace tavrel
