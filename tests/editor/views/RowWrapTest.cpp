#include "editor/views/RowWrap.h"

#include <gtest/gtest.h>

#include <string>

namespace tavrel {
namespace {

struct WrapCase {
    const char* name;
    std::u16string text;
    std::size_t columns;
    std::size_t tabWidth;
    std::vector<std::uint32_t> starts;
};

const WrapCase wrapCases[] = {
    {"an empty text is one row", u"", 10, 2, {0}},
    {"what fits is one row", u"0123456789", 10, 2, {0}},
    {"a word that is too long is broken where the row is full", u"0123456789abc", 10, 2, {0, 10}},
    {"a row ends behind a blank", u"one two three", 8, 2, {0, 8}},
    {"a word moves down whole", u"one two three", 10, 2, {0, 8}},
    {"blanks hang over the edge", u"0123456789    next", 10, 2, {0, 14}},
    {"blanks alone are one row", u"                    ", 4, 2, {0}},
    {"a long word behind a short one starts a row", u"ab 0123456789abcdef", 10, 2, {0, 3, 13}},
    {"a tab reaches to the next stop", u"\tabc\tdef", 8, 4, {0, 5}},
    {"a tab at a stop is a whole one", u"abcd\tef", 8, 4, {0, 5}},
    {"no columns count as one", u"abc", 0, 0, {0, 1, 2}},
    {"a leading blank may end a row", u" 0123456789", 10, 2, {0, 1}},
};

TEST(RowWrap, BreaksRows)
{
    for (const WrapCase& each : wrapCases)
        EXPECT_EQ(wrapColumns(each.text, each.columns, each.tabWidth), each.starts) << each.name;
}

TEST(RowWrap, ColumnTextIsPrintableAsciiAndTabs)
{
    EXPECT_TRUE(isColumnText(u""));
    EXPECT_TRUE(isColumnText(u"a ~\t"));
    for (const char16_t* text : {u"\u007F", u"\u0000a", u"\u00E9", u"\x1B", u"\u4E2D"})
        EXPECT_FALSE(isColumnText(std::u16string(text, 1)));
}

}  // namespace
}  // namespace tavrel
