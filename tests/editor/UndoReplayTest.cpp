#include "editor/UndoReplay.h"

#include "PlainText.h"

#include "editor/TextStorage.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

/// Makes random replacements one after another, and notes them.
class Recorder {
public:
    explicit Recorder(std::u16string_view text) : storage_(TextSnapshot(text)) {}

    void replace(TextRange range, std::u16string_view text)
    {
        EditorUndoSnapshot snapshot;
        snapshot.replacementRange = clampedRange(range, storage_.length());
        snapshot.replacedText = storage_.snapshot().slice(range);
        snapshot.insertedText = TextSnapshot(text);
        storage_.replace(range, text);
        group_.snapshots.push_back(std::move(snapshot));
    }
    std::u16string replayed(ReplayDirection direction)
    {
        for (const std::vector<TextEdit>& edits : replayBatches(group_, direction))
            storage_.apply(edits);
        return storage_.snapshot().text();
    }
    std::size_t batchCount(ReplayDirection direction) const
    {
        return replayBatches(group_, direction).size();
    }
    std::u16string text() const { return storage_.snapshot().text(); }

private:
    TextStorage storage_;
    EditorUndoGroup group_;
};

TEST(UndoReplay, TakesEditsFromLeftToRightInOneBatch)
{
    Recorder recorder(u"abcdef");
    recorder.replace({0, 1}, u"xyz");
    recorder.replace({4, 2}, u"");
    recorder.replace({4, 0}, u"!");
    EXPECT_EQ(recorder.text(), u"xyzb!ef");
    EXPECT_EQ(recorder.batchCount(ReplayDirection::backwards), 1U);
    EXPECT_EQ(recorder.batchCount(ReplayDirection::forwards), 1U);
    EXPECT_EQ(recorder.replayed(ReplayDirection::backwards), u"abcdef");
    EXPECT_EQ(recorder.replayed(ReplayDirection::forwards), u"xyzb!ef");
}

TEST(UndoReplay, OpensABatchWhereAnEditGoesBack)
{
    Recorder recorder(u"abcdef");
    recorder.replace({5, 1}, u"xy");
    recorder.replace({0, 2}, u"");
    EXPECT_EQ(recorder.batchCount(ReplayDirection::backwards), 2U);
    EXPECT_EQ(recorder.replayed(ReplayDirection::backwards), u"abcdef");
    EXPECT_EQ(recorder.replayed(ReplayDirection::forwards), u"cdexy");
}

TEST(UndoReplay, OpensABatchWhereAnEditReachesIntoTheOneBefore)
{
    Recorder recorder(u"abcdef");
    recorder.replace({2, 0}, u"12345");
    recorder.replace({4, 4}, u"-");
    EXPECT_EQ(recorder.batchCount(ReplayDirection::backwards), 2U);
    EXPECT_EQ(recorder.replayed(ReplayDirection::backwards), u"abcdef");
    EXPECT_EQ(recorder.replayed(ReplayDirection::forwards), u"ab12-def");
}

TEST(UndoReplay, GivesNoBatchForAnEmptyGroup)
{
    EXPECT_TRUE(replayBatches({}, ReplayDirection::backwards).empty());
    EXPECT_TRUE(replayBatches({}, ReplayDirection::forwards).empty());
}

TEST(UndoReplay, LeadsBackAndForthOverRandomEdits)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTexts random(seed);
        const std::u16string first = random.units(30);
        Recorder recorder(first);
        for (std::size_t edit = random.number(8); edit > 0; --edit)
            recorder.replace(random.range(recorder.text().size(), 5), random.units(5));
        const std::u16string last = recorder.text();
        ASSERT_EQ(recorder.replayed(ReplayDirection::backwards), first);
        ASSERT_EQ(recorder.replayed(ReplayDirection::forwards), last);
    }
}

}  // namespace
}  // namespace tavrel
