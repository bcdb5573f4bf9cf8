#pragma once

#include "editor/EditorPane.h"

#include <utility>
#include <vector>

namespace tavrel {

/// Carries out one edit for each cursor of `pane`, as one step. `makeEdit` takes the location of a
/// cursor and gives its `MultiCursorEdit`; the one made for the primary location is the primary.
template<typename MakeEdit>
void applyAtEveryCursor(EditorPane& pane, MakeEdit makeEdit)
{
    const std::size_t primary = pane.selectedRange().location;
    std::vector<ResolvedMultiCursorEdit> edits;
    for (const std::size_t cursor : pane.allCursorLocations())
        edits.push_back({makeEdit(cursor), cursor == primary});
    pane.applyEdits(std::move(edits), pane.selectedRange());
}

/// Moves every cursor of `pane` to where `motion` takes its location, or the primary one alone; in
/// that case any secondary ones are gone, and so is the selection.
template<typename Motion>
void moveCursors(EditorPane& pane, Motion motion)
{
    const bool movesAll = pane.actsAtEveryCursor();
    std::vector<std::size_t> moved;
    if (movesAll) {
        for (const std::size_t cursor : pane.secondaryCursorLocations())
            moved.push_back(motion(cursor));
    } else {
        pane.clearSecondaryCursors();
    }
    const std::size_t target = motion(pane.selectedRange().location);
    pane.setSelectedRange({target, 0});
    if (movesAll)
        pane.storeCursors(std::move(moved));
    pane.scrollToVisible({target, 0});
}

}  // namespace tavrel
