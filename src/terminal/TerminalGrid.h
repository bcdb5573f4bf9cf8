#pragma once

#include "terminal/TerminalScreenRow.h"

#include <cstdint>
#include <vector>

namespace tavrel {

/// A grid of rows, all of one width, counted from 0 at the top. Scrolling moves the numbers of its
/// rows and copies no cells.
class TerminalGrid {
public:
    /// `rows` rows of `columns` default cells.
    TerminalGrid(int columns, int rows);

    int columns() const { return columns_; }
    int rowCount() const { return static_cast<int>(order_.size()); }
    TerminalScreenRow& row(int y) { return rows_[order_[static_cast<std::size_t>(y)]]; }
    const TerminalScreenRow& row(int y) const { return rows_[order_[static_cast<std::size_t>(y)]]; }

    /// Moves the row at `top` to `bottom`, so that those between go up by one. The caller fills the
    /// moved row, which is given back.
    TerminalScreenRow& rotateUp(int top, int bottom);
    /// Moves the row at `bottom` to `top`, so that those between go down by one.
    TerminalScreenRow& rotateDown(int top, int bottom);
    /// The rows from `begin` up to `end` become blanks of `style`.
    void clearRows(int begin, int end, TerminalStyle style);

    /// Cuts every row to `columns` cells, or pads it with default cells.
    void setColumns(int columns);
    /// Takes off `removedFirst` rows at the top, puts `addedFirst` rows of default cells there, and
    /// cuts or pads at the bottom until there are `rows`.
    void adjustRows(int removedFirst, int addedFirst, int rows);

private:
    int columns_;
    std::vector<TerminalScreenRow> rows_;
    // For each row from the top its place in `rows_`: all of them, each once.
    std::vector<std::uint32_t> order_;
};

}  // namespace tavrel
