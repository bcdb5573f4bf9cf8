#pragma once

#include "terminal/CellRuns.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

class TerminalEmulator;

/// A cell. Rows are absolute: row 0 is the oldest of the history; columns count from 0.
struct GridPosition {
    std::int64_t row = 0;
    std::int64_t column = 0;

    auto operator<=>(const GridPosition&) const = default;
};

/// A stretch of cells in reading order, both ends included.
struct GridSelection {
    GridPosition start;
    GridPosition end;

    bool operator==(const GridSelection&) const = default;
};

/// The number of rows that can be seen: the history, where it is in reach, and the screen.
std::int64_t visibleRowCount(const TerminalEmulator& emulator);

/// The cell of the grid that is nearest to `position`.
GridPosition clampedPosition(const TerminalEmulator& emulator, GridPosition position);

/// The cells from `anchor` to `head`, whichever comes first.
GridSelection selectionBetween(GridPosition anchor, GridPosition head);

/// The word around a cell: letters, numbers and the characters of `wordCharacters`, on this row
/// alone. Nothing where the cell is none of them or lies outside the grid.
std::optional<GridSelection> wordSelection(const TerminalEmulator& emulator, GridPosition position,
                                           std::u32string_view wordCharacters);

/// A whole row; nothing outside the grid.
std::optional<GridSelection> rowSelection(const TerminalEmulator& emulator, std::int64_t row);

/// The columns of `row` that the selection covers, limited to `columns`.
ColumnRange selectedColumns(const GridSelection& selection, std::int64_t row, int columns);

/// The text of the selection, its rows joined by line feeds, without the blanks at the end of each
/// row that it reaches the end of. Nothing where it begins behind the last row. Costs time in
/// proportion to the selection.
std::optional<std::u16string> selectedText(const TerminalEmulator& emulator,
                                           const GridSelection& selection);

/// The address at a cell, or nothing.
std::optional<std::u16string> linkAt(const TerminalEmulator& emulator, GridPosition position);

}  // namespace tavrel
