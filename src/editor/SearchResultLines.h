#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

class TextSnapshot;

/// What a line of project search results names.
struct SearchResultPlace {
    std::u16string path;    // As it stands there, from "/" on.
    std::int64_t line = 1;  // The number as it stands there; too large ones count as the largest.

    bool operator==(const SearchResultPlace&) const = default;
};

/// The place that a heading such as "/home/a.txt:12:" names; `line` comes without its terminator.
std::optional<SearchResultPlace> searchResultHeading(std::u16string_view line);

/// The number of a result line such as ">   12: found" or "    13: next".
std::optional<std::int64_t> searchResultNumber(std::u16string_view line);

/// What the line at `offset` names: a heading by itself, a result line together with the heading
/// above it. Past the last character it is the last line. Absent for any other line.
///
/// Costs O(lines up to the heading), whatever their lengths: no path is as long as the longest
/// lines that are looked at.
std::optional<SearchResultPlace> searchResultAt(const TextSnapshot& text, std::size_t offset);

}  // namespace tavrel
