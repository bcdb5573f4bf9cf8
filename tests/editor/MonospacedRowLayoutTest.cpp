#include "editor/MonospacedRowLayout.h"

#include "editor/VerticalMotion.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

MonospacedRowLayout layoutOf(std::u16string_view text, MonospacedRowLayout::Metrics metrics = {})
{
    return {[text = TextSnapshot(text)] { return text; }, metrics};
}

std::vector<std::u16string> rowsOf(std::u16string_view text, std::size_t columnWidth,
                                   std::size_t tabWidth = 2)
{
    const MonospacedRowLayout layout =
        layoutOf(text, {.columnWidth = columnWidth, .tabWidth = tabWidth});
    std::vector<std::u16string> rows;
    std::size_t place = 0;
    for (;;) {
        const TextRange row = layout.rowAt(place);
        EXPECT_EQ(row.location, place);
        rows.emplace_back(text.substr(row.location, row.length));
        if (row.end() == place || row.end() >= text.size())
            return rows;
        place = row.end();
    }
}

using Rows = std::vector<std::u16string>;

TEST(MonospacedRowLayout, BreaksBehindBlanks)
{
    EXPECT_EQ(rowsOf(u"aaa bbb ccc", 8), (Rows{u"aaa bbb ", u"ccc"}));
    EXPECT_EQ(rowsOf(u"aaa bbb ccc", 7), (Rows{u"aaa bbb ", u"ccc"}));
    EXPECT_EQ(rowsOf(u"aaa bbb ccc", 6), (Rows{u"aaa ", u"bbb ", u"ccc"}));
}

TEST(MonospacedRowLayout, BreaksALongWordWhereItEnds)
{
    EXPECT_EQ(rowsOf(u"abcdefghij", 4), (Rows{u"abcd", u"efgh", u"ij"}));
    EXPECT_EQ(rowsOf(u"a bcdefghi", 4), (Rows{u"a ", u"bcde", u"fghi"}));
}

TEST(MonospacedRowLayout, LetsBlanksHangOver)
{
    EXPECT_EQ(rowsOf(u"abcd     ef", 4), (Rows{u"abcd     ", u"ef"}));
}

TEST(MonospacedRowLayout, KeepsTerminatorsInTheirRow)
{
    EXPECT_EQ(rowsOf(u"ab\r\ncd\u2028ef", 80), (Rows{u"ab\r\n", u"cd\u2028", u"ef"}));
}

TEST(MonospacedRowLayout, HasAnEmptyLastRowBehindATerminator)
{
    const MonospacedRowLayout layout = layoutOf(u"ab\n");
    EXPECT_EQ(layout.rowAt(3), (TextRange{3, 0}));
    EXPECT_EQ(layout.rowAt(99), (TextRange{3, 0}));
    EXPECT_EQ(layoutOf(u"").rowAt(0), (TextRange{0, 0}));
}

TEST(MonospacedRowLayout, DoesNotPartAPair)
{
    EXPECT_EQ(rowsOf(u"\xD83D\xDE00\xD83D\xDE00", 1), (Rows{u"\xD83D\xDE00", u"\xD83D\xDE00"}));
}

TEST(MonospacedRowLayout, ATabReachesTheNextTabStop)
{
    EXPECT_EQ(layoutOf(u"a\tb", {.tabWidth = 4}).xAt(2), 4.0);
    EXPECT_EQ(layoutOf(u"abcd\tb", {.tabWidth = 4}).xAt(5), 8.0);
}

TEST(MonospacedRowLayout, MeasuresFromTheStartOfTheRow)
{
    const MonospacedRowLayout layout = layoutOf(u"aaaa bbbb", {.columnWidth = 5});
    EXPECT_EQ(layout.xAt(4), 4.0);
    EXPECT_EQ(layout.xAt(5), 0.0);
    EXPECT_EQ(layout.xAt(9), 4.0);
}

TEST(MonospacedRowLayout, FindsTheNearestPlaceInARow)
{
    const MonospacedRowLayout layout = layoutOf(u"abc\r\nd");
    const TextRange row = layout.rowAt(0);
    EXPECT_EQ(layout.locationAt(row, 0), 0U);
    EXPECT_EQ(layout.locationAt(row, 1.4), 1U);
    EXPECT_EQ(layout.locationAt(row, 1.6), 2U);
    EXPECT_EQ(layout.locationAt(row, 50), 3U);
}

TEST(MonospacedRowLayout, StaysInAWrappedRow)
{
    const MonospacedRowLayout layout = layoutOf(u"aaaa bbbb", {.columnWidth = 5});
    EXPECT_EQ(layout.locationAt(layout.rowAt(0), 50), 4U);
    EXPECT_EQ(layout.locationAt(layout.rowAt(5), 50), 9U);
}

TEST(MonospacedRowLayout, TakesNoWidthOfNothing)
{
    EXPECT_EQ(rowsOf(u"ab", 0, 0), (Rows{u"a", u"b"}));
}

std::size_t moved(std::u16string_view text, std::size_t location, VerticalDirection direction,
                  std::size_t rowCount, double x)
{
    const TextSnapshot snapshot(text);
    return verticallyMoved(snapshot, layoutOf(text), location, direction, rowCount, x);
}

TEST(VerticalMotion, GoesToTheEndsPastTheLastRow)
{
    EXPECT_EQ(moved(u"ab\ncd", 3, VerticalDirection::down, 1, 0), 5U);
    EXPECT_EQ(moved(u"ab\ncd", 1, VerticalDirection::up, 1, 1), 0U);
    EXPECT_EQ(moved(u"ab\ncd", 0, VerticalDirection::down, 9, 0), 5U);
    EXPECT_EQ(moved(u"ab\ncd", 4, VerticalDirection::up, 9, 1), 0U);
}

TEST(VerticalMotion, ReachesTheEmptyLastRow)
{
    EXPECT_EQ(moved(u"ab\n", 1, VerticalDirection::down, 1, 1), 3U);
    EXPECT_EQ(moved(u"ab\n", 3, VerticalDirection::down, 1, 1), 3U);
    EXPECT_EQ(moved(u"ab\n", 3, VerticalDirection::up, 1, 1), 1U);
}

TEST(VerticalMotion, MovesByRows)
{
    EXPECT_EQ(moved(u"a\nb\nc\nd", 0, VerticalDirection::down, 2, 1), 5U);
    EXPECT_EQ(moved(u"a\nb\nc\nd", 6, VerticalDirection::up, 2, 0), 2U);
    EXPECT_EQ(moved(u"a\nb", 0, VerticalDirection::down, 0, 1), 1U);
}

}  // namespace
}  // namespace tavrel
