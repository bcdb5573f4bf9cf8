#include "editor/views/LineSegment.h"

#include <gtest/gtest.h>

#include <random>

namespace tavrel {
namespace {

// Walks a text from its start, checking that the segments lie side by side and are found from
// every place in them.
std::vector<LineSegment> allSegments(const TextSnapshot& text)
{
    std::vector<LineSegment> segments;
    std::optional<LineSegment> segment = segmentAt(text, 0);
    while (segment) {
        EXPECT_EQ(segment->start, segments.empty() ? 0 : segments.back().nextStart);
        EXPECT_LE(segment->end - segment->start, maximumSegmentLength + cutContextLength);
        for (const std::size_t at : {segment->start, (segment->start + segment->end) / 2,
                                     segment->nextStart - (segment->nextStart > segment->start)})
            EXPECT_EQ(segmentAt(text, at), *segment) << at;
        if (!segments.empty()) {
            EXPECT_EQ(segmentBefore(text, *segment), segments.back());
        }
        segments.push_back(*segment);
        segment = segmentAfter(text, *segment);
    }
    EXPECT_EQ(segments.back().nextStart, text.length());
    return segments;
}

TEST(LineSegment, ShortLinesAreWhole)
{
    const TextSnapshot text(u"one\r\ntwo\u2028three\r\u0085\n");
    const std::vector<LineSegment> segments = allSegments(text);
    ASSERT_EQ(segments.size(), 6u);
    EXPECT_EQ(segments[0], (LineSegment{0, 0, 3, 5, true}));
    EXPECT_EQ(segments[1], (LineSegment{5, 5, 8, 9, true}));
    EXPECT_EQ(segments[2], (LineSegment{9, 9, 14, 15, true}));
    EXPECT_EQ(segments[3], (LineSegment{15, 15, 15, 16, true}));
    EXPECT_EQ(segments[4], (LineSegment{16, 16, 16, 17, true}));
    EXPECT_EQ(segments[5], (LineSegment{17, 17, 17, 17, true}));
}

TEST(LineSegment, AnEmptyTextIsOneEmptySegment)
{
    EXPECT_EQ(allSegments(TextSnapshot()).size(), 1u);
}

TEST(LineSegment, ALongLineIsCutBehindABlank)
{
    std::u16string line(20000, u'x');
    line[maximumSegmentLength - 10] = u' ';
    const std::vector<LineSegment> segments = allSegments(TextSnapshot(line + u"\nend"));
    ASSERT_EQ(segments.size(), 6u);
    EXPECT_EQ(segments[0].end, maximumSegmentLength - 9);
    EXPECT_EQ(segments[1].end, 2 * maximumSegmentLength);
    EXPECT_FALSE(segments[3].isLastOfLine);
    EXPECT_TRUE(segments[4].isLastOfLine);
    EXPECT_EQ(segments[4].lineStart, 0u);
    EXPECT_FALSE(segments[4].startsLine());
    EXPECT_TRUE(segments[5].startsLine());
}

TEST(LineSegment, ALineOfExactlyOneSegmentIsNotCut)
{
    EXPECT_EQ(allSegments(TextSnapshot(std::u16string(maximumSegmentLength, u'x'))).size(), 1u);
    EXPECT_EQ(allSegments(TextSnapshot(std::u16string(maximumSegmentLength + 1, u'x'))).size(), 2u);
}

TEST(LineSegment, ACutSplitsNoCharacter)
{
    std::u16string line(maximumSegmentLength - 1, u'x');
    const std::u16string family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467";
    line += family + std::u16string(100, u'y');
    const std::vector<LineSegment> segments = allSegments(TextSnapshot(line));
    ASSERT_EQ(segments.size(), 2u);
    EXPECT_EQ(segments[0].end, maximumSegmentLength - 1);

    std::u16string marked(maximumSegmentLength, u'x');
    marked += u"\u0301\u0302" + std::u16string(100, u'y');
    EXPECT_EQ(allSegments(TextSnapshot(marked))[0].end, maximumSegmentLength - 1);
}

TEST(LineSegment, TextsOfAnyKindAreCovered)
{
    std::mt19937 random(7);
    const std::u16string_view common = u"ab x\t";
    const std::u16string_view rare = u"\n\r\u0301\u200D\u2028\u4E2D\U0001F600";
    for (int round = 0; round < 20; ++round) {
        std::u16string text;
        const std::size_t length = random() % 20000;
        // Few terminators, so that lines grow long.
        while (text.size() < length) {
            const std::u16string_view units = random() % 500 ? common : rare;
            text += units[random() % units.size()];
        }
        SCOPED_TRACE(round);
        allSegments(TextSnapshot(text));
    }
}

}  // namespace
}  // namespace tavrel
