#include "editor/WordRanges.h"

#include "editor/WordOccurrences.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

std::u16string partBefore(std::u16string_view text)
{
    const TextSnapshot snapshot(text);
    return snapshot.text(wordPartBefore(snapshot, snapshot.length()));
}

TEST(WordRanges, PartsOfWords)
{
    const std::pair<std::u16string_view, std::u16string_view> table[] = {
        {u"", u""},
        {u"foo_bar", u"bar"},
        {u"foo_", u"_"},
        {u"foo", u"foo"},
        {u"HTTPServer", u"Server"},
        {u"HTTP", u"HTTP"},
        {u"foo123", u"123"},
        {u"foo()  ", u"foo()  "},
        {u"a foo()  ", u"foo()  "},
        {u"fooBar", u"Bar"},
        {u"  ", u"  "},
        {u"a1_", u"_"},
        {u"A_b", u"b"},
        {u"A1", u"1"},
        {u"Ab1", u"1"},
        {u"aB", u"B"},
        {u"\xD83D\xDE00", u"\xD83D\xDE00"},
        {u"a\xD83D", u"a\xD83D"},
    };
    for (const auto& [text, part] : table)
        EXPECT_EQ(partBefore(text), part);
}

TEST(WordRanges, LocationsPastTheEndAreTheEnd)
{
    const TextSnapshot text(u"foo bar");
    EXPECT_EQ(wordRangeAt(text, 99), (TextRange{4, 3}));
    EXPECT_EQ(wordBoundaryAfter(text, 99), 7U);
    EXPECT_EQ(wordBoundaryBefore(text, 99), 4U);
    EXPECT_EQ(wordsBefore(text, 99, 1), (TextRange{4, 3}));
    EXPECT_EQ(wordPartBefore(text, 99), (TextRange{4, 3}));
}

TEST(WordRanges, CountsWordsFromTheCursor)
{
    const TextSnapshot text(u"one two, three ");
    EXPECT_EQ(wordsBefore(text, 15, 1), (TextRange{9, 6}));
    EXPECT_EQ(wordsBefore(text, 15, 2), (TextRange{4, 11}));
    EXPECT_EQ(wordsBefore(text, 15, 0), (TextRange{9, 6}));
    EXPECT_EQ(wordsBefore(text, 15, -7), (TextRange{9, 6}));
    EXPECT_EQ(wordsBefore(text, 15, 2147483647), (TextRange{0, 15}));
}

TEST(WordRanges, FindsTheWordAtEachPlace)
{
    const TextSnapshot text(u"ab .cd");
    const TextRange expected[] = {{0, 2}, {0, 2}, {0, 2}, {3, 0}, {4, 2}, {4, 2}, {4, 2}};
    for (std::size_t place = 0; place <= 6; ++place)
        EXPECT_EQ(wordRangeAt(text, place), expected[place]) << place;
}

TEST(WordRanges, AnswersAcrossBlocks)
{
    const std::u16string units = u"ab cdef_\xD83D\xDE00gh ij";
    for (const std::size_t blockSize : {1U, 2U, 7U}) {
        const TextSnapshot text(units, blockSize);
        EXPECT_EQ(wordRangeAt(text, 9), (TextRange{3, 9}));
        EXPECT_EQ(wordBoundaryAfter(text, 2), 12U);
        EXPECT_EQ(wordBoundaryBefore(text, 12), 3U);
    }
}

TEST(WordOccurrences, ASelectionIsTheWordOnlyWhereNoWordGoesOn)
{
    const TextSnapshot text(u"foo+bar foo");
    EXPECT_EQ(wordOfSelection(text, {0, 7}), (TextRange{0, 7}));
    EXPECT_EQ(wordOfSelection(text, {3, 1}), (TextRange{0, 3}));
    EXPECT_EQ(wordOfSelection(text, {1, 2}), (TextRange{0, 3}));
    EXPECT_EQ(wordOfSelection(text, {8, 3}), (TextRange{8, 3}));
    EXPECT_EQ(wordOfSelection(text, {5, 0}), (TextRange{4, 3}));
}

TEST(WordOccurrences, TheNextOneIsWholeInThePartAndNotTaken)
{
    const TextSnapshot text(u"foo food foo_ foo (foo)");
    const std::vector<TextRange> taken{{0, 3}};
    EXPECT_EQ(nextOccurrence(text, u"foo", {0, 23}, taken), (TextRange{14, 3}));
    EXPECT_EQ(nextOccurrence(text, u"foo", {15, 8}, taken), (TextRange{19, 3}));
    EXPECT_EQ(nextOccurrence(text, u"foo", {15, 6}, taken), std::nullopt);
    EXPECT_EQ(nextOccurrence(text, u"foo", {0, 14}, taken), std::nullopt);
    EXPECT_EQ(nextOccurrence(text, u"", {0, 23}, {}), std::nullopt);
}

TEST(WordOccurrences, SurviveWhereTheyStillHoldTheWholeWord)
{
    const TextSnapshot text(u"foo food Foo foo");
    const SelectedWordOccurrences selected{u"foo",
                                           {{13, 3}, {4, 3}, {9, 3}, {0, 3}, {14, 3}, {99, 3}}};
    EXPECT_EQ(survivingOccurrences(text, selected), (std::vector<TextRange>{{13, 3}, {0, 3}}));
}

TEST(WordOccurrences, AllOfThemComeInOrder)
{
    EXPECT_EQ(allOccurrences(TextSnapshot(u"a b a _a a", 1), u"a"),
              (std::vector<TextRange>{{0, 1}, {4, 1}, {9, 1}}));
    EXPECT_TRUE(allOccurrences(TextSnapshot(u"a b"), u"c").empty());
    EXPECT_TRUE(allOccurrences(TextSnapshot(u"a b"), u"").empty());
}

}  // namespace
}  // namespace tavrel
