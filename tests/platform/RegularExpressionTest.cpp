#include "platform/RegularExpression.h"

#include "platform/ReplacementTemplate.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace tavrel {
namespace {

using Ranges = std::vector<TextRange>;
using namespace std::chrono_literals;

RegularExpression compiled(std::u16string_view pattern, RegularExpressionOptions options = {})
{
    auto expression = RegularExpression::compile(pattern, options);
    if (!expression)
        throw std::runtime_error(expression.error().message);
    return *expression;
}

Ranges allRanges(std::u16string_view pattern, std::u16string_view text,
                 RegularExpressionOptions options = {})
{
    RegularExpressionMatcher matcher(compiled(pattern, options));
    matcher.setText(text);
    Ranges ranges;
    while (matcher.next() == MatchOutcome::match)
        ranges.push_back(matcher.range());
    return ranges;
}

std::string errorOf(std::u16string_view pattern)
{
    const auto expression = RegularExpression::compile(pattern);
    return expression ? "" : expression.error().message;
}

MatchOutcome outcomeOf(std::u16string_view pattern, std::u16string_view text, MatchLimits limits)
{
    RegularExpressionMatcher matcher(compiled(pattern), limits);
    matcher.setText(text);
    return matcher.next();
}

TEST(RegularExpression, FindsEveryMatchInOrder)
{
    EXPECT_EQ(allRanges(u"a+", u"aab a"), (Ranges{{0, 2}, {4, 1}}));
    EXPECT_EQ(allRanges(u"x", u"aab a"), Ranges{});
    EXPECT_EQ(allRanges(u"b", u"b"), (Ranges{{0, 1}}));
}

TEST(RegularExpression, AnEmptyMatchIsFollowedByAStepOfOneCharacter)
{
    EXPECT_EQ(allRanges(u"x*", u"axb"), (Ranges{{0, 0}, {1, 1}, {2, 0}, {3, 0}}));
    EXPECT_EQ(allRanges(u"(?:)", u"😀"), (Ranges{{0, 0}, {2, 0}}));
    EXPECT_EQ(allRanges(u"(?:)", u""), (Ranges{{0, 0}}));
}

TEST(RegularExpression, GroupsHaveRangesUnlessTheyTookNoPart)
{
    const std::u16string_view text = u"zab";
    const auto match = firstMatch(compiled(u"(a)|(b)"), text, {2, 1});
    ASSERT_TRUE(match && *match);
    EXPECT_EQ((*match)->range(), (TextRange{2, 1}));
    EXPECT_EQ((*match)->groups[1], std::nullopt);
    EXPECT_EQ((*match)->groups[2], (TextRange{2, 1}));
    EXPECT_EQ((*match)->groups.size(), 3U);

    RegularExpressionMatcher matcher(compiled(u"(z)(y)?"));
    EXPECT_EQ(matcher.group(0), std::nullopt);
    matcher.setText(text);
    EXPECT_EQ(matcher.group(0), std::nullopt);
    ASSERT_EQ(matcher.next(), MatchOutcome::match);
    EXPECT_EQ(matcher.groupCount(), 2U);
    EXPECT_EQ(matcher.group(1), (TextRange{0, 1}));
    EXPECT_EQ(matcher.group(2), std::nullopt);
    EXPECT_EQ(matcher.group(3), std::nullopt);
    ASSERT_EQ(matcher.next(), MatchOutcome::noMatch);
    EXPECT_EQ(matcher.group(0), std::nullopt);
}

TEST(RegularExpression, OptionsChangeTheMeaning)
{
    EXPECT_EQ(allRanges(u"STRASSE", u"straße", {.caseInsensitive = true}), (Ranges{{0, 6}}));
    EXPECT_EQ(allRanges(u"A", u"a"), Ranges{});
    EXPECT_EQ(allRanges(u"^b$", u"a\nb\nc", {.anchorsMatchLines = true}), (Ranges{{2, 1}}));
    EXPECT_EQ(allRanges(u"^b$", u"a\nb\nc"), Ranges{});
    EXPECT_EQ(allRanges(u"a.b", u"a\nb", {.dotMatchesLineSeparators = true}), (Ranges{{0, 3}}));
    EXPECT_EQ(allRanges(u"a.b", u"a\nb"), Ranges{});
    EXPECT_EQ(allRanges(u"a b # c", u"ab", {.allowCommentsAndWhitespace = true}), (Ranges{{0, 2}}));
    EXPECT_EQ(allRanges(u"(?s:a.b)", u"a\nb"), (Ranges{{0, 3}}));
}

TEST(RegularExpression, TheEndsOfARangeAnchorAndHideWhatIsOutside)
{
    const std::u16string_view text = u"xaby";
    const TextRange inner{1, 2};
    const auto found = [&](std::u16string_view pattern, MatchBounds bounds) {
        return firstMatch(compiled(pattern), text, inner, bounds)->has_value();
    };
    EXPECT_TRUE(found(u"^ab$", {}));
    EXPECT_FALSE(found(u"^ab$", {.anchoring = false}));
    EXPECT_FALSE(found(u"b(?=y)", {}));
    EXPECT_TRUE(found(u"b(?=y)", {.transparent = true}));
    EXPECT_TRUE(found(u"(?<=x)a", {}));  // Looking behind is never hidden.
    EXPECT_TRUE(found(u"\\bab\\b", {}));
    EXPECT_FALSE(found(u"\\bab\\b", {.transparent = true}));
}

TEST(RegularExpression, RangesAreClampedAndLocationsAreThoseOfTheText)
{
    const auto expression = compiled(u"b");
    EXPECT_EQ((*firstMatch(expression, u"abab", {2, 99}))->range(), (TextRange{3, 1}));
    EXPECT_FALSE(firstMatch(expression, u"abab", {99, 99})->has_value());
    EXPECT_FALSE(firstMatch(expression, u"abab", {0, 1})->has_value());
}

TEST(RegularExpression, AMatcherTakesUpOneTextAfterAnother)
{
    RegularExpressionMatcher matcher(compiled(u"^b"));
    EXPECT_EQ(matcher.next(), MatchOutcome::noMatch);
    const std::u16string text = u"ab";
    matcher.setText(text, {1, 1});
    EXPECT_EQ(matcher.next(), MatchOutcome::match);
    matcher.setText(text);
    EXPECT_EQ(matcher.next(), MatchOutcome::noMatch);
    EXPECT_EQ(matcher.next(), MatchOutcome::noMatch);
    matcher.setText(u"b");
    EXPECT_EQ(matcher.next(), MatchOutcome::match);
}

TEST(RegularExpression, MatchAtStartLooksAtTheStartOfTheRangeAlone)
{
    RegularExpressionMatcher matcher(compiled(u"b+"));
    matcher.setText(u"abbc", {1, 3});
    ASSERT_EQ(matcher.matchAtStart(), MatchOutcome::match);
    EXPECT_EQ(matcher.range(), (TextRange{1, 2}));
    matcher.setText(u"abbc");
    EXPECT_EQ(matcher.matchAtStart(), MatchOutcome::noMatch);
}

TEST(RegularExpression, ContinuationAnchorsSeeTheLastMatch)
{
    EXPECT_EQ(allRanges(u"\\Ga", u"aaba"), (Ranges{{0, 1}, {1, 1}}));
}

TEST(RegularExpression, ErrorsSayWhatAndWhere)
{
    EXPECT_EQ(errorOf(u""), "empty pattern");
    EXPECT_EQ(errorOf(u"(a"), "mismatched paren");
    EXPECT_EQ(errorOf(u"[^]$"), "missing close bracket");
    EXPECT_EQ(errorOf(u"(?<=a*)b"), "look behind limit");
    EXPECT_EQ(errorOf(u"a{5,2}"), "max lt min");
    EXPECT_EQ(errorOf(u"\\"), "bad escape sequence");
    EXPECT_EQ(errorOf(u"a"), "");
    const auto error = RegularExpression::compile(u"ab\n*c)").error();
    EXPECT_GE(error.location, 3U);
    EXPECT_LE(error.location, 6U);
}

TEST(RegularExpression, PatternsOfAnySizeCompileOrFail)
{
    EXPECT_EQ(errorOf(std::u16string(RegularExpression::maximumPatternLength + 1, u'a')),
              "pattern too big");
    EXPECT_EQ(errorOf(std::u16string(100'000, u'a')), "");
    EXPECT_NE(errorOf(std::u16string(100'000, u'(')), "");
    EXPECT_NE(errorOf(std::u16string(100'000, u'[')), "");
    std::u16string nested(30, u'(');
    nested += u'a';
    nested += std::u16string(30, u')');
    EXPECT_EQ(errorOf(nested), "");
    std::u16string groups;
    for (std::size_t count = 0; count < RegularExpression::maximumGroupCount; ++count)
        groups += u"()";
    EXPECT_EQ(errorOf(groups), "");
    EXPECT_EQ(errorOf(groups + u"()"), "too many groups");
}

TEST(RegularExpression, HugeGroupCountsMatch)
{
    std::u16string pattern;
    for (int index = 0; index < 10'000; ++index)
        pattern += u"(a)";
    const std::u16string text(10'000, u'a');
    const auto match = firstMatch(compiled(pattern), text, {0, text.size()});
    ASSERT_TRUE(match && *match);
    EXPECT_EQ((*match)->groups.size(), 10'001U);
    EXPECT_EQ((*match)->groups[10'000], (TextRange{9'999, 1}));
}

TEST(RegularExpression, CatastrophicPatternsAreStopped)
{
    const MatchLimits fewSteps{.steps = 5};
    const std::u16string text(40, u'a');
    EXPECT_EQ(outcomeOf(u"(a+)+b", text, fewSteps), MatchOutcome::stopped);
    EXPECT_EQ(outcomeOf(u"(a|aa)+$", text + u"!", fewSteps), MatchOutcome::stopped);
    EXPECT_EQ(outcomeOf(u"(.*)*(.*)*(.*)*x", text, fewSteps), MatchOutcome::stopped);
    EXPECT_EQ(outcomeOf(u"^(([a-z])+.)+[A-Z]([a-z])+$", text, fewSteps), MatchOutcome::stopped);
    const auto result = firstMatch(compiled(u"(a+)+b"), text, {0, text.size()}, {}, fewSteps);
    EXPECT_FALSE(result.has_value());
}

TEST(RegularExpression, PatternsThatTakeNoStepsAreStoppedByTime)
{
    // Each start looks through all the rest in one go and keeps nothing to come back to.
    const std::u16string text(4'000'000, u'a');
    EXPECT_EQ(outcomeOf(u"(?>a*)b", text, {.time = 20ms}), MatchOutcome::stopped);
}

TEST(RegularExpression, DeepRecursionEndsAtTheStackLimit)
{
    const std::u16string text(3'000'000, u'a');
    EXPECT_EQ(outcomeOf(u"(?:a|b)*c", text, {}), MatchOutcome::stopped);
    EXPECT_EQ(outcomeOf(u"(?:a|b)*c", std::u16string(1'000, u'a') + u"c", {}), MatchOutcome::match);
}

TEST(RegularExpression, AStoppedSearchStaysStoppedUntilTheNextText)
{
    RegularExpressionMatcher matcher(compiled(u"(a+)+b"), {.steps = 5});
    const std::u16string text(40, u'a');
    matcher.setText(text);
    EXPECT_EQ(matcher.next(), MatchOutcome::stopped);
    EXPECT_EQ(matcher.next(), MatchOutcome::stopped);
    matcher.setText(u"ab");
    EXPECT_EQ(matcher.next(), MatchOutcome::match);
}

TEST(RegularExpression, EachMatchHasTheLimitsAnew)
{
    // Every attempt costs some 13,000 points, so together they pass many steps, none alone.
    std::u16string text;
    for (int index = 0; index < 100; ++index)
        text += u"aaaaaaaaaaaac aab\n";
    RegularExpressionMatcher matcher(compiled(u"(?:a|aa)+$|b", {.anchorsMatchLines = true}),
                                     {.steps = 3});
    matcher.setText(text);
    std::size_t count = 0;
    while (matcher.next() == MatchOutcome::match)
        ++count;
    EXPECT_EQ(count, 100U);
    EXPECT_EQ(matcher.next(), MatchOutcome::noMatch);
}

TEST(RegularExpression, CancellingStopsAnAttempt)
{
    const std::atomic<bool> cancelled{true};
    const std::u16string text(40, u'a');
    EXPECT_EQ(outcomeOf(u"(a+)+b", text, {.steps = 1'000'000, .cancelled = &cancelled}),
              MatchOutcome::stopped);
}

TEST(RegularExpression, LoneSurrogatesAreCharacters)
{
    const std::u16string text{u'a', 0xD83D, u'b', 0xDE00};
    EXPECT_EQ(allRanges(u".", text), (Ranges{{0, 1}, {1, 1}, {2, 1}, {3, 1}}));
    EXPECT_EQ(allRanges(std::u16string{0xDE00}, text), (Ranges{{3, 1}}));
    EXPECT_EQ(allRanges(u".", u"😀"), (Ranges{{0, 2}}));
}

TEST(RegularExpression, OneExpressionServesSeveralThreads)
{
    const auto expression = compiled(u"(\\w+)@(\\w+)");
    std::vector<std::thread> threads;
    std::atomic<int> found{0};
    for (int index = 0; index < 4; ++index) {
        threads.emplace_back([expression, &found] {
            for (int round = 0; round < 200; ++round) {
                const auto match = firstMatch(expression, u"mail to me@home now", {0, 19});
                found += match && *match && (*match)->range() == TextRange{8, 7};
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(found, 800);
}

TEST(RegularExpression, AnExpressionKeepsItsPattern)
{
    EXPECT_EQ(compiled(u"a(b)").pattern(), u"a(b)");
    EXPECT_EQ(compiled(u"a(b)").groupCount(), 1U);
}

TEST(EscapedPattern, MatchesJustTheText)
{
    EXPECT_EQ(escapedPattern(u"(N/A)"), u"\\(N\\/A\\)");
    EXPECT_EQ(escapedPattern(u"*?+[(){}^$|\\./"), u"\\*\\?\\+\\[\\(\\)\\{\\}\\^\\$\\|\\\\\\.\\/");
    EXPECT_EQ(escapedPattern(u"a-b_c]#&é"), u"a-b_c]#&é");
    std::u16string ascii;
    for (char16_t unit = 1; unit < 0x80; ++unit)
        ascii += unit;
    EXPECT_EQ(allRanges(escapedPattern(ascii), ascii), (Ranges{{0, ascii.size()}}));
}

std::u16string expanded(std::u16string_view pattern, std::u16string_view text,
                        std::u16string_view replacement)
{
    std::u16string result;
    const auto match = firstMatch(compiled(pattern), text, {0, text.size()});
    appendExpandedTemplate(replacement, **match, text, result);
    return result;
}

TEST(ReplacementTemplate, GroupsStandForTheirText)
{
    EXPECT_EQ(expanded(u"(b)(c)", u"abcd", u"<$2$1$0>"), u"<cbbc>");
    EXPECT_EQ(expanded(u"(b)|(c)", u"abcd", u"<$2$1>"), u"<b>");
    EXPECT_EQ(expanded(u"b", u"abcd", u"$0$0"), u"bb");
}

TEST(ReplacementTemplate, TheLongestNumberThatExistsIsTaken)
{
    EXPECT_EQ(expanded(u"(b)", u"abcd", u"$12"), u"b2");
    EXPECT_EQ(expanded(u"(b)", u"abcd", u"$01"), u"b");
    EXPECT_EQ(expanded(u"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)", u"abcdefghijk", u"$11-$10-$12"),
              u"k-j-a2");
    EXPECT_EQ(expanded(u"(b)", u"abcd", u"$99999999999999999999999"), u"9999999999999999999999");
}

TEST(ReplacementTemplate, AGroupThatDoesNotExistGivesNothing)
{
    EXPECT_EQ(expanded(u"b", u"abcd", u"<$1>"), u"<>");
    EXPECT_EQ(expanded(u"(b)", u"abcd", u"<$2$9>"), u"<>");
}

TEST(ReplacementTemplate, ABackslashTakesTheNextCharacterAsItIs)
{
    EXPECT_EQ(expanded(u"(b)", u"abcd", u"\\$1\\\\\\n\\😀"), u"$1\\n😀");
    EXPECT_EQ(expanded(u"(b)", u"abcd", u"$1\\"), u"b");
}

TEST(ReplacementTemplate, ADollarWithoutADigitStandsForItself)
{
    EXPECT_EQ(expanded(u"(b)", u"abcd", u"$ $a $"), u"$ $a $");
    EXPECT_EQ(expanded(u"(b)", u"abcd", u"${1}$$1"), u"${1}$b");
    EXPECT_EQ(expanded(u"(b)", u"abcd", u""), u"");
}

TEST(ReplacementTemplate, AnEscapedTemplateExpandsToItsText)
{
    const std::u16string_view text = u"$1\\$\\\\x$";
    EXPECT_EQ(escapedTemplate(u"$1\\"), u"\\$1\\\\");
    EXPECT_EQ(expanded(u"(b)", u"abcd", escapedTemplate(text)), text);
}

}  // namespace
}  // namespace tavrel
