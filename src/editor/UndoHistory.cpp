#include "editor/UndoHistory.h"

#include <iterator>
#include <utility>

namespace tavrel {

void UndoHistory::recordSnapshot(EditorUndoSnapshot snapshot, ClearRedo clearRedo,
                                 Mergeable mergeable, TimePoint now)
{
    if (snapshot.replacedText.isEmpty() && snapshot.insertedText.isEmpty())
        return;
    EditorUndoGroup* open = mergeable == Mergeable::yes ? openGroup(now) : nullptr;
    if (open) {
        open->snapshots.push_back(std::move(snapshot));
        open->lastEditDate = now;
        clearRedoIf(clearRedo);
        return;
    }
    EditorUndoGroup group;
    group.snapshots.push_back(std::move(snapshot));
    if (mergeable == Mergeable::yes)
        group.lastEditDate = now;
    pushGroup(std::move(group), clearRedo);
}

void UndoHistory::recordGroup(std::vector<EditorUndoSnapshot> snapshots, ClearRedo clearRedo,
                              TimePoint now)
{
    if (snapshots.empty())
        return;
    if (EditorUndoGroup* open = openGroup(now)) {
        open->snapshots.insert(open->snapshots.end(), std::make_move_iterator(snapshots.begin()),
                               std::make_move_iterator(snapshots.end()));
        open->lastEditDate = now;
        clearRedoIf(clearRedo);
        return;
    }
    pushGroup(
        {{std::make_move_iterator(snapshots.begin()), std::make_move_iterator(snapshots.end())},
         now},
        clearRedo);
}

void UndoHistory::pushGroup(EditorUndoGroup group, ClearRedo clearRedo)
{
    undoStack_.push_back(std::move(group));
    while (undoStack_.size() > maximumGroupCount)
        undoStack_.pop_front();
    clearRedoIf(clearRedo);
}

const EditorUndoGroup* UndoHistory::undo()
{
    if (undoStack_.empty())
        return nullptr;
    redoStack_.push_back(std::move(undoStack_.back()));
    undoStack_.pop_back();
    return &redoStack_.back();
}

const EditorUndoGroup* UndoHistory::redo()
{
    if (redoStack_.empty())
        return nullptr;
    EditorUndoGroup group = std::move(redoStack_.back());
    redoStack_.pop_back();
    group.lastEditDate.reset();
    pushGroup(std::move(group), ClearRedo::no);
    return &undoStack_.back();
}

void UndoHistory::markModified()
{
    for (std::deque<EditorUndoGroup>* stack : {&undoStack_, &redoStack_}) {
        for (EditorUndoGroup& group : *stack) {
            // Only the outermost states of a group are ever brought back.
            for (EditorUndoSnapshot* end : {&group.snapshots.front(), &group.snapshots.back()}) {
                EditorUndoState state = *end->state;
                state.beforeIsModified = state.afterIsModified = true;
                end->state = std::make_shared<const EditorUndoState>(std::move(state));
            }
        }
    }
}

void UndoHistory::clear()
{
    undoStack_.clear();
    redoStack_.clear();
}

EditorUndoGroup* UndoHistory::openGroup(TimePoint now)
{
    if (undoStack_.empty())
        return nullptr;
    EditorUndoGroup& top = undoStack_.back();
    const bool isOpen = top.lastEditDate && now - *top.lastEditDate <= groupingInterval;
    return isOpen ? &top : nullptr;
}

void UndoHistory::clearRedoIf(ClearRedo clearRedo)
{
    if (clearRedo == ClearRedo::yes)
        redoStack_.clear();
}

}  // namespace tavrel
