#include "editor/GitChangeCommands.h"

#include <gtest/gtest.h>
#include <limits>

namespace tavrel {
namespace {

using Kind = GitLineChangeKind;

TEST(GitChangeCommands, GoesFromBlockToBlockAndRound)
{
    const GitLineDiff diff{{{3, 2, Kind::added}, {8, 1, Kind::modified}}, {}};
    EXPECT_EQ(nextChangedBlock(diff, 20, 1), 3);
    EXPECT_EQ(nextChangedBlock(diff, 20, 3), 8);
    EXPECT_EQ(nextChangedBlock(diff, 20, 4), 8);
    EXPECT_EQ(nextChangedBlock(diff, 20, 8), 3);
    EXPECT_EQ(nextChangedBlock(diff, 20, 20), 3);
}

TEST(GitChangeCommands, WithoutChangesThereIsNoBlock)
{
    EXPECT_EQ(nextChangedBlock({}, 20, 1), std::nullopt);
    EXPECT_EQ(nextChangedBlock({}, 0, 1), std::nullopt);
}

TEST(GitChangeCommands, LinesThatTouchAreOneBlockWhateverTheirKind)
{
    const GitLineDiff diff{{{3, 2, Kind::added}, {5, 1, Kind::modified}}, {}};
    EXPECT_EQ(nextChangedBlock(diff, 20, 3), 3);
    const GitLineDiff removedBehind{{{3, 2, Kind::added}}, {4, 5}};
    EXPECT_EQ(nextChangedBlock(removedBehind, 20, 3), 3);
}

TEST(GitChangeCommands, RemovalsCountOnTheLineTheySitAt)
{
    const GitLineDiff diff{{}, {0, 6, 30}};
    EXPECT_EQ(nextChangedBlock(diff, 20, 1), 6);
    EXPECT_EQ(nextChangedBlock(diff, 20, 6), 20);
    EXPECT_EQ(nextChangedBlock(diff, 20, 20), 1);
    EXPECT_EQ(nextChangedBlock({{}, {0, 1}}, 20, 5), 1);
}

TEST(GitChangeCommands, MarksOfALongerTextCountAsOnTheLastLine)
{
    constexpr std::int64_t huge = std::numeric_limits<std::int32_t>::max();
    const GitLineDiff diff{{{5, huge, Kind::added}, {huge, huge, Kind::added}}, {huge}};
    EXPECT_EQ(nextChangedBlock(diff, 3, 1), 3);
    EXPECT_EQ(nextChangedBlock(diff, 3, 3), 3);
    EXPECT_EQ(nextChangedBlock(diff, 0, 1), 1);
}

}  // namespace
}  // namespace tavrel
