#pragma once

#include "editor/CursorLocations.h"
#include "editor/TextSnapshot.h"
#include "platform/Clock.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace tavrel {

/// What was selected around an edit, and whether the document was modified.
struct EditorUndoState {
    TextRange beforeSelection;
    TextRange afterSelection;
    CursorLocations beforeSecondaryCursorLocations;
    CursorLocations afterSecondaryCursorLocations;
    bool beforeIsModified = false;
    bool afterIsModified = true;
};

/// One replacement of text and the state around the edit that it is a part of.
///
/// The texts are slices that share the blocks of the document, so a replacement of a large stretch
/// costs no second copy, and bytes that were no valid text come back with it. The replacements of
/// one key press at many cursors share one state. Small, because a held key makes millions.
struct EditorUndoSnapshot {
    TextRange replacementRange;  // In the text as it stood before this replacement.
    TextSnapshot replacedText;
    TextSnapshot insertedText;
    std::shared_ptr<const EditorUndoState> state;  // Never null in a history.

    /// The stretch that holds the inserted text once the replacement has been made.
    TextRange insertedRange() const { return {replacementRange.location, insertedText.length()}; }
};

/// One step of undo: the replacements in the order in which they were made.
struct EditorUndoGroup {
    std::deque<EditorUndoSnapshot> snapshots;
    /// When the last edit joined the group. Absent, no later edit can join it.
    std::optional<TimePoint> lastEditDate;
};

enum class ClearRedo { no, yes };
enum class Mergeable { no, yes };

/// The undo and redo stacks of one document, and the rule by which edits become one step.
///
/// Edits that follow each other by at most `groupingInterval` join one group, whatever their kind
/// and however long the row of them gets. At most `maximumGroupCount` groups are kept.
class UndoHistory {
public:
    static constexpr std::chrono::nanoseconds groupingInterval = std::chrono::seconds(1);
    static constexpr std::size_t maximumGroupCount = 500;

    /// Records one edit. One that replaces nothing by nothing is no edit.
    void recordSnapshot(EditorUndoSnapshot snapshot, ClearRedo clearRedo, Mergeable mergeable,
                        TimePoint now);

    /// Records the edits of one key press at several cursors, under the same rule.
    void recordGroup(std::vector<EditorUndoSnapshot> snapshots, ClearRedo clearRedo, TimePoint now);

    void pushGroup(EditorUndoGroup group, ClearRedo clearRedo);

    /// Moves the newest group to the redo stack and lets the caller see it. Null when there is
    /// none; valid until the history changes.
    const EditorUndoGroup* undo();

    /// Moves the group undone last back to the undo stack, closed to later edits.
    const EditorUndoGroup* redo();

    /// From now on the text counts as modified whatever is undone: its file has gone.
    void markModified();

    void clear();

    const std::deque<EditorUndoGroup>& undoStack() const { return undoStack_; }
    const std::deque<EditorUndoGroup>& redoStack() const { return redoStack_; }

private:
    /// The newest group if an edit made at `now` joins it, else null.
    EditorUndoGroup* openGroup(TimePoint now);
    void clearRedoIf(ClearRedo clearRedo);

    std::deque<EditorUndoGroup> undoStack_;  // Newest last.
    std::deque<EditorUndoGroup> redoStack_;  // Newest last.
};

}  // namespace tavrel
