#pragma once

#include "highlight/ScannedText.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace tavrel {

/// What a "/" may follow as the start of a regular expression, though it is a word.
inline constexpr std::string_view wordsBeforeRegex =
    "return throw case delete typeof void new await yield else do in of instanceof";

/// Finds where a regular expression literal between two "/" ends.
///
/// Asked from left to right. A "/" inside "[...]" closes nothing. A "/" that finds no end on its
/// line is remembered, so that a line of many such costs O(its length) in all.
class RegexLiterals {
public:
    /// Where the literal ends whose first "/" is at `location`, its flags included; nothing where
    /// that "/" opens none: the line or the text ends before the closing "/", or its first
    /// character is "/" or "*".
    std::optional<std::size_t> end(ScannedText& text, std::size_t location);

private:
    void followFailed(ScannedText& text, std::size_t location);
    bool hasFailed() const { return failedAt_ < failedEnd_; }

    // From one place there are only two ways through the rest of a line: outside "[...]" and
    // inside. So of the walks that failed it is enough to follow one of each kind.
    std::size_t failedAt_ = 0;   // Where both stand.
    std::size_t failedEnd_ = 0;  // The end of their line; where nothing has failed, not behind.
    bool failsOutside_ = false;  // Whether the way outside "[...]" is known to fail.
    bool failsInside_ = false;   // Whether the way inside is.
};

}  // namespace tavrel
