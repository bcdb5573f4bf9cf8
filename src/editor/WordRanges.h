#pragma once

#include "editor/TextSnapshot.h"
#include "platform/TextRange.h"

#include <cstddef>

namespace tavrel {

/// Words as the commands see them: runs of "_", letters, marks and numbers; the halves of surrogate
/// pairs count as parts of a word. Locations past the end of the text are moved to it.

/// The word that holds the unit at `location`, else the word that ends there, else an empty range.
TextRange wordRangeAt(const TextSnapshot& text, std::size_t location);

/// Whether neither neighbour of `range` is a word character.
bool touchesNoWordCharacter(const TextSnapshot& text, TextRange range);

/// The end of the word that lies at or after `location`, or the end of the text.
std::size_t wordBoundaryAfter(const TextSnapshot& text, std::size_t location);

/// The start of the word that lies before `location`, or the start of the text.
std::size_t wordBoundaryBefore(const TextSnapshot& text, std::size_t location);

/// The last `wordCount` words before `location` (one at least), with whatever stands between them.
TextRange wordsBefore(const TextSnapshot& text, std::size_t location, int wordCount);

/// The last part of the word before `location`, and any punctuation behind it. A part is a run of
/// digits, of capitals, of small letters with the capital that leads them, or of underscores.
TextRange wordPartBefore(const TextSnapshot& text, std::size_t location);

}  // namespace tavrel
