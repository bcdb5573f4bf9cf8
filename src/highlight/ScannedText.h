#pragma once

#include "highlight/CharacterClass.h"
#include "highlight/TextSource.h"
#include "platform/TextRange.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace tavrel {

/// The text that a scanner reads: a stretch of a source that is a text of its own.
///
/// Locations count from the start of the stretch. Units near each other cost O(1), whatever the
/// blocks of the source; a jump costs the filling of one window. Borrows the source. One thread.
class ScannedText {
public:
    /// `range` is clamped to the source.
    ScannedText(const TextSource& source, TextRange range);
    explicit ScannedText(const TextSource& source) : ScannedText(source, {0, source.length()}) {}
    ScannedText(const ScannedText&) = delete;
    ScannedText& operator=(const ScannedText&) = delete;

    std::size_t length() const { return range_.length; }

    /// The unit at `location`; at or past the end it is U+0000.
    char16_t unitAt(std::size_t location)
    {
        // Locations before the window wrap around to huge offsets.
        const std::size_t offset = location - windowStart_;
        if (offset < windowLength_) [[likely]]
            return window_[offset];
        return unitElsewhere(location);
    }

    /// The units from `location` to the end of their window: at least one, or none at the end of
    /// the text. Valid until another unit is asked for.
    std::u16string_view piece(std::size_t location)
    {
        const std::size_t offset = location - windowStart_;
        if (offset < windowLength_) [[likely]]
            return {window_ + offset, windowLength_ - offset};
        return pieceElsewhere(location);
    }

    /// Whether `text` stands at `location`.
    bool matches(std::size_t location, std::string_view text);

    /// The first location from `location` on whose unit is in none of `classes`.
    std::size_t skip(std::size_t location, CharacterClasses classes);

    /// The first location from `location` on, and before `end`, with one of the two units; `end`,
    /// cut to the length, where there is none.
    std::size_t find(std::size_t location, char16_t unit, char16_t other, std::size_t end);
    std::size_t find(std::size_t location, char16_t unit, char16_t other)
    {
        return find(location, unit, other, length());
    }
    std::size_t find(std::size_t location, char16_t unit) { return find(location, unit, unit); }

    /// Where the line at `location` ends: at its line feed or carriage return, or at the end.
    std::size_t lineEnd(std::size_t location) { return find(location, u'\n', u'\r'); }

    /// The first unit from `location` on that is no space, tab, line feed or carriage return.
    char16_t nextVisible(std::size_t location)
    {
        return unitAt(skip(location, blankClass | newlineClass));
    }

private:
    /// Units that a source may decode at once.
    static constexpr std::size_t windowSize = 4096;

    bool load(std::size_t location);
    char16_t unitElsewhere(std::size_t location);
    std::u16string_view pieceElsewhere(std::size_t location);

    const TextSource& source_;
    TextRange range_;  // The stretch, in the source.
    const char16_t* window_ = nullptr;
    std::size_t windowStart_ = 0;   // In the stretch.
    std::size_t windowLength_ = 0;  // Cut to the stretch.
    std::array<char16_t, windowSize> scratch_;
};

}  // namespace tavrel
