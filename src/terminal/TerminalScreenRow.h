#pragma once

#include "terminal/TerminalStyle.h"

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
    bool isEmpty() const;

    /// Gives the cells from `column` to `column + count` to the caller to write the characters;
    /// they have `style` already.
    char32_t* write(int column, int count, TerminalStyle style, int columns)
    {
        prepare(column, count, columns);
        std::fill_n(styles_.data() + column, count, style);
        return characters_.data() + column;
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
    void grow(int columns);
    void fillGap(int end);

    // Both are empty, or at least as long as the grid is wide; only the first `length_` count.
    std::vector<char32_t> characters_;
    std::vector<TerminalStyle> styles_;
    int length_ = 0;
    TerminalStyle fill_;
};

}  // namespace tavrel
