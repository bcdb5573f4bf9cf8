#pragma once

#include "platform/TextRange.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tavrel {

/// One stretch of a text that was replaced: the range in the text before all changes of the list
/// that it stands in, and the length of what stands there now.
struct TextChange {
    TextRange oldRange;
    std::size_t newLength = 0;
    bool operator==(const TextChange&) const = default;
};

/// What two lists of changes do together: `first` leads from one text to a second, `then` from that
/// to a third, the result from the first to the third. Each list ascends without overlap. Changes
/// that touch become one. Costs O(size of both).
std::vector<TextChange> composedChanges(std::span<const TextChange> first,
                                        std::span<const TextChange> then);

/// Composes lists that come one after another, in O(n log n) for n changes in all.
class TextChangeComposer {
public:
    void add(std::vector<TextChange> changes);
    /// All of them as one list. The composer starts afresh.
    std::vector<TextChange> take();

private:
    struct Level {
        std::vector<TextChange> changes;
        std::size_t weight;  // Number of changes that went in.
    };
    void composeLast();

    // From the earliest to the latest; the weights descend, each at most half of the one before.
    std::vector<Level> levels_;
};

}  // namespace tavrel
