#include "terminal/CellRuns.h"
#include "terminal/RowLinks.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

std::vector<CellRun> runsOf(const std::vector<TerminalCell>& cells, ColumnRange selected = {},
                            const std::vector<TextRange>& links = {})
{
    std::vector<CellRun> runs;
    appendCellRuns(cells, selected, links, runs);
    return runs;
}

TEST(CellRuns, ARowOfOneStyleIsOneRun)
{
    EXPECT_EQ(runsOf(cellsOfText(u"abc  ")), (std::vector<CellRun>{{0, 5, {}, false}}));
}

TEST(CellRuns, AnEmptyRowHasNone)
{
    EXPECT_TRUE(runsOf({}).empty());
}

TEST(CellRuns, BlanksAloneAreTold)
{
    EXPECT_EQ(runsOf(cellsOfText(u"   ")), (std::vector<CellRun>{{0, 3, {}, true}}));
}

TEST(CellRuns, EachPartOfAStyleEndsARun)
{
    std::vector<TerminalCell> cells = cellsOfText(u"abcdef");
    cells[1].foreground = TerminalColor::palette(1);
    cells[2].foreground = TerminalColor::palette(1);
    cells[3].background = TerminalColor::palette(1);
    cells[4].flags = TerminalCellFlags::bold;
    EXPECT_EQ(runsOf(cells), (std::vector<CellRun>{{0, 1, {}, false},
                                                   {1, 2, {}, false},
                                                   {3, 1, {}, false},
                                                   {4, 1, {}, false},
                                                   {5, 1, {}, false}}));
}

TEST(CellRuns, TheSelectionEndsARun)
{
    EXPECT_EQ(runsOf(cellsOfText(u"abcdef"), {2, 4}),
              (std::vector<CellRun>{
                  {0, 2, {}, false}, {2, 2, {.isSelected = true}, false}, {4, 2, {}, false}}));
}

TEST(CellRuns, ALinkEndsARun)
{
    EXPECT_EQ(runsOf(cellsOfText(u"ab cd"), {}, {{0, 1}, {3, 2}}),
              (std::vector<CellRun>{{0, 1, {.isLink = true}, false},
                                    {1, 2, {}, false},
                                    {3, 2, {.isLink = true}, false}}));
}

TEST(CellRuns, TwoLinksSideBySideAreDrawnAlike)
{
    EXPECT_EQ(runsOf(cellsOfText(u"abcd"), {}, {{0, 2}, {2, 2}}).size(), 1u);
}

}  // namespace
}  // namespace tavrel
