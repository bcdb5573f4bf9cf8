#include "terminal/GridSelection.h"

#include "platform/Unicode.h"
#include "terminal/RowLinks.h"
#include "terminal/TerminalEmulator.h"

#include <algorithm>
#include <vector>

namespace tavrel {
namespace {

std::vector<TerminalCell> cellsOf(const TerminalEmulator& emulator, std::int64_t row)
{
    const TerminalRow source = emulator.row(row);
    std::vector<TerminalCell> cells(static_cast<std::size_t>(source.columns()));
    source.copyCells(cells);
    return cells;
}

bool hasRow(const TerminalEmulator& emulator, std::int64_t row)
{
    return row >= 0 && row < visibleRowCount(emulator);
}

}  // namespace

std::int64_t visibleRowCount(const TerminalEmulator& emulator)
{
    return emulator.historyLength() + emulator.rows();
}

GridPosition clampedPosition(const TerminalEmulator& emulator, GridPosition position)
{
    return {std::clamp<std::int64_t>(position.row, 0, visibleRowCount(emulator) - 1),
            std::clamp<std::int64_t>(position.column, 0, emulator.columns() - 1)};
}

GridSelection selectionBetween(GridPosition anchor, GridPosition head)
{
    return {std::min(anchor, head), std::max(anchor, head)};
}

std::optional<GridSelection> wordSelection(const TerminalEmulator& emulator, GridPosition position,
                                           std::u32string_view wordCharacters)
{
    if (!hasRow(emulator, position.row))
        return std::nullopt;
    const TerminalRow row = emulator.row(position.row);
    const auto isWord = [&](std::int64_t column) {
        if (column < 0 || column >= row.columns())
            return false;
        const char32_t character = row.cell(static_cast<int>(column)).character;
        return isAlphanumeric(character) ||
               wordCharacters.find(character) != std::u32string_view::npos;
    };
    if (!isWord(position.column))
        return std::nullopt;
    GridPosition start = position;
    GridPosition end = position;
    while (isWord(start.column - 1))
        --start.column;
    while (isWord(end.column + 1))
        ++end.column;
    return GridSelection{start, end};
}

std::optional<GridSelection> rowSelection(const TerminalEmulator& emulator, std::int64_t row)
{
    if (!hasRow(emulator, row) || emulator.columns() == 0)
        return std::nullopt;
    return GridSelection{{row, 0}, {row, emulator.columns() - 1}};
}

ColumnRange selectedColumns(const GridSelection& selection, std::int64_t row, int columns)
{
    if (row < selection.start.row || row > selection.end.row)
        return {};
    const auto limited = [&](std::int64_t column) {
        return static_cast<int>(std::clamp<std::int64_t>(column, 0, columns));
    };
    const int start = row == selection.start.row ? limited(selection.start.column) : 0;
    const int end = row == selection.end.row
                        ? limited(std::min<std::int64_t>(selection.end.column, columns) + 1)
                        : columns;
    return {start, std::max(start, end)};
}

std::optional<std::u16string> selectedText(const TerminalEmulator& emulator,
                                           const GridSelection& selection)
{
    const std::int64_t last = std::min(selection.end.row, visibleRowCount(emulator) - 1);
    if (selection.start.row > last)
        return std::nullopt;
    std::u16string text;
    bool isFirst = true;
    for (std::int64_t row = std::max<std::int64_t>(selection.start.row, 0); row <= last; ++row) {
        const std::vector<TerminalCell> cells = cellsOf(emulator, row);
        const ColumnRange columns = selectedColumns(selection, row, static_cast<int>(cells.size()));
        if (columns.start == columns.end)
            continue;
        const auto begin = static_cast<std::size_t>(columns.start);
        const auto count = static_cast<std::size_t>(columns.end - columns.start);
        std::u16string line = rowText(std::span(cells).subspan(begin, count));
        if (static_cast<std::size_t>(columns.end) == cells.size())
            line.resize(line.find_last_not_of(u' ') + 1);
        if (!isFirst)
            text.push_back(u'\n');
        isFirst = false;
        text += line;
    }
    return text;
}

std::optional<std::u16string> linkAt(const TerminalEmulator& emulator, GridPosition position)
{
    if (!hasRow(emulator, position.row) || position.column < 0)
        return std::nullopt;
    const std::vector<TerminalCell> cells = cellsOf(emulator, position.row);
    for (const TextRange& link : rowLinks(cells)) {
        if (link.contains(static_cast<std::size_t>(position.column)))
            return rowText(std::span(cells).subspan(link.location, link.length));
    }
    return std::nullopt;
}

}  // namespace tavrel
