#include "editor/SearchResultLines.h"

#include "editor/TextSnapshot.h"

#include <gtest/gtest.h>
#include <limits>

namespace tavrel {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

TEST(SearchResultLines, AHeadingIsAPathAndANumberBetweenColons)
{
    EXPECT_EQ(searchResultHeading(u"/a:12:"), (SearchResultPlace{u"/a", 12}));
    EXPECT_EQ(searchResultHeading(u"/a b:1:2:3:"), (SearchResultPlace{u"/a b:1:2", 3}));
    EXPECT_EQ(searchResultHeading(u"/é\U0001F600:007:"), (SearchResultPlace{u"/é\U0001F600", 7}));
    EXPECT_EQ(searchResultHeading(u"/::5:"), (SearchResultPlace{u"/:", 5}));
    EXPECT_EQ(searchResultHeading(u"/a:99999999999999999999:"),
              (SearchResultPlace{u"/a", largest}));
}

TEST(SearchResultLines, OtherLinesAreNoHeadings)
{
    for (const std::u16string_view line :
         {u"", u"/", u":", u"/:1:", u"/a:1", u"/a::", u"/a:x:", u"/a:1x:", u"a:1:", u" /a:1:",
          u"/a:1: ", u"/a:-1:", u"/a:١:", u"/12:"})
        EXPECT_FALSE(searchResultHeading(line));
}

TEST(SearchResultLines, AResultLineHasAMarkABlankOrMoreAndANumber)
{
    EXPECT_EQ(searchResultNumber(u">   12: found: 3"), 12);
    EXPECT_EQ(searchResultNumber(u"     7: "), 7);
    EXPECT_EQ(searchResultNumber(u">123456: x"), 123456);
    EXPECT_EQ(searchResultNumber(u"> 99999999999999999999: x"), largest);
    for (const std::u16string_view line : {u"", u">", u" ", u"12: x", u"> 12:x", u"> 12:", u"> : x",
                                           u">> 1: x", u"> x: y", u">\t1: x"})
        EXPECT_FALSE(searchResultNumber(line));
}

std::optional<SearchResultPlace> at(std::u16string_view text, std::size_t offset)
{
    return searchResultAt(TextSnapshot(text), offset);
}

TEST(SearchResultLines, AResultLineBelongsToTheHeadingAboveIt)
{
    const std::u16string_view text = u"/a:1:\n>    1: x\n     2: y\n\n/b:8:\r\n>    8: z\r\n";
    EXPECT_EQ(at(text, 0), (SearchResultPlace{u"/a", 1}));
    EXPECT_EQ(at(text, 5), (SearchResultPlace{u"/a", 1}));
    EXPECT_EQ(at(text, 6), (SearchResultPlace{u"/a", 1}));
    EXPECT_EQ(at(text, 20), (SearchResultPlace{u"/a", 2}));
    EXPECT_EQ(at(text, text.find(u"/b")), (SearchResultPlace{u"/b", 8}));
    EXPECT_EQ(at(text, text.find(u"z")), (SearchResultPlace{u"/b", 8}));
    EXPECT_EQ(at(text, text.find(u"/b") - 1), std::nullopt);  // The empty line.
}

TEST(SearchResultLines, PastTheTextItIsTheLastLine)
{
    EXPECT_EQ(at(u"/a:1:\n>    1: x", 999), (SearchResultPlace{u"/a", 1}));
    EXPECT_EQ(at(u"/a:1:\n>    4: x\n", 15), (SearchResultPlace{u"/a", 4}));
    EXPECT_EQ(at(u"", 0), std::nullopt);
    EXPECT_EQ(at(u"\n", 5), std::nullopt);
}

TEST(SearchResultLines, AResultLineAboveAnyHeadingNamesNothing)
{
    EXPECT_EQ(at(u">    1: x\n/a:1:\n", 2), std::nullopt);
    EXPECT_EQ(at(u"a\n>    1: x\n", 4), std::nullopt);
}

TEST(SearchResultLines, NoLineIsTooLongToBeLookedAt)
{
    const std::u16string path(1'000'000, u'/');
    EXPECT_EQ(at(path + u":1:", 3), std::nullopt);
    EXPECT_EQ(at(u"/a:1:\n" + path + u":2:\n> 7: " + path, 1'000'020),
              (SearchResultPlace{u"/a", 7}));
}

}  // namespace
}  // namespace tavrel
