// Links are looked for where a scheme stands; that must find what the expression finds by itself.

#include "highlight/Links.h"

#include "platform/RegularExpression.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>

namespace tavrel {
namespace {

std::vector<TextRange> rangesOfTheExpression(std::u16string_view text)
{
    const auto expression =
        RegularExpression::compile(u"https?://[^\\s<>\"'`]+", {.caseInsensitive = true});
    EXPECT_TRUE(expression);
    RegularExpressionMatcher matcher(*expression);
    matcher.setText(text);
    std::vector<TextRange> ranges;
    while (matcher.next() == MatchOutcome::match) {
        TextRange range = matcher.range();
        while (text[range.end() - 1] == u':')  // The only one of its kind in the random texts.
            --range.length;
        if (range.length >= 9)
            ranges.push_back(range);
    }
    return ranges;
}

TEST(Links, AreThoseOfTheExpressionInRandomTexts)
{
    const std::u16string_view pieces[] = {u"http", u"HTTPS", u"http\u017F", u"://",       u":",
                                          u"/",    u"s",     u"h",          u"x",         u" ",
                                          u"<",    u"\n",    u"\"",         u"\U0001F600"};
    std::mt19937 random(1);
    std::size_t found = 0;
    for (int round = 0; round < 3000; ++round) {
        std::u16string text;
        for (int i = 0; i < 20; ++i)
            text += pieces[random() % std::size(pieces)];
        const std::vector<TextRange> ranges = linkRanges(text);
        ASSERT_EQ(ranges, rangesOfTheExpression(text)) << "round " << round;
        found += ranges.size();
    }
    EXPECT_GT(found, 500U);
}

}  // namespace
}  // namespace tavrel
