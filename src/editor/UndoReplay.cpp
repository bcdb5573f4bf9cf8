#include "editor/UndoReplay.h"

#include <algorithm>
#include <cstddef>

namespace tavrel {

namespace {

/// Some neighbours among the snapshots of a group.
class Snapshots {
public:
    using Iterator = std::deque<EditorUndoSnapshot>::const_iterator;

    Snapshots(Iterator begin, Iterator end) : begin_(begin), end_(end) {}

    Iterator begin() const { return begin_; }
    Iterator end() const { return end_; }
    bool isEmpty() const { return begin_ == end_; }
    std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }

private:
    Iterator begin_;
    Iterator end_;
};

/// The first of `snapshots`, as far as they were made strictly from left to right.
Snapshots ascendingRun(Snapshots snapshots)
{
    const auto end =
        std::adjacent_find(snapshots.begin(), snapshots.end(),
                           [](const EditorUndoSnapshot& one, const EditorUndoSnapshot& next) {
                               return next.replacementRange.location < one.insertedRange().end();
                           });
    return {snapshots.begin(), end == snapshots.end() ? end : std::next(end)};
}

/// The snapshots of an ascending run lie in the text after it just as they were noted: what was
/// replaced later stands further to the right and has moved none of them.
std::vector<TextEdit> inverseEdits(Snapshots run)
{
    std::vector<TextEdit> edits;
    edits.reserve(run.size());
    for (const EditorUndoSnapshot& snapshot : run)
        edits.push_back({snapshot.insertedRange(), snapshot.replacedText});
    return edits;
}

/// Takes what the earlier replacements of the run have added off each location, which gives the
/// coordinates before the whole run.
std::vector<TextEdit> forwardEdits(Snapshots run)
{
    std::vector<TextEdit> edits;
    edits.reserve(run.size());
    std::size_t inserted = 0;
    std::size_t removed = 0;
    for (const EditorUndoSnapshot& snapshot : run) {
        const TextRange range = snapshot.replacementRange;
        edits.push_back(
            {{range.location + removed - inserted, range.length}, snapshot.insertedText});
        inserted += snapshot.insertedText.length();
        removed += range.length;
    }
    return edits;
}

}  // namespace

std::vector<std::vector<TextEdit>> replayBatches(const EditorUndoGroup& group,
                                                 ReplayDirection direction)
{
    std::vector<std::vector<TextEdit>> batches;
    Snapshots rest(group.snapshots.begin(), group.snapshots.end());
    while (!rest.isEmpty()) {
        const Snapshots run = ascendingRun(rest);
        batches.push_back(direction == ReplayDirection::backwards ? inverseEdits(run)
                                                                  : forwardEdits(run));
        rest = {run.end(), rest.end()};
    }
    if (direction == ReplayDirection::backwards)
        std::reverse(batches.begin(), batches.end());
    return batches;
}

}  // namespace tavrel
