#include "editor/BlockLines.h"

#include "PlainText.h"

#include "editor/SortCommands.h"
#include "editor/TextDecoder.h"
#include "editor/TextEncoder.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

std::vector<std::pair<TextRange, TextRange>> linesOf(const TextSnapshot& text, TextRange block)
{
    std::vector<std::pair<TextRange, TextRange>> lines;
    for (const BlockLine& line : blockLines(text, block))
        lines.emplace_back(line.content, line.terminator);
    return lines;
}

using Lines = std::vector<std::pair<TextRange, TextRange>>;

TEST(BlockLines, EndAtLfAndAtCrLf)
{
    for (const std::size_t blockSize : {1U, 2U, 64U}) {
        const TextSnapshot text(u"ab\n\r\nc\r\nd", blockSize);
        EXPECT_EQ(linesOf(text, {0, 9}),
                  (Lines{{{0, 2}, {2, 1}}, {{3, 0}, {3, 2}}, {{5, 1}, {6, 2}}, {{8, 1}, {9, 0}}}));
    }
}

TEST(BlockLines, HaveNoLineBehindTheFinalTerminator)
{
    EXPECT_EQ(linesOf(TextSnapshot(u"a\n"), {0, 2}), (Lines{{{0, 1}, {1, 1}}}));
    EXPECT_EQ(linesOf(TextSnapshot(u"\n"), {0, 1}), (Lines{{{0, 0}, {0, 1}}}));
}

TEST(BlockLines, OfAnEmptyBlockAreOneEmptyLine)
{
    EXPECT_EQ(linesOf(TextSnapshot(u"a\n"), {2, 0}), (Lines{{{2, 0}, {2, 0}}}));
    EXPECT_EQ(linesOf(TextSnapshot(), {0, 0}), (Lines{{{0, 0}, {0, 0}}}));
}

TEST(BlockLines, DoNotEndAtOtherTerminators)
{
    EXPECT_EQ(linesOf(TextSnapshot(u"a\rb\u2028\r\n"), {0, 6}), (Lines{{{0, 4}, {4, 2}}}));
    EXPECT_EQ(linesOf(TextSnapshot(u"\r\rx"), {0, 3}), (Lines{{{0, 3}, {3, 0}}}));
}

TEST(BlockLines, KeepToTheBlock)
{
    EXPECT_EQ(linesOf(TextSnapshot(u"\r\na\nb"), {2, 2}), (Lines{{{2, 1}, {3, 1}}}));
    EXPECT_EQ(linesOf(TextSnapshot(u"\r\na"), {1, 2}), (Lines{{{1, 0}, {1, 1}}, {{2, 1}, {3, 0}}}));
}

TEST(BlockLines, AnEditedBlockTakesEditsOfTheWholeText)
{
    const TextSnapshot text(u"ab\ncd\nef");
    EXPECT_EQ(editedBlock(text, {3, 3}, {{{3, 0}, TextSnapshot(u"> ")}, {{4, 1}, {}}}).text(),
              u"> c\n");
    EXPECT_EQ(editedBlock(text, {3, 3}, {}).text(), u"cd\n");
}

TEST(SortedBlock, KeepsBytesThatAreNoText)
{
    TextDecoder decoder;
    decoder.feed("b\xFF\nb\xC3\r\na");
    const TextSnapshot sorted = sortedBlock(decoder.finish(), {0, 8});
    std::string bytes;
    forEachUtf8Chunk(sorted, [&](std::string_view chunk) {
        bytes += chunk;
        return true;
    });
    EXPECT_EQ(bytes, "a\nb\xFF\r\nb\xC3");
}

TEST(SortedBlock, SortsAsStringsSort)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTexts random(seed);
        std::vector<std::u16string> lines(1 + random.number(12));
        std::u16string text;
        for (std::u16string& line : lines) {
            line = random.units(6);
            std::erase_if(line, [](char16_t unit) { return unit == u'\n' || unit == u'\r'; });
            text += line + u"\n";
        }
        std::sort(lines.begin(), lines.end());
        std::u16string expected;
        for (const std::u16string& line : lines)
            expected += line + u"\n";
        ASSERT_EQ(sortedBlock(TextSnapshot(text, 3), {0, text.size()}).text(), expected);
    }
}

}  // namespace
}  // namespace tavrel
