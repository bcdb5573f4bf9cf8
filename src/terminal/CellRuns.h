#pragma once

#include "platform/TextRange.h"
#include "terminal/GridColors.h"

#include <span>
#include <vector>

namespace tavrel {

/// Neighbouring cells of a row that are drawn alike.
struct CellRun {
    int start = 0;   // The first column.
    int length = 0;  // At least 1.
    CellState state;
    bool isBlank = true;  // Whether no cell has anything but a blank.

    bool operator==(const CellRun&) const = default;
};

/// Columns of one row, from `start` up to but not including `end`.
struct ColumnRange {
    int start = 0;
    int end = 0;

    bool contains(int column) const { return column >= start && column < end; }
    bool operator==(const ColumnRange&) const = default;
};

/// Splits a row wherever a colour, a flag, or the cell's part in the selection or a link changes.
/// `links` are in order and do not overlap. The runs go to the end of `runs`. Costs O(length).
void appendCellRuns(std::span<const TerminalCell> cells, ColumnRange selected,
                    std::span<const TextRange> links, std::vector<CellRun>& runs);

}  // namespace tavrel
