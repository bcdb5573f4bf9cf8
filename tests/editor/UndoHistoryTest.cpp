#include "editor/UndoHistory.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

using namespace std::chrono_literals;

EditorUndoSnapshot insertion(std::size_t location, std::u16string_view inserted)
{
    EditorUndoSnapshot snapshot;
    snapshot.replacementRange = {location, 0};
    snapshot.insertedText = TextSnapshot(inserted);
    return snapshot;
}

constexpr TimePoint start{};

void record(UndoHistory& history, TimePoint now, Mergeable mergeable = Mergeable::yes,
            ClearRedo clearRedo = ClearRedo::yes)
{
    history.recordSnapshot(insertion(0, u"x"), clearRedo, mergeable, now);
}

TEST(UndoHistory, JoinsEditsUpToExactlyOneSecondApart)
{
    UndoHistory history;
    record(history, start);
    record(history, start + 1s);
    EXPECT_EQ(history.undoStack().size(), 1U);
    record(history, start + 2s + 1ns);
    EXPECT_EQ(history.undoStack().size(), 2U);
    EXPECT_EQ(history.undoStack().front().snapshots.size(), 2U);
}

TEST(UndoHistory, SlidesTheIntervalWithEachEdit)
{
    UndoHistory history;
    for (int edit = 0; edit < 10; ++edit)
        record(history, start + edit * 900ms);
    EXPECT_EQ(history.undoStack().size(), 1U);
    EXPECT_EQ(history.undoStack().back().snapshots.size(), 10U);
    EXPECT_EQ(history.undoStack().back().lastEditDate, start + 8100ms);
}

TEST(UndoHistory, RecordsNothingForAnEmptyEdit)
{
    UndoHistory history;
    history.recordSnapshot({}, ClearRedo::yes, Mergeable::yes, start);
    history.recordGroup({}, ClearRedo::yes, start);
    EXPECT_TRUE(history.undoStack().empty());
}

TEST(UndoHistory, AnEmptyEditKeepsRedo)
{
    UndoHistory history;
    record(history, start);
    history.undo();
    history.recordSnapshot({}, ClearRedo::yes, Mergeable::yes, start);
    history.recordGroup({}, ClearRedo::yes, start);
    EXPECT_EQ(history.redoStack().size(), 1U);
}

TEST(UndoHistory, AnEditThatDoesNotMergeStandsAlone)
{
    UndoHistory history;
    record(history, start);
    record(history, start, Mergeable::no);
    EXPECT_EQ(history.undoStack().size(), 2U);
    EXPECT_FALSE(history.undoStack().back().lastEditDate);
    record(history, start);
    EXPECT_EQ(history.undoStack().size(), 3U);
}

TEST(UndoHistory, AGroupJoinsTheGroupOnTop)
{
    UndoHistory history;
    record(history, start);
    history.recordGroup({insertion(0, u"a"), insertion(2, u"b")}, ClearRedo::yes, start + 500ms);
    ASSERT_EQ(history.undoStack().size(), 1U);
    EXPECT_EQ(history.undoStack().back().snapshots.size(), 3U);
    EXPECT_EQ(history.undoStack().back().lastEditDate, start + 500ms);
    history.recordGroup({insertion(0, u"a")}, ClearRedo::yes, start + 1501ms);
    EXPECT_EQ(history.undoStack().size(), 2U);
}

TEST(UndoHistory, AnEditAfterUndoJoinsAYoungGroupOnTopAndEmptiesRedo)
{
    UndoHistory history;
    record(history, start);
    record(history, start, Mergeable::no);
    ASSERT_NE(history.undo(), nullptr);
    record(history, start + 1s);
    EXPECT_EQ(history.undoStack().size(), 1U);
    EXPECT_EQ(history.undoStack().back().snapshots.size(), 2U);
    EXPECT_TRUE(history.redoStack().empty());
}

TEST(UndoHistory, AnEditAfterRedoOpensAGroup)
{
    UndoHistory history;
    record(history, start);
    history.undo();
    history.redo();
    EXPECT_FALSE(history.undoStack().back().lastEditDate);
    record(history, start);
    EXPECT_EQ(history.undoStack().size(), 2U);
}

TEST(UndoHistory, RedoKeepsWhatIsLeftToRedo)
{
    UndoHistory history;
    record(history, start);
    record(history, start + 2s);
    history.undo();
    history.undo();
    history.redo();
    EXPECT_EQ(history.undoStack().size(), 1U);
    EXPECT_EQ(history.redoStack().size(), 1U);
}

TEST(UndoHistory, UndoKeepsTheDateOfTheGroup)
{
    UndoHistory history;
    record(history, start + 3s);
    history.undo();
    EXPECT_EQ(history.redoStack().back().lastEditDate, start + 3s);
}

TEST(UndoHistory, LeavesRedoWhereItIsTold)
{
    UndoHistory history;
    record(history, start);
    history.undo();
    record(history, start, Mergeable::yes, ClearRedo::no);
    EXPECT_EQ(history.redoStack().size(), 1U);
}

TEST(UndoHistory, KeepsFiveHundredGroups)
{
    UndoHistory history;
    for (int edit = 0; edit < 501; ++edit)
        history.recordSnapshot(insertion(static_cast<std::size_t>(edit), u"x"), ClearRedo::yes,
                               Mergeable::yes, start + edit * 2s);
    EXPECT_EQ(history.undoStack().size(), 500U);
    EXPECT_EQ(history.undoStack().front().snapshots.front().replacementRange.location, 1U);
}

TEST(UndoHistory, MergingAtTheLimitDropsNothing)
{
    UndoHistory history;
    for (int edit = 0; edit < 500; ++edit)
        record(history, start + edit * 2s);
    record(history, start + 499 * 2s + 1s);
    EXPECT_EQ(history.undoStack().size(), 500U);
    EXPECT_EQ(history.undoStack().front().snapshots.size(), 1U);
    EXPECT_EQ(history.undoStack().back().snapshots.size(), 2U);
}

TEST(UndoHistory, HasNothingToUndoOrRedoAtFirst)
{
    UndoHistory history;
    EXPECT_EQ(history.undo(), nullptr);
    EXPECT_EQ(history.redo(), nullptr);
}

TEST(UndoHistory, ClearEmptiesBothStacks)
{
    UndoHistory history;
    record(history, start);
    record(history, start + 2s);
    history.undo();
    history.clear();
    EXPECT_TRUE(history.undoStack().empty());
    EXPECT_TRUE(history.redoStack().empty());
}

}  // namespace
}  // namespace tavrel
