#include "terminal/GridSelection.h"
#include "terminal/TerminalEmulator.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(GridSelection, RunsFromTheEarlierCellToTheLater)
{
    const GridSelection selection = selectionBetween({3, 5}, {1, 7});
    EXPECT_EQ(selection, (GridSelection{{1, 7}, {3, 5}}));
    EXPECT_EQ(selectionBetween({1, 7}, {3, 5}), selection);
    EXPECT_EQ(selectionBetween({2, 9}, {2, 4}), (GridSelection{{2, 4}, {2, 9}}));
}

TEST(GridSelection, CoversPartsOfTheFirstAndLastRowAndAllBetween)
{
    const GridSelection selection{{1, 7}, {3, 5}};
    EXPECT_EQ(selectedColumns(selection, 0, 10), (ColumnRange{0, 0}));
    EXPECT_EQ(selectedColumns(selection, 1, 10), (ColumnRange{7, 10}));
    EXPECT_EQ(selectedColumns(selection, 2, 10), (ColumnRange{0, 10}));
    EXPECT_EQ(selectedColumns(selection, 3, 10), (ColumnRange{0, 6}));
    EXPECT_EQ(selectedColumns(selection, 4, 10), (ColumnRange{0, 0}));
}

TEST(GridSelection, IsLimitedToTheRowsThatAWindowHas)
{
    EXPECT_EQ(selectedColumns({{0, 50}, {0, 99}}, 0, 10), (ColumnRange{10, 10}));
    EXPECT_EQ(selectedColumns({{0, -9}, {0, 99}}, 0, 10), (ColumnRange{0, 10}));
}

TEST(GridSelection, ARowIsSelectedFromEndToEnd)
{
    TerminalEmulator emulator(10, 3);
    emulator.feed("a\r\nb\r\nc\r\nd");
    EXPECT_EQ(rowSelection(emulator, 3), (GridSelection{{3, 0}, {3, 9}}));
    EXPECT_EQ(rowSelection(emulator, 4), std::nullopt);
    EXPECT_EQ(rowSelection(emulator, -1), std::nullopt);
}

TEST(GridSelection, PositionsAreLimitedToTheGridAndItsHistory)
{
    TerminalEmulator emulator(10, 3);
    emulator.feed("a\r\nb\r\nc\r\nd");
    EXPECT_EQ(clampedPosition(emulator, {-5, -5}), (GridPosition{0, 0}));
    EXPECT_EQ(clampedPosition(emulator, {99, 99}), (GridPosition{3, 9}));
    EXPECT_EQ(visibleRowCount(emulator), 4);
}

TEST(GridSelection, TheHistoryDoesNotCountOnTheAlternateScreen)
{
    TerminalEmulator emulator(10, 3);
    emulator.feed("a\r\nb\r\nc\r\nd\x1b[?1049h");
    EXPECT_EQ(visibleRowCount(emulator), 3);
}

TEST(GridSelection, ALinkIsFoundByAnyOfItsColumns)
{
    TerminalEmulator emulator(40, 3);
    emulator.feed("see (https://a.b/c). end");
    EXPECT_EQ(linkAt(emulator, {0, 5}), u"https://a.b/c");
    EXPECT_EQ(linkAt(emulator, {0, 17}), u"https://a.b/c");
    EXPECT_EQ(linkAt(emulator, {0, 4}), std::nullopt);
    EXPECT_EQ(linkAt(emulator, {0, 18}), std::nullopt);
    EXPECT_EQ(linkAt(emulator, {1, 5}), std::nullopt);
    EXPECT_EQ(linkAt(emulator, {9, 5}), std::nullopt);
    EXPECT_EQ(linkAt(emulator, {0, -1}), std::nullopt);
    EXPECT_EQ(linkAt(emulator, {0, 99}), std::nullopt);
}

}  // namespace
}  // namespace tavrel
