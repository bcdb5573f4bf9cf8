#pragma once

#include "platform/TextRange.h"

#include <cstddef>
#include <vector>

namespace tavrel {

/// Which parts of a text have been given their tokens, and which of those for sure.
///
/// A short list: only what is near a view is coloured. Every call costs O(its length).
class ColoredRanges {
public:
    struct Stretch {
        std::size_t start = 0;
        std::size_t end = 0;
        bool isSure = false;  // The tokens are those of a scan of the whole text.
        bool operator==(const Stretch&) const = default;
    };

    void clear() { stretches_.clear(); }

    /// Stretches keep to their text. What was inserted belongs to the stretch around it.
    void textDidChange(TextRange oldRange, std::size_t newLength);

    void add(TextRange range, bool isSure);
    void remove(TextRange range);
    /// What lies at or behind `location` is no longer sure.
    void doubt(std::size_t location);

    /// The parts of `range` that have no tokens yet, and those before `knownEnd` whose tokens are
    /// not sure. In order.
    std::vector<TextRange> wanting(TextRange range, std::size_t knownEnd) const;

    const std::vector<Stretch>& stretches() const { return stretches_; }
    /// Units in all stretches.
    std::size_t length() const;

private:
    std::vector<Stretch> stretches_;  // Ascending, without overlap; neighbours that touch differ.
};

}  // namespace tavrel
