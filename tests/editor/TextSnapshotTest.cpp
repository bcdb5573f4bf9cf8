#include "editor/TextSnapshot.h"

#include "editor/PlainText.h"
#include "editor/TextCursor.h"
#include "editor/TextStorage.h"

#include <gtest/gtest.h>

namespace tavrel {

TEST(TextSnapshot, TheEmptyTextHasOneLine)
{
    const TextSnapshot text;
    EXPECT_EQ(text.length(), 0U);
    EXPECT_EQ(text.lineCount(), 1U);
    EXPECT_EQ(text.lfLineCount(), 1U);
    EXPECT_EQ(text.lineStart(0), 0U);
    EXPECT_EQ(text.lineStart(5), 0U);
    EXPECT_EQ(text.lineIndexAt(9), 0U);
    EXPECT_EQ(text.lineRange({3, 7}), (TextRange{0, 0}));
    EXPECT_EQ(text.lineContentEnd(4), 0U);
    EXPECT_EQ(text.unitAt(0), u'\0');
    EXPECT_EQ(text.tokenAt(0), SyntaxToken::foreground);
    EXPECT_EQ(text.tokens({0, 5}), TokenRuns());
    EXPECT_FALSE(text.rawBytesAt(0));
    EXPECT_TRUE(text.slice({0, 3}).isEmpty());
    EXPECT_EQ(text, TextSnapshot(u""));
    TextCursor cursor(text, 3);
    EXPECT_TRUE(cursor.isAtStart() && cursor.isAtEnd());
    EXPECT_EQ(cursor.next(), u'\0');
    EXPECT_EQ(cursor.previous(), u'\0');
    EXPECT_EQ(cursor.piece().length, 0U);
}

TEST(TextSnapshot, LinesEndAtAllTerminatorsAndLfLinesAtLfAlone)
{
    const std::u16string plain = u"a\nb\rc\r\nd\u0085e\u2028f\u2029g\n\r\r\n\n";
    for (const std::size_t blockSize : {1, 2, 3, 5, 7, 100}) {
        const TextSnapshot text(plain, blockSize);
        const std::vector<std::size_t> starts = plainLineStarts(plain);
        const std::vector<std::size_t> lfStarts = plainLfLineStarts(plain);
        EXPECT_EQ(text.lineCount(), 11U);
        EXPECT_EQ(text.lfLineCount(), 6U);
        for (std::size_t location = 0; location <= plain.size(); ++location) {
            for (std::size_t length = 0; location + length <= plain.size(); ++length)
                ASSERT_NO_FATAL_FAILURE(
                    expectLines(text, plain, starts, lfStarts, {location, length}, location));
        }
    }
}

TEST(TextSnapshot, BetweenCrAndLfIsTheLineThatTheyEnd)
{
    for (const std::size_t blockSize : {1, 2, 100}) {
        const TextSnapshot text(u"a\r\nb", blockSize);
        EXPECT_EQ(text.lineIndexAt(2), 0U);
        EXPECT_EQ(text.lineRange({2, 0}), (TextRange{0, 3}));
        EXPECT_EQ(text.lineContentEnd(2), 1U);
        EXPECT_EQ(text.lineRange({3, 0}), (TextRange{3, 1}));
    }
}

TEST(TextSnapshot, AnEmptyRangeBehindTheLastTerminatorHasAnEmptyLine)
{
    const TextSnapshot text(u"ab\n");
    EXPECT_EQ(text.lineRange({3, 0}), (TextRange{3, 0}));
    EXPECT_EQ(text.lineRange({2, 1}), (TextRange{0, 3}));
    EXPECT_EQ(text.lineIndexAt(3), 1U);
    EXPECT_EQ(text.lineContentEnd(3), 3U);
}

TEST(TextSnapshot, RangesAreClamped)
{
    const TextSnapshot text(u"abc\ndef");
    const std::size_t huge = static_cast<std::size_t>(-1);
    EXPECT_EQ(text.text({5, huge}), u"ef");
    EXPECT_EQ(text.text({huge, huge}), u"");
    EXPECT_EQ(text.slice({4, huge}).text(), u"def");
    EXPECT_EQ(text.lineRange({huge, huge}), (TextRange{4, 3}));
    EXPECT_EQ(text.lineIndexAt(huge), 1U);
    EXPECT_EQ(text.lineStart(huge), 7U);
    EXPECT_EQ(text.lfLineStart(huge), 7U);
    EXPECT_EQ(text.unitAt(huge), u'\0');
    TextStorage storage(text);
    storage.replace({huge, huge}, u"!");
    EXPECT_EQ(storage.snapshot().text(), u"abc\ndef!");
}

TEST(TextSnapshot, EqualityLooksAtUnitsAlone)
{
    const std::u16string plain(10'000, u'x');
    TextSnapshot text(plain, 7);
    EXPECT_EQ(text, TextSnapshot(plain, 4096));
    std::u16string other = plain;
    other[9'999] = u'y';
    EXPECT_NE(text, TextSnapshot(other, 4096));
    other[9'999] = u'\u4e2d';
    EXPECT_NE(text, TextSnapshot(other, 100));
    EXPECT_FALSE(text == plain.substr(1));
    TextStorage painted(text);
    TokenRuns keyword;
    keyword.append(3, SyntaxToken::keyword);
    painted.setTokens(5, keyword);
    EXPECT_EQ(painted.snapshot(), text);
}

TEST(TextSnapshot, OneLongLineIsFoundBySummaries)
{
    TextStorage storage(TextSnapshot(std::u16string(3'000'000, u'x')));
    storage.replace({1'000'000, 0}, u"\r\n");
    EXPECT_EQ(storage.snapshot().lineRange({500'000, 2}), (TextRange{0, 1'000'002}));
    EXPECT_EQ(storage.snapshot().lineRange({2'000'000, 0}), (TextRange{1'000'002, 2'000'000}));
    EXPECT_EQ(storage.snapshot().lineContentEnd(7), 1'000'000U);
}

TEST(TextStorage, MendsABatchThatIsOutOfOrder)
{
    TextStorage storage(TextSnapshot(u"0123456789"));
    const std::vector<TextEdit> edits{{{4, 4}, TextSnapshot(u"a")},
                                      {{6, 3}, TextSnapshot(u"b")},
                                      {{2, 1}, TextSnapshot(u"c")},
                                      {{50, 2}, TextSnapshot(u"d")}};
    storage.apply(edits);
    EXPECT_EQ(storage.snapshot().text(), u"0123abc9d");
}

TEST(TextStorage, ManySingleUnitEditsDoNotCrumbleTheText)
{
    RandomTexts random(11);
    TextStorage storage(TextSnapshot(std::u16string(200'000, u'x')));
    for (int i = 0; i < 100'000; ++i) {
        storage.replace({random.number(storage.length()), 0}, u"y");
        storage.replace({random.number(storage.length()), 1}, u"");
    }
    EXPECT_LT(storage.snapshot().memoryBytes(), storage.length() * 3 / 2);
    while (storage.length() > 1000)
        storage.replace({random.number(storage.length()), 50}, u"");
    EXPECT_LT(storage.snapshot().memoryBytes(), storage.length() * 3);
}

TEST(TextStorage, EmptyingAndFillingAgainWorks)
{
    TextStorage storage(TextSnapshot(u"abc"), 1);
    storage.replace({0, 3}, u"");
    EXPECT_TRUE(storage.snapshot().isEmpty());
    const std::vector<TextEdit> edits{{{0, 0}, TextSnapshot(u"x")}, {{0, 0}, TextSnapshot(u"yz")}};
    storage.apply(edits);
    EXPECT_EQ(storage.snapshot().text(), u"xyz");
}

TEST(TextStorage, InsertedTextTakesForegroundAndKeepsNoTokens)
{
    TextStorage storage(TextSnapshot(u"abcdef"));
    TokenRuns runs;
    runs.append(6, SyntaxToken::string);
    storage.setTokens(0, runs);
    const TextSnapshot painted = storage.snapshot().slice({0, 2});
    EXPECT_EQ(painted.tokenAt(1), SyntaxToken::string);
    storage.replace({3, 0}, painted);
    EXPECT_EQ(storage.snapshot().tokenAt(2), SyntaxToken::string);
    EXPECT_EQ(storage.snapshot().tokenAt(3), SyntaxToken::foreground);
    EXPECT_EQ(storage.snapshot().tokenAt(4), SyntaxToken::foreground);
    EXPECT_EQ(storage.snapshot().tokenAt(5), SyntaxToken::string);
}

}  // namespace tavrel
