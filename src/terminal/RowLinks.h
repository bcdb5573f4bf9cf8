#pragma once

#include "platform/TextRange.h"
#include "terminal/TerminalCell.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// The addresses in a row of cells, in order, as columns; without the punctuation around them. A
/// row with a character outside the basic plane has none. Costs O(length), and next to nothing for
/// a row without "://".
std::vector<TextRange> rowLinks(std::span<const TerminalCell> cells);

/// The characters of the cells, joined.
std::u16string rowText(std::span<const TerminalCell> cells);

/// The text as a row of cells, each with one code point of it and nothing else.
std::vector<TerminalCell> cellsOfText(std::u16string_view text);

}  // namespace tavrel
