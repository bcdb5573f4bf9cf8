#pragma once

#include "platform/TextRange.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tavrel {

/// The offsets of secondary cursors in normal form: ascending, each once, none of them where an
/// empty primary selection stands.
///
/// A value whose copies share the list, so that each step of a history can hold the cursors of ten
/// thousand places at the cost of a pointer.
class CursorLocations {
public:
    CursorLocations() = default;

    /// Brings any offsets into normal form for a text of `textLength` units. Offsets past the end
    /// are moved to it. Costs O(n log n), O(n) where they come sorted.
    static CursorLocations normalised(std::vector<std::size_t> offsets, std::size_t textLength,
                                      TextRange primary);

    /// Every cursor of a pane: the primary location, clamped, and these, ascending, each once.
    std::vector<std::size_t> withPrimary(std::size_t primaryLocation, std::size_t textLength) const;

    const std::vector<std::size_t>& offsets() const;
    bool isEmpty() const { return offsets().empty(); }
    bool operator==(const CursorLocations& other) const { return offsets() == other.offsets(); }

private:
    std::shared_ptr<const std::vector<std::size_t>> offsets_;  // Null stands for none.
};

}  // namespace tavrel
