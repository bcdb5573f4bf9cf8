#include "terminal/RowLinks.h"

#include "highlight/Links.h"
#include "platform/Unicode.h"

#include <algorithm>

namespace tavrel {
namespace {

constexpr char32_t basicPlaneEnd = 0x10000;

bool mayHoldLink(std::span<const TerminalCell> cells)
{
    for (std::size_t i = 0; i + 2 < cells.size(); ++i) {
        if (cells[i].character == U':' && cells[i + 1].character == U'/' &&
            cells[i + 2].character == U'/')
            return true;
    }
    return false;
}

}  // namespace

std::u16string rowText(std::span<const TerminalCell> cells)
{
    std::u16string text;
    text.reserve(cells.size());
    for (const TerminalCell& cell : cells) {
        const char32_t character = cell.character;
        if (character < basicPlaneEnd) {
            text.push_back(static_cast<char16_t>(character));
        } else {
            text.push_back(static_cast<char16_t>(0xD800 + ((character - basicPlaneEnd) >> 10)));
            text.push_back(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
        }
    }
    return text;
}

std::vector<TerminalCell> cellsOfText(std::u16string_view text)
{
    std::vector<TerminalCell> cells;
    cells.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const DecodedCharacter decoded = characterAt(text, at);
        cells.push_back({decoded.character});
        at += decoded.length;
    }
    return cells;
}

std::vector<TextRange> rowLinks(std::span<const TerminalCell> cells)
{
    if (!mayHoldLink(cells))
        return {};
    // The links are found in the text, whose units are columns only where each cell is one unit.
    const std::u16string text = rowText(cells);
    return text.size() == cells.size() ? linkRanges(text) : std::vector<TextRange>();
}

}  // namespace tavrel
