// What the passes find is what their expressions match: both are run over the same texts.

#include "highlight/GenericPasses.h"

#include <gtest/gtest.h>

#include <random>

namespace tavrel {
namespace {

TokenRuns painted(const GenericPassPtr& pass, std::u16string_view text)
{
    TokenCanvas canvas({0, text.size()}, 0);
    if (pass)
        pass->run(text, canvas);
    TokenRuns runs;
    canvas.appendTo(runs);
    return runs;
}

void expectSame(const GenericPassPtr& pass, std::u16string_view pattern, SyntaxToken token,
                std::initializer_list<std::u16string_view> pieces)
{
    const GenericPassPtr expression = makeExpressionPass(pattern, token);
    ASSERT_TRUE(expression);
    ASSERT_TRUE(pass);
    for (unsigned seed = 0; seed < 2'000; ++seed) {
        std::mt19937 random(seed);
        std::u16string text;
        for (unsigned count = random() % 24; count > 0; --count)
            text += pieces.begin()[random() % pieces.size()];
        ASSERT_EQ(painted(pass, text), painted(expression, text))
            << "seed " << seed << ", text " << testing::PrintToString(text);
    }
}

TEST(GenericPasses, FindStrings)
{
    for (const std::u16string_view quote : {u"\"", u"'"}) {
        const std::u16string q(quote);
        expectSame(makeStringPass(quote), q + u"(?:\\\\.|[^" + q + u"\\n])*" + q,
                   SyntaxToken::string,
                   {quote, quote, u"\\", u"\\", u"a", u"\n", u"\r", u"\x2028", u"\xD83D\xDE00",
                    u"\xD83D", u"\xDE00", u"\v"});
    }
    expectSame(makeStringPass(u"`"), u"`(?:\\\\.|[^`])*`", SyntaxToken::string,
               {u"`", u"`", u"\\", u"\\", u"a", u"\n", u"\r", u"\xD83D\xDE00", u"\xDE00"});
}

TEST(GenericPasses, FindComments)
{
    expectSame(makeLineCommentPass(u"--"), u"--.*", SyntaxToken::comment,
               {u"-", u"--", u"a", u"\n", u"\r", u"\f", u"\v", u"\x85", u"\x2029", u"\xD83D"});
    expectSame(makeLineCommentPass(u""), u".*", SyntaxToken::comment, {u"a", u"\n", u"\r"});
    expectSame(makeBlockCommentPass(u"/*", u"*/"), u"/\\*(?s:.*?)\\*/", SyntaxToken::comment,
               {u"/", u"*", u"/*", u"*/", u"a", u"\n", u"\xD83D\xDE00"});
    expectSame(makeBlockCommentPass(u"--[[", u"]]"), u"--\\[\\[(?s:.*?)\\]\\]",
               SyntaxToken::comment, {u"-", u"--[", u"[", u"]", u"]]", u"a", u"\n"});
    expectSame(makeBlockCommentPass(u"{", u""), u"\\{(?s:.*?)", SyntaxToken::comment,
               {u"{", u"}", u"a"});
}

TEST(GenericPasses, FindNumbers)
{
    expectSame(makeNumberPass(), u"\\b-?(?:0x[0-9A-Fa-f]+|\\d+(?:\\.\\d+)?)\\b",
               SyntaxToken::number,
               {u"0", u"0x", u"1", u"12", u"F", u"a",    u"_",     u"x",     u".",    u".",
                u"-", u"-",  u" ", u"\n", u"(", u"\xE9", u"\x301", u"\x661", u"\xAD", u"\xD83D"});
}

TEST(GenericPasses, FindNumbersInAscii)
{
    expectSame(makeNumberPass(), u"\\b-?(?:0x[0-9A-Fa-f]+|\\d+(?:\\.\\d+)?)\\b",
               SyntaxToken::number,
               {u"0", u"0x", u"1", u"12", u"F", u"a", u"_", u".", u".", u"-", u" ", u"\n"});
}

TEST(GenericPasses, FindKeywords)
{
    const std::set<std::string> keywords{"a", "ab", "a-b", "-", "x+", "if", "+b", "\xC3\xA9"};
    expectSame(makeKeywordPass(keywords), u"\\b(?:a\\-b|x\\+|\\+b|ab|if|a|\xE9|-)\\b",
               SyntaxToken::keyword,
               {u"a", u"b", u"-", u"x", u"+", u"if", u"i", u" ", u"\n", u"\r", u"_", u"1"});
    expectSame(makeKeywordPass(keywords), u"\\b(?:a\\-b|x\\+|\\+b|ab|if|a|\xE9|-)\\b",
               SyntaxToken::keyword,
               {u"a", u"b", u"-", u"x", u"+", u"if", u" ", u"\n", u"\xE9", u"\x301", u"\x200D"});
}

TEST(GenericPasses, FindKeywordsWithALineFeed)
{
    expectSame(makeKeywordPass({"a\nb", "a"}), u"\\b(?:a\\nb|a)\\b", SyntaxToken::keyword,
               {u"a", u"b", u"\n", u" "});
}

TEST(GenericPasses, FindPunctuation)
{
    expectSame(makePunctuationPass(u"^-]\\&[\xE9"), u"[\\^\\-\\]\\\\\\&\\[\xE9]",
               SyntaxToken::punctuation,
               {u"^", u"-", u"]", u"\\", u"&", u"[", u"\xE9", u"a", u"\n", u"_"});
    expectSame(makePunctuationPass(u"(\xD83D\xDE00"), u"[(\xD83D\xDE00]", SyntaxToken::punctuation,
               {u"(", u"\xD83D\xDE00", u"\xD83D", u"\xDE00", u"a"});
}

TEST(GenericPasses, LeaveOutWhatDoesNotCompile)
{
    EXPECT_FALSE(makeExpressionPass(u"(", SyntaxToken::string));
    EXPECT_FALSE(makeStringPass(u"z-a"));
}

}  // namespace
}  // namespace tavrel
