#include "highlight/LexicalHighlighter.h"

#include "config/LanguageModeTable.h"
#include "highlight/BlockSource.h"
#include "highlight/Scanner.h"
#include "highlight/ShippedModes.h"

#include <gtest/gtest.h>

#include <random>

namespace tavrel {
namespace {

/// Pieces that open, close and hide something in one language or another.
constexpr std::u16string_view pieces[] = {
    u"\"",     u"'",      u"`",     u"\"\"\"", u"'''", u"/*",     u"*/",   u"//",    u"/",
    u"#",      u"\\",     u"\n",    u"\r\n",   u" ",   u"<",      u">",    u"(",     u")",
    u"[",      u"]",      u"{",     u"}",      u";",   u":",      u"=",    u".",     u",",
    u"$",      u"@",      u"%",     u"&",      u"!",   u"-",      u"--",   u"<!--",  u"-->",
    u"R\"(",   u")\"",    u"r#\"",  u"\"#",    u"```", u"~~~",    u"=cut", u"=pod",  u"a",
    u"Foo",    u"MAX",    u"class", u"def",    u"fn",  u"return", u"0x1F", u"1.5e3", u"'a",
    u"\xD83D", u"\xDE00", u"\xE9",  u"\0",     u"on:", u"* ",     u"1. ",  u"](",    u"${",
    u"$(",     u"@\"",
};

std::u16string randomText(std::mt19937& random, std::size_t count)
{
    std::u16string text;
    for (std::size_t i = 0; i < count; ++i)
        text += pieces[random() % std::size(pieces)];
    return text;
}

TokenRuns scannedInSteps(const LexicalHighlighter& highlighter, const TextSource& text,
                         std::mt19937& random, std::size_t longestStep)
{
    TokenRuns runs;
    for (ScanPoint point; point.location < text.length();) {
        const ScanPoint next =
            highlighter.scan(text, point, point.location + 1 + random() % longestStep, runs);
        EXPECT_GT(next.location, point.location);
        EXPECT_EQ(runs.length(), next.location);
        point = next;
    }
    return runs;
}

class EachLanguage : public testing::TestWithParam<LanguageModeRow> {
protected:
    LexicalHighlighter highlighter{shippedMode(std::string(GetParam().id))};
};

TEST_P(EachLanguage, HasAScanner)
{
    EXPECT_TRUE(highlighter.scansByPoints());
}

TEST_P(EachLanguage, PaintsTheSameFromBlocksOfAnySize)
{
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const std::u16string text = randomText(random, random() % 120);
        const TokenRuns whole = highlighter.highlight(PlainTextSource(text)).runs;
        ASSERT_EQ(whole.length(), text.size());
        for (const std::size_t blockSize : {1, 7, 4096})
            ASSERT_EQ(highlighter.highlight(BlockSource(text, blockSize)).runs, whole);
    }
}

TEST_P(EachLanguage, PaintsTheSameInStepsAsAtOnce)
{
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const std::u16string text = randomText(random, random() % 120);
        const PlainTextSource source(text);
        const TokenRuns whole = highlighter.highlight(source).runs;
        ASSERT_EQ(scannedInSteps(highlighter, source, random, 1), whole);
        ASSERT_EQ(scannedInSteps(highlighter, source, random, 40), whole);
    }
}

TEST_P(EachLanguage, PaintsAStretchLikeItsPartOfTheWhole)
{
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const std::u16string text = randomText(random, 1 + random() % 60);
        const PlainTextSource source(text);
        const TokenRuns whole = highlighter.highlight(source).runs;
        const TextRange asked{random() % text.size(), random() % 30};
        const PaintedStretch painted = highlighter.highlight(source, asked);
        TokenRuns expected;
        for (std::size_t at = painted.range.location; at < painted.range.end(); ++at)
            expected.append(1, whole.tokenAt(at));
        ASSERT_EQ(painted.runs, expected);
    }
}

TEST_P(EachLanguage, PaintsASliceLikeATextOfItsOwn)
{
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const std::u16string text = randomText(random, 1 + random() % 60);
        const TextRange slice =
            clampedRange({random() % text.size(), 1 + random() % 60}, text.size());
        const PaintedStretch painted = highlighter.highlight(PlainTextSource(text), slice, slice);
        const PlainTextSource own(std::u16string_view(text).substr(slice.location, slice.length));
        ASSERT_EQ(painted.range, slice);
        ASSERT_EQ(painted.runs, highlighter.highlight(own).runs);
    }
}

TEST_P(EachLanguage, LooksAtEachUnitAFewTimesWhateverTheText)
{
    // What opens something again and again that is never closed, or closed too late.
    constexpr std::u16string_view repeated[] = {
        u"a<",  u"a<b>", u"=/[",  u"=/\\/", u"=/]",  u"[",   u"[a](",   u"`a``b", u"<a ", u"&a",
        u"<!-", u"R\"(", u"r#\"", u"\"",    u"'a",   u"\"#", u"${",     u"$(",    u"/*",  u"#[",
        u"a  ", u"@a.",  u"-",    u"1'",    u"1e",   u".",   u"\"\"\"", u"a::",   u"[[",  u"=c",
        u"$$",  u"\n ",  u"a-",   u"\\",    u"R\"a", u"a{<", u"#",      u"!",     u"<",   u"a<b ",
    };
    for (const std::u16string_view piece : repeated) {
        std::u16string text;
        while (text.size() < 20'000)
            text += piece;
        for (const std::u16string_view end : {u"", u">", u"]", u"/", u")"}) {
            const std::u16string whole = text + std::u16string(end);
            const BlockSource source(whole, 1);
            highlighter.highlight(source);
            EXPECT_LT(source.windowCount(), 60 * whole.size())
                << "of the piece " << testing::PrintToString(piece);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(LexicalHighlighter, EachLanguage, testing::ValuesIn(languageModeTable),
                         [](const auto& row) { return std::string(row.param.id); });

TEST(LexicalHighlighter, GivesTheRunsOfATextThatNoViewShows)
{
    const LexicalHighlighter highlighter(shippedMode("cpp"));
    const std::vector<ColorRun> expected{
        {{0, 2}, SyntaxToken::keyword},
        {{2, 1}, SyntaxToken::foreground},
        {{3, 1}, SyntaxToken::identifier},
    };
    EXPECT_EQ(highlighter.colorRuns(u"if a"), expected);
    EXPECT_TRUE(highlighter.colorRuns(u"").empty());
}

TEST(LexicalHighlighter, GivesOnlyTheLinksOfAPlainText)
{
    const LexicalHighlighter highlighter(LanguageMode::plain());
    const std::vector<ColorRun> expected{
        {{2, 10}, SyntaxToken::link},
        {{13, 11}, SyntaxToken::link},
    };
    EXPECT_EQ(highlighter.colorRuns(u"a http://a.b https://c.d, e"), expected);
    EXPECT_TRUE(highlighter.colorRuns(u"if a").empty());
}

TEST(LexicalHighlighter, FindsLinksInBlocks)
{
    const LexicalHighlighter highlighter(LanguageMode::plain());
    const std::u16string text = u"see (http://a.b/c_(d)).";
    EXPECT_EQ(highlighter.highlight(BlockSource(text, 3)).runs,
              highlighter.highlight(PlainTextSource(text)).runs);
}

TEST(LexicalHighlighter, LeavesOutAPatternThatDoesNotCompile)
{
    // The class of this delimiter is a range the wrong way round.
    LanguageMode mode;
    mode.id = "unknown";
    mode.stringDelimiters = {"z-a", "'"};
    const LexicalHighlighter highlighter(mode);
    const std::vector<ColorRun> expected{
        {{0, 4}, SyntaxToken::foreground},
        {{4, 3}, SyntaxToken::string},
    };
    EXPECT_EQ(highlighter.colorRuns(u"z-a 'b'"), expected);
}

TEST(LexicalHighlighter, StaysAtAPointThatHasNothingBehindIt)
{
    const LexicalHighlighter highlighter(shippedMode("cpp"));
    const PlainTextSource text(u"if a");
    TokenRuns runs;
    const ScanPoint atEnd = highlighter.scan(text, {}, 100, runs);
    EXPECT_EQ(atEnd.location, 4U);
    EXPECT_EQ(highlighter.scan(text, atEnd, 100, runs), atEnd);
    EXPECT_EQ(highlighter.scan(text, {9, 0}, 100, runs), (ScanPoint{9, 0}));
    EXPECT_EQ(highlighter.scan(text, {2, 0}, 1, runs), (ScanPoint{2, 0}));
    EXPECT_EQ(runs.length(), 4U);
}

TEST(LexicalHighlighter, PaintsNothingFromAPointOutsideTheText)
{
    const LexicalHighlighter highlighter(shippedMode("cpp"));
    const PlainTextSource text(u"if a");
    EXPECT_EQ(highlighter.highlightFrom(text, {9, 0}, {0, 2}).runs, TokenRuns(2));
    EXPECT_EQ(highlighter.highlightFrom(text, {}, {9, 2}).runs, TokenRuns());
}

TEST(LexicalHighlighter, MayBeMoved)
{
    LexicalHighlighter one(shippedMode("rust"));
    const LexicalHighlighter other(std::move(one));
    EXPECT_EQ(other.language().id, "rust");
    EXPECT_EQ(other.colorRuns(u"fn").size(), 1U);
}

}  // namespace
}  // namespace tavrel
