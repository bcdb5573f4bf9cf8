#pragma once

#include "editor/TextSnapshot.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tavrel {

/// Several places of one word that are selected at once.
struct SelectedWordOccurrences {
    std::u16string word;
    std::vector<TextRange> ranges;  // In the order in which they were selected.

    bool operator==(const SelectedWordOccurrences&) const = default;
};

/// The selection if it is a whole word by itself, else the word at its location.
TextRange wordOfSelection(const TextSnapshot& text, TextRange selection);

/// The first whole word equal to `word` in `part` that is not in `taken`.
std::optional<TextRange> nextOccurrence(const TextSnapshot& text, std::u16string_view word,
                                        TextRange part, std::span<const TextRange> taken);

/// All whole words equal to `word`, in the order of the text.
std::vector<TextRange> allOccurrences(const TextSnapshot& text, std::u16string_view word);

/// The ranges that still hold `word` as a whole word, in their order.
std::vector<TextRange> survivingOccurrences(const TextSnapshot& text,
                                            const SelectedWordOccurrences& occurrences);

}  // namespace tavrel
