// What the mouse carries from one place of a text to another.

#include "editor/CursorBatch.h"
#include "editor/EditorPane.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace tavrel {

void EditorPane::moveText(TextRange range, std::size_t location)
{
    range = clampedRange(range, text().length());
    location = std::min(location, text().length());
    if (range.isEmpty() || (location >= range.location && location <= range.end()))
        return;
    clearSecondaryCursors();
    std::vector<ResolvedMultiCursorEdit> edits;
    edits.push_back({{range, {}, {}}, false});
    edits.push_back({{{location, 0}, text().slice(range), {}}, true});
    const TextRange before = clampedRange(selectedRange(), text().length());
    CursorBatch batch = cursorBatch(text(), applicableEdits(std::move(edits), text().length()),
                                    {before, normalisedCursors(before), document().isModified});
    // The place that was left is no place for a cursor, and what was moved stays selected.
    const std::size_t start = location > range.location ? location - range.length : location;
    batch.afterSelection = {start, range.length};
    batch.afterCursors = {};
    const auto state = std::make_shared<const EditorUndoState>(
        EditorUndoState{.beforeSelection = before,
                        .afterSelection = batch.afterSelection,
                        .beforeIsModified = document().isModified});
    for (EditorUndoSnapshot& snapshot : batch.snapshots)
        snapshot.state = state;
    carryOut(std::move(batch));
}

}  // namespace tavrel
