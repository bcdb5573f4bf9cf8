#include "editor/ColoredRanges.h"

#include <algorithm>

namespace tavrel {

void ColoredRanges::textDidChange(TextRange oldRange, std::size_t newLength)
{
    const auto moved = [&](std::size_t location) {
        if (location >= oldRange.end())
            return location - oldRange.length + newLength;
        return std::min(location, oldRange.location);
    };
    for (Stretch& stretch : stretches_) {
        // An insertion at a stretch's end is outside, one between two units of it inside.
        if (stretch.end > oldRange.location)
            stretch.end = moved(stretch.end);
        stretch.start = moved(stretch.start);
    }
    std::erase_if(stretches_, [](const Stretch& stretch) { return stretch.start >= stretch.end; });
}

void ColoredRanges::add(TextRange range, bool isSure)
{
    if (range.isEmpty())
        return;
    remove(range);
    const auto behind =
        std::find_if(stretches_.begin(), stretches_.end(),
                     [&](const Stretch& stretch) { return stretch.start >= range.end(); });
    stretches_.insert(behind, {range.location, range.end(), isSure});
    std::vector<Stretch> joined;
    for (const Stretch& stretch : stretches_) {
        if (!joined.empty() && joined.back().end == stretch.start &&
            joined.back().isSure == stretch.isSure)
            joined.back().end = stretch.end;
        else
            joined.push_back(stretch);
    }
    stretches_ = std::move(joined);
}

void ColoredRanges::remove(TextRange range)
{
    if (range.isEmpty())
        return;
    std::vector<Stretch> left;
    for (const Stretch& stretch : stretches_) {
        if (stretch.start < range.location)
            left.push_back({stretch.start, std::min(stretch.end, range.location), stretch.isSure});
        if (stretch.end > range.end())
            left.push_back({std::max(stretch.start, range.end()), stretch.end, stretch.isSure});
    }
    stretches_ = std::move(left);
}

void ColoredRanges::doubt(std::size_t location)
{
    std::vector<Stretch> doubtful;
    for (const Stretch& stretch : stretches_) {
        const std::size_t border = std::clamp(location, stretch.start, stretch.end);
        if (stretch.start < border)
            doubtful.push_back({stretch.start, border, stretch.isSure});
        if (border < stretch.end)
            doubtful.push_back({border, stretch.end, false});
    }
    clear();
    for (const Stretch& stretch : doubtful)
        add({stretch.start, stretch.end - stretch.start}, stretch.isSure);
}

std::vector<TextRange> ColoredRanges::wanting(TextRange range, std::size_t knownEnd) const
{
    std::vector<TextRange> parts;
    std::size_t from = range.location;
    for (const Stretch& stretch : stretches_) {
        const std::size_t start = stretch.start;
        // Of a stretch that is not sure only what can be made sure is worth another look.
        const std::size_t wantedEnd =
            stretch.isSure ? start : std::clamp(knownEnd, start, stretch.end);
        if (stretch.end <= wantedEnd || stretch.end <= from || wantedEnd >= range.end())
            continue;
        if (wantedEnd > from)
            parts.push_back({from, wantedEnd - from});
        from = std::max(from, stretch.end);
    }
    if (from < range.end())
        parts.push_back({from, range.end() - from});
    return parts;
}

std::size_t ColoredRanges::length() const
{
    std::size_t sum = 0;
    for (const Stretch& stretch : stretches_)
        sum += stretch.end - stretch.start;
    return sum;
}

}  // namespace tavrel
