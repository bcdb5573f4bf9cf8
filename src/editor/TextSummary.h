#pragma once

#include <cstddef>

namespace tavrel {

/// What a stretch of text adds to the counts of the whole. Sums of neighbours, in order, are the
/// summary of both together; a default one is that of the empty text.
struct TextSummary {
    std::size_t units = 0;
    std::size_t lfs = 0;
    std::size_t breaks = 0;  // A CR and the LF behind it are one, counted at the CR.
    bool startsWithLf = false;
    bool endsWithCr = false;

    friend TextSummary operator+(const TextSummary& left, const TextSummary& right)
    {
        if (left.units == 0)
            return right;
        if (right.units == 0)
            return left;
        const std::size_t shared = left.endsWithCr && right.startsWithLf ? 1 : 0;
        return {left.units + right.units, left.lfs + right.lfs, left.breaks + right.breaks - shared,
                left.startsWithLf, right.endsWithCr};
    }
    bool operator==(const TextSummary&) const = default;
};

}  // namespace tavrel
