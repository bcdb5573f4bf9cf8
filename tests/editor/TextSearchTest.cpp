#include "editor/TextSearch.h"

#include "PlainText.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

std::vector<TextRange> matches(const TextSnapshot& text, std::u16string_view needle, TextRange part)
{
    std::vector<TextRange> places;
    forEachMatch(text, needle, part, [&](TextRange place) {
        places.push_back(place);
        return true;
    });
    return places;
}

std::vector<TextRange> plainMatches(std::u16string_view text, std::u16string_view needle,
                                    TextRange part)
{
    std::vector<TextRange> places;
    const std::u16string_view searched = text.substr(0, part.end());
    for (std::size_t at = searched.find(needle, part.location);
         !needle.empty() && at != std::u16string_view::npos;
         at = searched.find(needle, at + needle.size()))
        places.push_back({at, needle.size()});
    return places;
}

TEST(TextSearch, FindsPlacesOnTheBordersOfBlocks)
{
    const std::u16string units = u"abcabcabababcab";
    for (const std::size_t blockSize : {1U, 2U, 3U, 7U, 64U}) {
        const TextSnapshot text(units, blockSize);
        EXPECT_EQ(matches(text, u"abc", {0, 99}), (std::vector<TextRange>{{0, 3}, {3, 3}, {10, 3}}))
            << blockSize;
        EXPECT_EQ(matches(text, u"abab", {0, 99}), (std::vector<TextRange>{{6, 4}})) << blockSize;
    }
}

TEST(TextSearch, GivesNoPlacesThatOverlap)
{
    EXPECT_EQ(matches(TextSnapshot(u"aaaaa", 1), u"aa", {0, 5}),
              (std::vector<TextRange>{{0, 2}, {2, 2}}));
}

TEST(TextSearch, KeepsToThePart)
{
    const TextSnapshot text(u"aXaXaX", 2);
    EXPECT_EQ(matches(text, u"aX", {1, 4}), (std::vector<TextRange>{{2, 2}}));
    EXPECT_EQ(firstMatch(text, u"aX", {1, 5}), (TextRange{2, 2}));
    EXPECT_EQ(firstMatch(text, u"aX", {3, 2}), std::nullopt);
    EXPECT_EQ(firstMatch(text, u"aX", {99, 2}), std::nullopt);
}

TEST(TextSearch, AnEmptyNeedleIsNowhere)
{
    EXPECT_EQ(firstMatch(TextSnapshot(u"abc"), u"", {0, 3}), std::nullopt);
}

TEST(TextSearch, StopsWhenTold)
{
    int visits = 0;
    forEachMatch(TextSnapshot(u"aaaa", 1), u"a", {0, 4}, [&](TextRange) { return ++visits < 2; });
    EXPECT_EQ(visits, 2);
}

TEST(TextSearch, ALongNeedleOfManyRepeatsCostsNoMoreThanItsText)
{
    // By trying every place this takes half a million times half a million steps.
    const std::size_t half = 500'000;
    const std::u16string needle = std::u16string(half, u'-') + u"x";
    const std::u16string units = std::u16string(2 * half, u'-') + u"x" + std::u16string(half, u'-');
    EXPECT_EQ(matches(TextSnapshot(units), needle, {0, units.size()}),
              (std::vector<TextRange>{{half, half + 1}}));
}

TEST(TextSearch, FindsWhatASearchInAStringFinds)
{
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTexts random(seed);
        std::u16string units(random.number(200), 0);
        for (char16_t& unit : units)
            unit = random.number(3) == 0 ? u'b' : u'a';
        std::u16string needle(random.number(1) == 0 ? random.number(4) : random.number(90), 0);
        const bool isPart = needle.size() < units.size() && random.number(1) == 0;
        const std::size_t from = isPart ? random.number(units.size() - needle.size()) : 0;
        for (std::size_t at = 0; at < needle.size(); ++at)
            needle[at] = isPart ? units[from + at] : random.number(3) == 0 ? u'b' : u'a';
        const TextRange part = random.range(units.size(), 200);
        const std::size_t blockSize = 1 + random.number(9);
        ASSERT_EQ(matches(TextSnapshot(units, blockSize), needle, part),
                  plainMatches(units, needle, part));
    }
}

}  // namespace
}  // namespace tavrel
