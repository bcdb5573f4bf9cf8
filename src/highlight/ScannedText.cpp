#include "highlight/ScannedText.h"

#include <algorithm>

namespace tavrel {

ScannedText::ScannedText(const TextSource& source, TextRange range)
    : source_(source), range_(clampedRange(range, source.length()))
{
}

bool ScannedText::matches(std::size_t location, std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (unitAt(location + i) != static_cast<unsigned char>(text[i]))
            return false;
    }
    // Past the end every unit is U+0000, so a text without it cannot reach there.
    return true;
}

std::size_t ScannedText::skip(std::size_t location, CharacterClasses classes)
{
    for (;;) {
        const std::u16string_view units = piece(location);
        if (units.empty())
            return range_.length;
        for (std::size_t i = 0; i < units.size(); ++i) {
            if (!(classesOf(units[i]) & classes))
                return location + i;
        }
        location += units.size();
    }
}

std::size_t ScannedText::find(std::size_t location, char16_t unit, char16_t other, std::size_t end)
{
    end = std::min(end, range_.length);
    while (location < end) {
        const std::u16string_view units = piece(location).substr(0, end - location);
        for (std::size_t i = 0; i < units.size(); ++i) {
            if (units[i] == unit || units[i] == other)
                return location + i;
        }
        location += units.size();
    }
    return end;
}

bool ScannedText::load(std::size_t location)
{
    if (location >= range_.length)
        return false;
    const TextWindow window = source_.windowAt(range_.location + location, scratch_);
    const std::size_t from = std::max(window.start, range_.location);
    const std::size_t to = std::min(window.start + window.length, range_.end());
    window_ = window.units + (from - window.start);
    windowStart_ = from - range_.location;
    windowLength_ = to - from;
    return true;
}

char16_t ScannedText::unitElsewhere(std::size_t location)
{
    return load(location) ? window_[location - windowStart_] : u'\0';
}

std::u16string_view ScannedText::pieceElsewhere(std::size_t location)
{
    if (!load(location))
        return {};
    return {window_ + (location - windowStart_), windowLength_ - (location - windowStart_)};
}

}  // namespace tavrel
