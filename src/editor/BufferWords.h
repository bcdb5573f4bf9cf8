#pragma once

#include "editor/TextSnapshot.h"
#include "editor/WordCounts.h"

#include <cstddef>
#include <vector>

namespace tavrel {

/// Adds the words of `range` to `words`, `count` times each. Costs O(range).
void countWords(const TextSnapshot& text, TextRange range, WordCounts& words, std::int64_t count);

/// The words of a text that changes, with how often each occurs.
///
/// Keeps the text that it has counted. Of the next one it counts only what does not share its
/// blocks with that, so an edit in a large text costs a few blocks. Main thread only.
class BufferWords {
public:
    /// Makes `words()` those of `text`, exactly.
    void update(const TextSnapshot& text);
    const WordCounts& words() const { return words_; }

private:
    /// Units that lie side by side in memory. While a snapshot holds them, equal places in memory
    /// mean equal units.
    struct Piece {
        const void* units;
        std::size_t length;
        bool operator==(const Piece&) const = default;
    };
    /// Stretches of the old and the new text that differ, or are looked at as if they did.
    struct Difference {
        TextRange oldRange;
        TextRange newRange;
    };

    static std::vector<Piece> piecesOf(const TextSnapshot& text);
    std::vector<Difference> differences(const std::vector<Piece>& newPieces) const;
    /// Widens each difference to where no word crosses its borders, and joins those that meet.
    std::vector<Difference> widened(const std::vector<Difference>& differences) const;
    void countAnew(const TextSnapshot& text);

    TextSnapshot text_;  // The one that `words_` is of.
    std::vector<Piece> pieces_;
    WordCounts words_;
};

}  // namespace tavrel
