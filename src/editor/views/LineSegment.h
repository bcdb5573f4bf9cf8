#pragma once

#include "editor/TextSnapshot.h"

#include <cstddef>
#include <optional>

namespace tavrel {

/// The longest stretch of a line that is laid out in one piece, in units.
constexpr std::size_t maximumSegmentLength = 4096;

/// How far from a segment's end lies what may decide where that is, in units.
constexpr std::size_t cutContextLength = 256;

/// A piece of a line that is wrapped by itself, so that a very long line costs as little to show as
/// a short one. A line of up to `maximumSegmentLength` units is one segment. A longer one is cut at
/// multiples of that length from its start, moved back a little so that no word is split where that
/// can be helped, and no user-perceived character either.
struct LineSegment {
    std::size_t lineStart = 0;
    std::size_t start = 0;
    std::size_t end = 0;        // Where the content ends; the terminator is not part of it.
    std::size_t nextStart = 0;  // Where the next segment begins: behind the terminator, if any.
    bool isLastOfLine = true;

    bool startsLine() const { return start == lineStart; }
    bool operator==(const LineSegment&) const = default;
};

/// The segment that shows `location`, clamped to the text. Costs O(log n).
LineSegment segmentAt(const TextSnapshot& text, std::size_t location);

/// The segments beside `segment`; nothing where the text ends.
std::optional<LineSegment> segmentAfter(const TextSnapshot& text, const LineSegment& segment);
std::optional<LineSegment> segmentBefore(const TextSnapshot& text, const LineSegment& segment);

}  // namespace tavrel
