#include "editor/CursorLocations.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

using Offsets = std::vector<std::size_t>;

Offsets normalised(Offsets offsets, std::size_t length, TextRange primary)
{
    return CursorLocations::normalised(std::move(offsets), length, primary).offsets();
}

TEST(CursorLocations, SortsAndTakesEachOnce)
{
    EXPECT_EQ(normalised({7, 3, 7, 5, 3}, 10, {0, 0}), (Offsets{3, 5, 7}));
}

TEST(CursorLocations, MovesOffsetsPastTheEndToIt)
{
    EXPECT_EQ(normalised({100, 12, 2}, 4, {0, 0}), (Offsets{2, 4}));
}

TEST(CursorLocations, DropsTheOffsetOfAnEmptyPrimarySelection)
{
    EXPECT_EQ(normalised({1, 2, 3}, 10, {2, 0}), (Offsets{1, 3}));
    EXPECT_EQ(normalised({1, 2, 2, 3}, 10, {2, 0}), (Offsets{1, 3}));
}

TEST(CursorLocations, ComparesWithThePrimaryAfterClamping)
{
    EXPECT_EQ(normalised({1, 99}, 4, {4, 0}), (Offsets{1}));
}

TEST(CursorLocations, KeepsTheOffsetOfASelection)
{
    EXPECT_EQ(normalised({1, 2, 3}, 10, {2, 5}), (Offsets{1, 2, 3}));
}

TEST(CursorLocations, IsEmptyForNoOffsets)
{
    EXPECT_TRUE(CursorLocations().isEmpty());
    EXPECT_TRUE(CursorLocations::normalised({}, 5, {}).isEmpty());
    EXPECT_TRUE(CursorLocations::normalised({3}, 5, {3, 0}).isEmpty());
    EXPECT_EQ(CursorLocations(), CursorLocations::normalised({3}, 5, {3, 0}));
}

TEST(CursorLocations, ListsThePrimaryAmongTheOthers)
{
    const auto cursors = CursorLocations::normalised({1, 8}, 10, {4, 0});
    EXPECT_EQ(cursors.withPrimary(4, 10), (Offsets{1, 4, 8}));
    EXPECT_EQ(cursors.withPrimary(0, 10), (Offsets{0, 1, 8}));
    EXPECT_EQ(cursors.withPrimary(99, 10), (Offsets{1, 8, 10}));
    EXPECT_EQ(CursorLocations().withPrimary(99, 10), (Offsets{10}));
}

TEST(CursorLocations, ListsAPrimaryThatIsOneOfThemOnce)
{
    const auto cursors = CursorLocations::normalised({1, 8}, 10, {4, 2});
    EXPECT_EQ(cursors.withPrimary(8, 10), (Offsets{1, 8}));
}

TEST(CursorLocations, ClampsStaleOffsetsIntoAShorterText)
{
    const auto cursors = CursorLocations::normalised({1, 8, 9}, 10, {0, 0});
    EXPECT_EQ(cursors.withPrimary(0, 3), (Offsets{0, 1, 3}));
}

}  // namespace
}  // namespace tavrel
