#include "editor/views/LineSegment.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <string>

namespace tavrel {

namespace {

// How far a cut is moved back in search of a blank.
constexpr std::size_t cutSearchLength = 128;

bool isBlank(char16_t unit)
{
    return unit == u' ' || unit == u'\t';
}

// Whether a cut between the two halves of `around` (cut at `index`) would split a character.
bool splitsCharacter(const std::u16string& around, std::size_t index)
{
    const char16_t before = around[index - 1];
    const char16_t after = around[index];
    if (U16_IS_LEAD(before) && U16_IS_TRAIL(after))
        return true;
    if (before == u'\u200D')  // A joiner holds emoji together.
        return true;
    UChar32 next = after;
    if (U16_IS_LEAD(after) && index + 1 < around.size() && U16_IS_TRAIL(around[index + 1]))
        next = U16_GET_SUPPLEMENTARY(after, around[index + 1]);
    return u_hasBinaryProperty(next, UCHAR_GRAPHEME_EXTEND) ||
           u_hasBinaryProperty(next, UCHAR_EMOJI_MODIFIER);
}

// Where the piece `index` of the line begins. `base` must lie inside the line for every index but
// 0.
std::size_t cutAt(const TextSnapshot& text, std::size_t lineStart, std::size_t lineEnd,
                  std::size_t index)
{
    if (index == 0)
        return lineStart;
    const std::size_t base = lineStart + index * maximumSegmentLength;
    const std::size_t from = base - cutSearchLength;
    const std::u16string around = text.text({from, std::min(lineEnd, base + 2) - from});
    for (std::size_t i = cutSearchLength; i > 0; --i) {
        if (isBlank(around[i - 1]) && !isBlank(around[i]))
            return from + i;
    }
    for (std::size_t i = cutSearchLength; i > cutSearchLength / 2; --i) {
        if (!splitsCharacter(around, i))
            return from + i;
    }
    return base;
}

struct Line {
    std::size_t start;
    std::size_t end;  // Of the content.
    std::size_t nextStart;

    std::size_t lastPiece() const
    {
        return end == start ? 0 : (end - start - 1) / maximumSegmentLength;
    }
};

Line lineAt(const TextSnapshot& text, std::size_t location)
{
    const TextRange range = text.lineRange({location, 0});
    return {range.location, text.lineContentEnd(location), range.end()};
}

LineSegment piece(const TextSnapshot& text, const Line& line, std::size_t index)
{
    const bool isLast = index == line.lastPiece();
    LineSegment segment;
    segment.lineStart = line.start;
    segment.start = cutAt(text, line.start, line.end, index);
    segment.end = isLast ? line.end : cutAt(text, line.start, line.end, index + 1);
    segment.nextStart = isLast ? line.nextStart : segment.end;
    segment.isLastOfLine = isLast;
    return segment;
}

}  // namespace

LineSegment segmentAt(const TextSnapshot& text, std::size_t location)
{
    location = std::min(location, text.length());
    const Line line = lineAt(text, location);
    const std::size_t index =
        std::min((location - line.start) / maximumSegmentLength, line.lastPiece());
    const LineSegment segment = piece(text, line, index);
    // Cuts only ever move back, so a location short of a multiple may lie in the piece behind it.
    if (!segment.isLastOfLine && location >= segment.end)
        return piece(text, line, index + 1);
    return segment;
}

std::optional<LineSegment> segmentAfter(const TextSnapshot& text, const LineSegment& segment)
{
    if (segment.isLastOfLine && segment.nextStart == segment.end)
        return std::nullopt;
    return segmentAt(text, segment.nextStart);
}

std::optional<LineSegment> segmentBefore(const TextSnapshot& text, const LineSegment& segment)
{
    if (segment.start == 0)
        return std::nullopt;
    return segmentAt(text, segment.start - 1);
}

}  // namespace tavrel
