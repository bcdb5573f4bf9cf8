// Output of any kind, then everything that looks at the grid: words, rows, links, selected text,
// runs and colours. The first bytes choose the size and the places that are looked at.

#include "platform/Utf8.h"
#include "terminal/CellRuns.h"
#include "terminal/GridSelection.h"
#include "terminal/PasteText.h"
#include "terminal/RowLinks.h"
#include "terminal/TerminalEmulator.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace tavrel;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void checkRow(const TerminalEmulator& emulator, std::int64_t row, ColumnRange selected)
{
    std::vector<TerminalCell> cells(static_cast<std::size_t>(emulator.columns()));
    emulator.row(row).copyCells(cells);
    const std::vector<TextRange> links = rowLinks(cells);
    std::size_t linkEnd = 0;
    for (const TextRange& link : links) {
        require(link.location >= linkEnd && link.length >= 9);
        linkEnd = link.end();
    }
    require(linkEnd <= cells.size());
    std::vector<CellRun> runs;
    appendCellRuns(cells, selected, links, runs);
    int column = 0;
    for (const CellRun& run : runs) {
        require(run.start == column && run.length > 0);
        column += run.length;
        cellColors(cells[static_cast<std::size_t>(run.start)], run.state, GridColors());
    }
    require(column == emulator.columns());
}

void checkSelection(const TerminalEmulator& emulator, const GridSelection& selection)
{
    const auto text = selectedText(emulator, selection);
    const std::int64_t last = std::min(selection.end.row, visibleRowCount(emulator) - 1);
    require(text.has_value() == (selection.start.row <= last));
    for (std::int64_t row = std::max<std::int64_t>(selection.start.row, 0); row <= last; ++row) {
        const ColumnRange columns = selectedColumns(selection, row, emulator.columns());
        require(0 <= columns.start && columns.start <= columns.end &&
                columns.end <= emulator.columns());
        checkRow(emulator, row, columns);
    }
}

void checkPaste(std::string_view bytes)
{
    const std::string pasted = pastedBytes(utf16FromUtf8(bytes), PasteMode::bracketed);
    require(pasted.find("\x1B[201~") == pasted.size() - 6);
    require(pasted.find('\n') == std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t choices = 6;
    if (size < choices)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + choices, size - choices);
    TerminalEmulator emulator(data[0] % 64, data[1] % 24);
    emulator.setScrollbackLimit(50);
    emulator.feed(bytes);

    const auto place = [&](std::size_t row, std::size_t column) {
        return GridPosition{static_cast<std::int8_t>(data[row]),
                            static_cast<std::int8_t>(data[column])};
    };
    const GridPosition anchor = place(2, 3);
    const GridPosition head = place(4, 5);
    checkSelection(emulator, selectionBetween(anchor, head));
    if (const auto word = wordSelection(emulator, anchor, U"-./_"))
        checkSelection(emulator, *word);
    if (const auto row = rowSelection(emulator, head.row))
        checkSelection(emulator, *row);
    require(!linkAt(emulator, anchor) || linkAt(emulator, anchor)->size() >= 9);
    const GridPosition limited = clampedPosition(emulator, head);
    require(limited.row >= 0 && limited.row < visibleRowCount(emulator) && limited.column >= 0 &&
            limited.column < emulator.columns());
    checkPaste(bytes);
    return 0;
}
