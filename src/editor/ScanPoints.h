#pragma once

#include "highlight/Scanner.h"
#include "highlight/TokenRuns.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tavrel {

/// A scan point of a text, and how far a scanner had to look to come there.
struct KnownScanPoint {
    ScanPoint point;
    /// Text from here on had no part in what is known up to the point. May lie behind the text, by
    /// one unit, where its end had a part in it.
    std::size_t reach = 0;

    std::size_t location() const { return point.location; }
    bool operator==(const KnownScanPoint&) const = default;
};

/// The tokens between one scan point and the next, kept where these lie far apart: where one
/// token, a comment or a string, is very long.
struct LongStretch {
    std::size_t location = 0;
    TokenRuns runs;

    std::size_t end() const { return location + runs.length(); }
};

/// What a scan has found out: its points in order, and the long stretches among them.
struct ScanProgress {
    std::vector<KnownScanPoint> points;
    std::vector<LongStretch> longStretches;
};

/// The scan points of a text that is edited.
///
/// The points up to `knownEnd` are true: a scan of the whole text passes them. An edit leaves those
/// behind it as candidates: as soon as a new scan meets one of them, all that were true before are
/// true again. Costs O(points) at an edit, of which there are few, and O(log n) for a look.
class ScanPoints {
public:
    ScanPoints() { reset(); }

    /// Knows the start of the text and nothing else.
    void reset();

    /// The last true point.
    const KnownScanPoint& last() const { return points_[trueCount_ - 1]; }
    std::size_t knownEnd() const { return last().location(); }
    /// The last true point at or before `location`.
    const KnownScanPoint& lastBefore(std::size_t location) const;
    /// The true long stretch that holds `location`, or null.
    const LongStretch* longStretchAt(std::size_t location) const;
    /// The points that the next scan may meet.
    std::span<const KnownScanPoint> candidates() const
    {
        return {points_.data() + trueCount_, candidateCount_};
    }
    std::size_t size() const { return points_.size(); }

    /// The text has changed. What depends on the old text is no longer true.
    void textDidChange(TextRange oldRange, std::size_t newLength);

    /// A scan has gone on from `last()` and found these points, in order. It has met the candidates
    /// where its last point equals one of them.
    void add(ScanProgress progress);

    /// Whether a scan at `point` has met the candidates.
    static bool meets(std::span<const KnownScanPoint> candidates, const ScanPoint& point);

private:
    static constexpr std::size_t maximumPoints = 40'000;

    void forgetLongStretches(std::size_t from, std::size_t end);
    void thinOut();

    std::vector<KnownScanPoint> points_;      // Ascending; the first is the start of the text.
    std::size_t trueCount_ = 1;               // At least one.
    std::size_t candidateCount_ = 0;          // Those behind the true ones. What follows them
                                              // is a candidate once they are true.
    std::vector<LongStretch> longStretches_;  // Ascending.
};

}  // namespace tavrel
