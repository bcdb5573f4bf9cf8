#include "terminal/CellRuns.h"

namespace tavrel {
namespace {

bool looksAlike(const TerminalCell& a, const TerminalCell& b)
{
    return a.foreground == b.foreground && a.background == b.background && a.flags == b.flags;
}

}  // namespace

void appendCellRuns(std::span<const TerminalCell> cells, ColumnRange selected,
                    std::span<const TextRange> links, std::vector<CellRun>& runs)
{
    std::size_t link = 0;
    const TerminalCell* previous = nullptr;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        while (link < links.size() && links[link].end() <= i)
            ++link;
        const CellState state{selected.contains(static_cast<int>(i)),
                              link < links.size() && links[link].location <= i};
        const TerminalCell& cell = cells[i];
        if (!previous || runs.back().state != state || !looksAlike(*previous, cell))
            runs.push_back({static_cast<int>(i), 0, state, true});
        ++runs.back().length;
        runs.back().isBlank = runs.back().isBlank && cell.character == U' ';
        previous = &cell;
    }
}

}  // namespace tavrel
