#include "editor/WordOccurrences.h"

#include "editor/TextSearch.h"
#include "editor/WordRanges.h"

#include <algorithm>

namespace tavrel {

TextRange wordOfSelection(const TextSnapshot& text, TextRange selection)
{
    const bool standsAlone = !selection.isEmpty() && touchesNoWordCharacter(text, selection);
    return standsAlone ? selection : wordRangeAt(text, selection.location);
}

std::optional<TextRange> nextOccurrence(const TextSnapshot& text, std::u16string_view word,
                                        TextRange part, std::span<const TextRange> taken)
{
    std::vector<TextRange> sorted(taken.begin(), taken.end());
    std::sort(sorted.begin(), sorted.end());
    std::optional<TextRange> next;
    forEachMatch(text, word, part, [&](TextRange place) {
        const bool isTaken = std::binary_search(sorted.begin(), sorted.end(), place);
        if (isTaken || !touchesNoWordCharacter(text, place))
            return true;
        next = place;
        return false;
    });
    return next;
}

std::vector<TextRange> allOccurrences(const TextSnapshot& text, std::u16string_view word)
{
    std::vector<TextRange> places;
    forEachMatch(text, word, {0, text.length()}, [&](TextRange place) {
        if (touchesNoWordCharacter(text, place))
            places.push_back(place);
        return true;
    });
    return places;
}

std::vector<TextRange> survivingOccurrences(const TextSnapshot& text,
                                            const SelectedWordOccurrences& occurrences)
{
    std::vector<TextRange> surviving;
    for (const TextRange& range : occurrences.ranges) {
        const bool isInside = clampedRange(range, text.length()) == range;
        if (isInside && text.text(range) == occurrences.word && touchesNoWordCharacter(text, range))
            surviving.push_back(range);
    }
    return surviving;
}

}  // namespace tavrel
