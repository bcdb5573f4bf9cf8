#pragma once

#include "terminal/TerminalStyle.h"

#include <algorithm>
#include <span>
#include <type_traits>
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
    bool isEmpty() const;

    /// Writes `count` characters, one at least, from `column` on in `style`.
    template<class Character>
    void write(int column, const Character* characters, int count, TerminalStyle style, int columns)
    {
        prepare(column, count, columns);
        char32_t* const to = characters_.data() + column;
        TerminalStyle* const styles = styles_.data() + column;
        // Programs that paint write a few cells at a time, for which blocks of fixed size, the last
        // of which may overlap the one before, take half of the time that loops take.
        if (count >= 16) {
            std::copy_n(characters, count, to);
            std::fill_n(styles, count, style);
            return;
        }
        const auto block = [&](auto size, int at) {
            for (int i = 0; i < size; ++i)
                to[at + i] = characters[at + i];
            for (int i = 0; i < size; ++i)
                styles[at + i] = style;
        };
        if (count >= 8) {
            block(std::integral_constant<int, 8>(), 0);
            block(std::integral_constant<int, 8>(), count - 8);
        } else if (count >= 4) {
            block(std::integral_constant<int, 4>(), 0);
            block(std::integral_constant<int, 4>(), count - 4);
        } else {
            block(std::integral_constant<int, 1>(), 0);
            if (count > 1) {
                block(std::integral_constant<int, 1>(), 1);
                block(std::integral_constant<int, 1>(), count - 1);
            }
        }
    }

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
        if (characters_.size() < static_cast<std::size_t>(columns))
            grow(columns);
        if (column > length_)
            fillGap(column);
        length_ = std::max(length_, column + count);
    }
    void writeBlanks(int column, int count, TerminalStyle style, int columns);
    void grow(int columns);
    void fillGap(int end);

    // Both are empty, or at least as long as the grid is wide; only the first `length_` count.
    std::vector<char32_t> characters_;
    std::vector<TerminalStyle> styles_;
    int length_ = 0;
    TerminalStyle fill_;
};

}  // namespace tavrel
