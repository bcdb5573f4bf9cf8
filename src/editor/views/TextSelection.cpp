#include "editor/views/TextSelection.h"

#include "editor/WordRanges.h"

#include <algorithm>

namespace tavrel {

namespace {

// No run of signs longer than this is selected at one go.
constexpr std::size_t maximumRunLength = 0x10000;

bool isBlank(char16_t unit)
{
    return unit == u' ' || unit == u'\t';
}

}  // namespace

TextRange wordSelectionAt(const TextSnapshot& text, std::size_t location)
{
    const TextRange line = text.lineRange({location, 0});
    const std::size_t end = text.lineContentEnd(location);
    location = std::min(location, end);
    const TextRange word = wordRangeAt(text, location);
    if (word.contains(location) || (location == end && word.end() == end && !word.isEmpty()))
        return word;
    if (line.location == end)
        return {location, 0};

    const std::size_t hit = std::min(location, end - 1);
    const char16_t sign = text.unitAt(hit);
    const auto isAlike = [&](std::size_t at) {
        const char16_t unit = text.unitAt(at);
        return isBlank(sign) ? isBlank(unit) : unit == sign;
    };
    const std::size_t lowest = std::max(line.location, hit - std::min(hit, maximumRunLength));
    const std::size_t highest = std::min(end, hit + maximumRunLength);
    std::size_t from = hit;
    while (from > lowest && isAlike(from - 1))
        --from;
    std::size_t to = hit + 1;
    while (to < highest && isAlike(to))
        ++to;
    return {from, to - from};
}

TextRange selectionUnitAt(const TextSnapshot& text, std::size_t location, SelectionUnit unit)
{
    switch (unit) {
    case SelectionUnit::character:
        return {std::min(location, text.length()), 0};
    case SelectionUnit::word:
        return wordSelectionAt(text, location);
    case SelectionUnit::line:
        return text.lineRange({location, 0});
    }
    return {};
}

SelectionDrag::SelectionDrag(const TextSnapshot& text, std::size_t location, SelectionUnit unit)
    : origin_(selectionUnitAt(text, location, unit)), range_(origin_), head_(origin_.end()),
      unit_(unit)
{
}

SelectionDrag SelectionDrag::extending(TextRange selection, std::size_t location)
{
    const std::size_t toStart = location > selection.location ? location - selection.location
                                                              : selection.location - location;
    const std::size_t toEnd =
        location > selection.end() ? location - selection.end() : selection.end() - location;
    SelectionDrag drag;
    drag.origin_ = {toEnd <= toStart ? selection.location : selection.end(), 0};
    drag.range_ = selection;
    drag.head_ = toEnd <= toStart ? selection.end() : selection.location;
    return drag;
}

TextRange SelectionDrag::movedTo(const TextSnapshot& text, std::size_t location)
{
    const TextRange unit = selectionUnitAt(text, location, unit_);
    const std::size_t start = std::min(origin_.location, unit.location);
    const std::size_t end = std::max(origin_.end(), unit.end());
    head_ = location < origin_.location ? start : end;
    range_ = {start, end - start};
    return range_;
}

}  // namespace tavrel
