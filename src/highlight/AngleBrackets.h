#pragma once

#include "highlight/ScannedText.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tavrel {

/// Finds the ">" that balances a "<", as in the parameters of a template.
///
/// Asked from left to right. A look ahead notes every bracket it passes, and later questions about
/// those are answered from the notes, so all questions together cost O(text).
class AngleBrackets {
public:
    /// Where the ">" of the "<" at `location` stands. None where ";", "{" or "}" comes first, or
    /// the end of the text, or more text than parameters would ever take.
    std::optional<std::size_t> closing(ScannedText& text, std::size_t location);

private:
    static constexpr std::size_t farthest = 65'536;
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    void lookAhead(ScannedText& text, std::size_t location);

    struct Bracket {
        std::size_t location;
        std::size_t closing;
    };
    std::vector<Bracket> brackets_;  // In order of their locations.
    std::vector<std::size_t> open_;  // Indices of those that are not closed yet.
    std::size_t seenEnd_ = 0;        // What the notes cover ends here.
    std::size_t next_ = 0;           // The first bracket that was not asked about.
};

}  // namespace tavrel
