#include "terminal/GridScroll.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

GridScroll scrollOver(std::int64_t rows, std::int64_t shown, std::int64_t dropped = 0)
{
    GridScroll scroll;
    scroll.update(rows, shown, dropped);
    return scroll;
}

TEST(GridScroll, FollowsTheOutputAtFirst)
{
    GridScroll scroll = scrollOver(24, 24);
    EXPECT_EQ(scroll.top(), 0);
    scroll.update(30, 24, 0);
    EXPECT_EQ(scroll.top(), 6);
    EXPECT_TRUE(scroll.isFollowing());
}

TEST(GridScroll, AReaderWhoScrolledUpStaysWhereTheyAre)
{
    GridScroll scroll = scrollOver(100, 20);
    scroll.scrollBy(-30);
    EXPECT_EQ(scroll.top(), 50);
    scroll.update(200, 20, 0);
    EXPECT_EQ(scroll.top(), 50);
    EXPECT_FALSE(scroll.isFollowing());
}

TEST(GridScroll, AReaderStaysOnTheSameTextWhenTheOldestRowsDrop)
{
    GridScroll scroll = scrollOver(100, 20, 5);
    scroll.scrollTo(40);
    scroll.update(100, 20, 17);
    EXPECT_EQ(scroll.top(), 28);
}

TEST(GridScroll, TextThatIsDroppedLeavesTheReaderAtTheOldestRow)
{
    GridScroll scroll = scrollOver(100, 20);
    scroll.scrollTo(3);
    scroll.update(100, 20, 50);
    EXPECT_EQ(scroll.top(), 0);
    EXPECT_FALSE(scroll.isFollowing());
}

TEST(GridScroll, ScrollingToTheEndFollowsAgain)
{
    GridScroll scroll = scrollOver(100, 20);
    scroll.scrollTo(10);
    scroll.scrollBy(1000);
    EXPECT_EQ(scroll.top(), 80);
    EXPECT_TRUE(scroll.isFollowing());
}

TEST(GridScroll, ScrollingIsLimitedToTheRowsThereAre)
{
    GridScroll scroll = scrollOver(100, 20);
    scroll.scrollBy(-1000);
    EXPECT_EQ(scroll.top(), 0);
    GridScroll small = scrollOver(5, 20);
    small.scrollBy(3);
    EXPECT_EQ(small.top(), 0);
    EXPECT_TRUE(small.isFollowing());
}

TEST(GridScroll, TypingBringsBackTheEnd)
{
    GridScroll scroll = scrollOver(100, 20);
    scroll.scrollTo(0);
    scroll.follow();
    EXPECT_EQ(scroll.top(), 80);
    EXPECT_TRUE(scroll.isFollowing());
}

TEST(GridScroll, ALowerViewStillShowsTheEnd)
{
    GridScroll scroll = scrollOver(100, 20);
    scroll.update(100, 10, 0);
    EXPECT_EQ(scroll.top(), 90);
}

TEST(GridScroll, AHistoryThatIsEmptiedKeepsThePlaceInRange)
{
    GridScroll scroll = scrollOver(100, 20);
    scroll.scrollTo(50);
    scroll.update(20, 20, 80);
    EXPECT_EQ(scroll.top(), 0);
}

TEST(GridScroll, MillionsOfRowsAreNoLimit)
{
    GridScroll scroll = scrollOver(5'000'000'000, 24);
    EXPECT_EQ(scroll.top(), 4'999'999'976);
}

}  // namespace
}  // namespace tavrel
