#pragma once

#include "editor/TextChange.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tavrel {

/// Where a location goes that stands just where text is inserted.
enum class InsertionSide { before, behind };

/// Takes locations of a text before some changes to those of the text after them.
///
/// Making one costs O(changes), a question O(log changes).
class LocationMap {
public:
    /// `changes` ascend without overlap.
    explicit LocationMap(std::span<const TextChange> changes);

    /// The same place in the new text. A location inside a stretch that was replaced keeps its
    /// distance from the start of the stretch, at most its new length.
    std::size_t mapped(std::size_t location, InsertionSide side = InsertionSide::before) const;

    /// The same stretch in the new text. What is inserted at its borders does not join it.
    TextRange mapped(TextRange range) const;

private:
    struct Stretch {
        TextRange oldRange;
        TextRange newRange;
    };
    std::vector<Stretch> stretches_;
};

}  // namespace tavrel
