#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tavrel {

enum class GitLineChangeKind : std::uint8_t { added, modified };

/// Neighbouring lines that differ in one way. Lines are LF lines, counted from 1.
struct GitChangedLines {
    std::int64_t first = 1;
    std::int64_t count = 1;  // Never 0.
    GitLineChangeKind kind = GitLineChangeKind::added;

    std::int64_t end() const { return first + count; }
    bool operator==(const GitChangedLines&) const = default;
};

/// Which lines of a text differ from the last commit. A value.
struct GitLineDiff {
    /// In order and without overlap; neighbours that touch differ in their kind.
    std::vector<GitChangedLines> changedLines;
    /// The lines behind which something was removed, each once and in order; 0 is before line 1.
    std::vector<std::int64_t> deletedAfterLines;

    /// Reads what "git diff --unified=0" prints. Any bytes may come in: what is no hunk header is
    /// passed over, and a number that does not fit in 31 bits counts as 1. Of two hunks that name
    /// the same line the later one counts.
    static GitLineDiff parse(std::string_view diff);

    /// All the lines of a text that has no older form. `text` is UTF-8.
    static GitLineDiff allAdded(std::string_view text);

    bool isEmpty() const { return changedLines.empty() && deletedAfterLines.empty(); }
    /// Absent for a line that did not change. O(log n).
    std::optional<GitLineChangeKind> changeAt(std::int64_t line) const;
    bool isDeletedAfter(std::int64_t line) const;

    bool operator==(const GitLineDiff&) const = default;
};

}  // namespace tavrel
