#include "terminal/TerminalGrid.h"

#include <algorithm>
#include <numeric>

namespace tavrel {

TerminalGrid::TerminalGrid(int columns, int rows)
    : columns_(columns), rows_(static_cast<std::size_t>(rows)), order_(rows_.size())
{
    std::iota(order_.begin(), order_.end(), 0);
}

TerminalScreenRow& TerminalGrid::rotateUp(int top, int bottom)
{
    const auto first = order_.begin() + top;
    std::rotate(first, first + 1, order_.begin() + bottom + 1);
    return row(bottom);
}

TerminalScreenRow& TerminalGrid::rotateDown(int top, int bottom)
{
    const auto last = order_.begin() + bottom;
    std::rotate(order_.begin() + top, last, last + 1);
    return row(top);
}

void TerminalGrid::clearRows(int begin, int end, TerminalStyle style)
{
    for (int y = begin; y < end; ++y)
        row(y).clear(style);
}

void TerminalGrid::setColumns(int columns)
{
    for (TerminalScreenRow& row : rows_)
        row.setWidth(columns_, columns);
    columns_ = columns;
}

void TerminalGrid::adjustRows(int removedFirst, int addedFirst, int rows)
{
    std::vector<TerminalScreenRow> moved(static_cast<std::size_t>(rows));
    const int kept = std::min(rowCount() - removedFirst, rows - addedFirst);
    for (int y = 0; y < kept; ++y)
        std::swap(moved[static_cast<std::size_t>(addedFirst + y)], row(removedFirst + y));
    rows_ = std::move(moved);
    order_.resize(rows_.size());
    std::iota(order_.begin(), order_.end(), 0);
}

}  // namespace tavrel
