#pragma once

#include "editor/EditorPane.h"
#include "editor/TextEdit.h"

#include <utility>
#include <vector>

namespace tavrel {

// The roads from what a command computes to what a pane does, for one cursor and for many.

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

/// Carries out an edit where there is one cursor. One that changes nothing is none.
void applyAtOneCursor(EditorPane& pane, const MultiCursorEdit& edit);

/// The same for every cursor, or for the selection's location alone; in that case any secondary
/// cursors are gone.
template<typename MakeEdit>
void editAtEveryCursor(EditorPane& pane, MakeEdit makeEdit)
{
    if (pane.actsAtEveryCursor())
        applyAtEveryCursor(pane, makeEdit);
    else
        applyAtOneCursor(pane, makeEdit(pane.selectedRange().location));
}

/// Carries out one edit for each line that a cursor stands in, or for the line of the selection's
/// location alone. `makeEdit` takes the location of the line's first cursor and the line's range.
/// A further cursor keeps its place; where the edit takes that place away, the edit stands for it.
template<typename MakeEdit>
void editAtEveryLine(EditorPane& pane, MakeEdit makeEdit)
{
    const TextSnapshot text = pane.text();
    const std::size_t primary = pane.selectedRange().location;
    if (!pane.actsAtEveryCursor()) {
        applyAtOneCursor(pane, makeEdit(primary, text.lineRange({primary, 0})));
        return;
    }
    std::vector<ResolvedMultiCursorEdit> edits;
    std::size_t lineEdit = 0;  // Index of the edit of the line at hand.
    std::optional<std::size_t> lineStart;
    for (const std::size_t cursor : pane.allCursorLocations()) {
        const bool isPrimary = cursor == primary;
        const TextRange line = text.lineRange({cursor, 0});
        if (lineStart != line.location) {
            lineStart = line.location;
            lineEdit = edits.size();
            edits.push_back({makeEdit(cursor, line), isPrimary});
        } else if (cursor >= edits[lineEdit].range.end()) {
            edits.push_back(emptyEditAt(cursor, isPrimary));
        } else if (isPrimary) {
            edits[lineEdit].isPrimary = true;
        }
    }
    pane.applyEdits(std::move(edits), pane.selectedRange());
}

/// Applies edits that lie in `block`, as one replacement of it, and selects what the block becomes.
void replaceBlock(EditorPane& pane, TextRange block, std::vector<TextEdit> edits);

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
