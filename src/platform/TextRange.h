#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>

namespace tavrel {

/// A stretch of a text: where it starts and how long it is, both in UTF-16 code units.
struct TextRange {
    std::size_t location = 0;
    std::size_t length = 0;

    constexpr std::size_t end() const { return location + length; }
    constexpr bool isEmpty() const { return length == 0; }
    constexpr bool contains(std::size_t offset) const
    {
        return offset >= location && offset < end();
    }

    /// In the order of their locations, shorter ranges first where two locations are equal.
    constexpr auto operator<=>(const TextRange&) const = default;
};

/// The part of `range` that lies in a text of `textLength` units: the location is moved into
/// 0 to `textLength`, then the length is cut to what is left. Any two numbers may come in.
constexpr TextRange clampedRange(TextRange range, std::size_t textLength)
{
    const std::size_t location = std::min(range.location, textLength);
    return {location, std::min(range.length, textLength - location)};
}

}  // namespace tavrel
