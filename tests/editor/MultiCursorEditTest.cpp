#include "editor/MultiCursorEdit.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

ResolvedMultiCursorEdit edit(TextRange range, std::u16string_view replacement,
                             bool isPrimary = false)
{
    return {{range, TextSnapshot(replacement), {}}, isPrimary};
}

std::vector<std::pair<TextRange, std::u16string>>
applicable(std::vector<ResolvedMultiCursorEdit> edits, std::size_t length)
{
    std::vector<std::pair<TextRange, std::u16string>> kept;
    for (const ResolvedMultiCursorEdit& each : applicableEdits(std::move(edits), length))
        kept.emplace_back(each.range, each.replacement.text());
    return kept;
}

using Kept = std::vector<std::pair<TextRange, std::u16string>>;

TEST(MultiCursorEdit, SortsByPlaceAndThenByLength)
{
    EXPECT_EQ(applicable({edit({5, 1}, u"c"), edit({2, 2}, u"b"), edit({2, 0}, u"a")}, 10),
              (Kept{{{2, 0}, u"a"}, {{2, 2}, u"b"}, {{5, 1}, u"c"}}));
}

TEST(MultiCursorEdit, ClampsRangesToTheText)
{
    EXPECT_EQ(applicable({edit({3, 9}, u"a"), edit({80, 5}, u"b")}, 4),
              (Kept{{{3, 1}, u"a"}, {{4, 0}, u"b"}}));
}

TEST(MultiCursorEdit, DropsAnEditThatBeginsInsideOneKeptBefore)
{
    EXPECT_EQ(applicable({edit({1, 4}, u"a"), edit({3, 1}, u"b"), edit({5, 1}, u"c")}, 10),
              (Kept{{{1, 4}, u"a"}, {{5, 1}, u"c"}}));
}

TEST(MultiCursorEdit, OfTwoAtOnePlaceTheShorterComesFirst)
{
    EXPECT_EQ(applicable({edit({1, 4}, u"a"), edit({1, 2}, u"b")}, 10), (Kept{{{1, 2}, u"b"}}));
}

TEST(MultiCursorEdit, ADroppedEditHidesNoOther)
{
    EXPECT_EQ(applicable({edit({1, 2}, u"a"), edit({2, 6}, u"b"), edit({3, 1}, u"c")}, 10),
              (Kept{{{1, 2}, u"a"}, {{3, 1}, u"c"}}));
}

TEST(MultiCursorEdit, KeepsSeveralEmptyEditsAtOnePlaceInTheirOrder)
{
    EXPECT_EQ(applicable({edit({3, 0}, u"1"), edit({3, 0}, u"2"), edit({3, 0}, u"3")}, 10),
              (Kept{{{3, 0}, u"1"}, {{3, 0}, u"2"}, {{3, 0}, u"3"}}));
}

TEST(MultiCursorEdit, IsPrimaryWhereItsRangeEndsAtThePrimaryCursor)
{
    const auto resolved = resolvedEdits({{{2, 1}, {}, {}}, {{3, 2}, {}, {}}, {{5, 0}, {}, {}}}, 3);
    ASSERT_EQ(resolved.size(), 3U);
    EXPECT_TRUE(resolved[0].isPrimary);
    EXPECT_FALSE(resolved[1].isPrimary);
    EXPECT_FALSE(resolved[2].isPrimary);
}

TEST(MultiCursorEdit, AnEmptyEditKeepsItsCursor)
{
    const ResolvedMultiCursorEdit empty = emptyEditAt(4, true);
    EXPECT_EQ(empty.range, (TextRange{4, 0}));
    EXPECT_TRUE(empty.replacement.isEmpty());
    EXPECT_EQ(empty.cursorAfterLocation, 4U);
    EXPECT_TRUE(empty.isPrimary);
}

}  // namespace
}  // namespace tavrel
