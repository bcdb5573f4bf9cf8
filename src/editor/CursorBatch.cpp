#include "editor/CursorBatch.h"

#include <algorithm>
#include <utility>

namespace tavrel {

namespace {

/// Goes through the edits from left to right. Locations in the text before all of them, once they
/// are moved, lie in the text as the edits so far leave it.
class BatchBuilder {
public:
    BatchBuilder(const TextSnapshot& text, const CursorState& before) : text_(text), before_(before)
    {
        batch_.afterSelection = before.selection;
    }

    void reserve(std::size_t editCount)
    {
        batch_.replacements.reserve(editCount);
        batch_.snapshots.reserve(editCount);
        cursors_.reserve(editCount);
    }

    void add(const ResolvedMultiCursorEdit& edit)
    {
        addCursor(edit);
        addReplacement(edit);
        inserted_ += edit.replacement.length();
        removed_ += edit.range.length;
    }

    CursorBatch finish()
    {
        const std::size_t newLength = moved(text_.length());
        batch_.afterSelection = clampedRange(batch_.afterSelection, newLength);
        batch_.afterCursors =
            CursorLocations::normalised(std::move(cursors_), newLength, batch_.afterSelection);
        const auto state = std::make_shared<const EditorUndoState>(
            EditorUndoState{.beforeSelection = before_.selection,
                            .afterSelection = batch_.afterSelection,
                            .beforeSecondaryCursorLocations = before_.cursors,
                            .afterSecondaryCursorLocations = batch_.afterCursors,
                            .beforeIsModified = before_.isModified});
        for (EditorUndoSnapshot& snapshot : batch_.snapshots)
            snapshot.state = state;
        return std::move(batch_);
    }

private:
    std::size_t moved(std::size_t location) const { return location + inserted_ - removed_; }

    void addCursor(const ResolvedMultiCursorEdit& edit)
    {
        const std::size_t behind = edit.range.location + edit.replacement.length();
        const std::size_t newLength =
            moved(text_.length()) + edit.replacement.length() - edit.range.length;
        const std::size_t cursor =
            std::min(moved(edit.cursorAfterLocation.value_or(behind)), newLength);
        if (edit.isPrimary)
            batch_.afterSelection = {cursor, 0};
        else
            cursors_.push_back(cursor);
    }

    void addReplacement(const ResolvedMultiCursorEdit& edit)
    {
        TextSnapshot replaced = text_.slice(edit.range);
        if (replaced == edit.replacement)
            return;
        batch_.snapshots.push_back(
            {.replacementRange = {moved(edit.range.location), edit.range.length},
             .replacedText = std::move(replaced),
             .insertedText = edit.replacement,
             .state = nullptr});
        batch_.replacements.push_back({edit.range, edit.replacement});
    }

    const TextSnapshot& text_;
    const CursorState& before_;
    CursorBatch batch_;
    std::vector<std::size_t> cursors_;
    std::size_t inserted_ = 0;
    std::size_t removed_ = 0;
};

}  // namespace

CursorBatch cursorBatch(const TextSnapshot& text, const std::vector<ResolvedMultiCursorEdit>& edits,
                        const CursorState& before)
{
    BatchBuilder builder(text, before);
    builder.reserve(edits.size());
    for (const ResolvedMultiCursorEdit& edit : edits)
        builder.add(edit);
    return builder.finish();
}

}  // namespace tavrel
