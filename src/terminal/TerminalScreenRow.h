#pragma once

#include "terminal/TerminalStyle.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <vector>

namespace tavrel {

/// A row of the grid that programs write to.
///
/// Cells are kept up to the last one written; all behind it are blanks of one style. So erasing a
/// row, which scrolling does with each line, costs nothing in proportion to its width. Columns
/// count from 0. Every operation is told the width of the grid, `columns`, which is the same for
/// all of its rows, and takes only columns within it.
class TerminalScreenRow {
public:
    /// The cells kept; at and behind `length()` are blanks of `fill()`.
    int length() const { return length_; }
    TerminalStyle fill() const { return fill_; }
    std::span<const char32_t> characters() const
    {
        return {characters_.data(), static_cast<std::size_t>(length_)};
    }
    std::span<const TerminalStyle> styles() const
    {
        return {styles_.data(), static_cast<std::size_t>(length_)};
    }

    TerminalCell cell(int column) const;
    /// Whether every cell is a blank on the theme's background.
    bool isEmpty(int columns) const;

    /// Writes `count` characters, `blockSize` at least, from `column` on in `style`.
    template<class Character>
    void write(int column, const Character* characters, int count, TerminalStyle style, int columns)
    {
        prepare(column, count, columns);
        int at = 0;
        for (; at + blockSize <= count; at += blockSize)
            writeBlock<blockSize>(column + at, characters + at, style);
        // The last block may write once more what the one before it has written.
        writeBlock<blockSize>(column + count - blockSize, characters + count - blockSize, style);
    }
    /// Writes the first `count` of a block of characters, one at least.
    template<class Character>
    void writeShort(int column, const std::array<Character, 8>& characters, int count,
                    TerminalStyle style, int columns)
    {
        // Programs that paint write a few cells between sequences, and how many cannot be foretold:
        // blocks of fixed sizes, which may overlap, need the fewest branches.
        const bool isLast = column + count >= length_;
        prepare(column, count, columns);
        const Character* const from = characters.data();
        if (isLast) {
            writeBlock<blockSize>(column, from, style);
        } else if (count >= 4) {
            writeBlock<4>(column, from, style);
            writeBlock<4>(column + count - 4, from + count - 4, style);
        } else {
            writeBlock<1>(column, from, style);
            if (count > 1) {
                writeBlock<1>(column + 1, from + 1, style);
                writeBlock<1>(column + count - 1, from + count - 1, style);
            }
        }
    }
    static constexpr int blockSize = 8;

    /// Every cell becomes a blank of `style`.
    void clear(TerminalStyle style)
    {
        length_ = 0;
        fill_ = style;
    }
    /// The cells from `begin` up to `end` become blanks of `style`.
    void erase(int begin, int end, TerminalStyle style, int columns);
    /// Inserts `count` blanks of `style` at `column`; the last cells are dropped.
    void insertBlanks(int column, int count, TerminalStyle style, int columns);
    /// Removes `count` cells at `column`, and puts as many blanks of `style` at the end.
    void removeCells(int column, int count, TerminalStyle style, int columns);

    /// Cuts the row to `newColumns` cells, or pads it with default cells.
    void setWidth(int columns, int newColumns);
    /// Makes room for `count` cells, which become the row's, and default cells behind them. The
    /// caller writes all of them.
    void assign(int count, int columns);
    std::span<char32_t> characters()
    {
        return {characters_.data(), static_cast<std::size_t>(length_)};
    }
    std::span<TerminalStyle> styles()
    {
        return {styles_.data(), static_cast<std::size_t>(length_)};
    }
    /// Keeps the cells up to `end` as cells, where they have been blanks behind the last one.
    void padTo(int end, int columns);

private:
    // Sees to it that the cells before `column` are kept and that those up to `column + count` can
    // be written.
    void prepare(int column, int count, int columns)
    {
        if (width_ < columns)
            setRoom(columns);
        if (column > length_)
            fillGap(column);
        length_ = std::max(length_, column + count);
    }
    template<int size, class Character>
    void writeBlock(int column, const Character* characters, TerminalStyle style)
    {
        // A copy that nothing else can point to, so that the stores need not wait for each other.
        std::array<Character, size> block;
        std::memcpy(block.data(), characters, sizeof block);
        char32_t* const to = characters_.data() + column;
        for (int i = 0; i < size; ++i)
            to[i] = block[static_cast<std::size_t>(i)];
        TerminalStyle* const styles = styles_.data() + column;
        for (int i = 0; i < size; ++i)
            styles[i] = style;
    }
    void writeBlanks(int column, int count, TerminalStyle style, int columns);
    void setRoom(int columns);
    void fillGap(int end);

    // The cells of a row, and those that a block may write behind its end.
    static std::size_t roomFor(int columns)
    {
        return static_cast<std::size_t>(columns + 2 * blockSize);
    }

    // Both have room for a row of `width_` cells; only the first `length_` count.
    std::vector<char32_t> characters_;
    std::vector<TerminalStyle> styles_;
    int width_ = 0;
    int length_ = 0;
    TerminalStyle fill_;
};

}  // namespace tavrel
