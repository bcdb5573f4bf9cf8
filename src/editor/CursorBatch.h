#pragma once

#include "editor/CursorLocations.h"
#include "editor/MultiCursorEdit.h"
#include "editor/TextEdit.h"
#include "editor/UndoHistory.h"

#include <vector>

namespace tavrel {

/// The state of a pane that a step of undo brings back.
struct CursorState {
    TextRange selection;
    CursorLocations cursors;
    bool isModified = false;
};

/// Edits at several cursors as one operation: what is replaced, what undo has to know of it, and
/// where the cursors stand after it.
struct CursorBatch {
    std::vector<TextEdit> replacements;         // In order; those that change nothing are left out.
    std::vector<EditorUndoSnapshot> snapshots;  // One for each replacement.
    TextRange afterSelection;
    CursorLocations afterCursors;
};

/// Works out what edits do to `text`. They must lie in order without overlap (`applicableEdits`).
/// The cursor of the primary edit becomes the selection; where no edit is primary the selection
/// stays, clamped. Costs O(edits log length).
CursorBatch cursorBatch(const TextSnapshot& text, const std::vector<ResolvedMultiCursorEdit>& edits,
                        const CursorState& before);

}  // namespace tavrel
