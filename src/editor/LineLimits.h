#pragma once

#include "editor/TextSnapshot.h"

#include <cstddef>

namespace tavrel {

/// Where the text of the line at `location` begins: behind its leading blanks and tabs. A blank
/// line gives the end of its content.
std::size_t lineStartOfText(const TextSnapshot& text, std::size_t location);

/// Where the text of the line at `location` ends: before its trailing blanks and tabs. A blank line
/// gives its start.
std::size_t lineEndOfText(const TextSnapshot& text, std::size_t location);

/// The blanks and tabs that the line at `location` begins with.
TextRange leadingBlanks(const TextSnapshot& text, std::size_t location);

}  // namespace tavrel
