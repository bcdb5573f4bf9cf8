#include "editor/WordSelectionCommands.h"

#include "editor/EditorPane.h"
#include "editor/WordOccurrences.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tavrel {

namespace {

/// The next occurrence behind the last one taken; past the end of the text the search goes on from
/// its start up to that place.
std::optional<TextRange> occurrenceBehind(const TextSnapshot& text,
                                          const SelectedWordOccurrences& taken)
{
    const std::size_t from = std::min(taken.ranges.back().end(), text.length());
    const TextRange rest{from, text.length() - from};
    if (const auto found = nextOccurrence(text, taken.word, rest, taken.ranges))
        return found;
    return nextOccurrence(text, taken.word, {0, from}, taken.ranges);
}

TextRange nearest(const std::vector<TextRange>& ranges, std::size_t location)
{
    const auto distance = [location](const TextRange& range) {
        return std::max(range.location, location) - std::min(range.location, location);
    };
    return *std::min_element(ranges.begin(), ranges.end(), [&](const auto& a, const auto& b) {
        return distance(a) < distance(b);
    });
}

}  // namespace

void selectWord(EditorPane& pane, const EditorCommand&)
{
    pane.clearSecondaryCursors();
    const TextSnapshot text = pane.text();
    SelectedWordOccurrences occurrences;
    if (const SelectedWordOccurrences* selected = pane.validOccurrences()) {
        occurrences = *selected;
        if (const auto next = occurrenceBehind(text, occurrences))
            occurrences.ranges.push_back(*next);
    } else {
        const TextRange word = wordOfSelection(text, pane.selectedRange());
        if (word.isEmpty())
            return;
        occurrences = {text.text(word), {word}};
    }
    const TextRange last = occurrences.ranges.back();
    pane.showOccurrences(std::move(occurrences), last);
}

void selectWordAll(EditorPane& pane, const EditorCommand&)
{
    pane.clearSecondaryCursors();
    const TextSnapshot text = pane.text();
    const SelectedWordOccurrences* selected = pane.validOccurrences();
    const std::u16string word =
        selected ? selected->word : text.text(wordOfSelection(text, pane.selectedRange()));
    SelectedWordOccurrences occurrences{word, allOccurrences(text, word)};
    if (occurrences.ranges.empty())
        return;
    const TextRange visible = nearest(occurrences.ranges, pane.selectedRange().location);
    pane.showOccurrences(std::move(occurrences), visible);
}

}  // namespace tavrel
