#include "editor/MonospacedRowLayout.h"

#include "platform/Unicode.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace tavrel {

MonospacedRowLayout::MonospacedRowLayout(std::function<TextSnapshot()> text, Metrics metrics)
    : text_(std::move(text)), metrics_(metrics)
{
    metrics_.columnWidth = std::max<std::size_t>(metrics_.columnWidth, 1);
    metrics_.tabWidth = std::max<std::size_t>(metrics_.tabWidth, 1);
}

TextRange MonospacedRowLayout::rowAt(std::size_t location) const
{
    const TextSnapshot text = text_();
    const std::size_t place = std::min(location, text.length());
    const TextRange line = text.lineRange({place, 0});
    const std::size_t contentEnd = text.lineContentEnd(place);
    const std::vector<Character> characters =
        charactersOf(text, {line.location, contentEnd - line.location});

    std::size_t rowStart = line.location;
    std::size_t column = 0;
    std::size_t breakBehind = 0;  // Index of the character that a new row could begin with.
    std::size_t rowFirst = 0;     // Index of the row's first character.
    for (std::size_t index = 0; index < characters.size(); ++index) {
        const Character& character = characters[index];
        const bool isBlank = isWhitespace(character.unit);
        const std::size_t behind = columnBehind(column, character);
        if (isBlank || behind <= metrics_.columnWidth || index == rowFirst) {
            column = behind;
            if (isBlank)
                breakBehind = index + 1;
            continue;
        }
        rowFirst = breakBehind > rowFirst ? breakBehind : index;
        if (characters[rowFirst].location > place)
            return {rowStart, characters[rowFirst].location - rowStart};
        rowStart = characters[rowFirst].location;
        column = 0;
        index = rowFirst - 1;  // The new row is measured from its first character on.
    }
    return {rowStart, line.end() - rowStart};
}

double MonospacedRowLayout::xAt(std::size_t location) const
{
    const TextSnapshot text = text_();
    const std::size_t place = std::min(location, text.length());
    const std::size_t rowStart = rowAt(place).location;
    std::size_t column = 0;
    for (const Character& character : charactersOf(text, {rowStart, place - rowStart}))
        column = columnBehind(column, character);
    return static_cast<double>(column);
}

std::size_t MonospacedRowLayout::locationAt(TextRange row, double x) const
{
    const TextSnapshot text = text_();
    const std::size_t contentEnd = std::min(text.lineContentEnd(row.location), row.end());
    const bool isWrapped = contentEnd == row.end() && row.end() < text.length();
    std::size_t nearest = row.location;
    double nearestDistance = x;
    std::size_t column = 0;
    for (const Character& character :
         charactersOf(text, {row.location, contentEnd - row.location})) {
        column = columnBehind(column, character);
        const std::size_t edge = character.location + character.length;
        const double distance = std::abs(x - static_cast<double>(column));
        if (distance >= nearestDistance || (isWrapped && edge == row.end()))
            break;
        nearest = edge;
        nearestDistance = distance;
    }
    return nearest;
}

std::vector<MonospacedRowLayout::Character>
MonospacedRowLayout::charactersOf(const TextSnapshot& text, TextRange range) const
{
    const std::u16string units = text.text(range);
    std::vector<Character> characters;
    for (std::size_t at = 0; at < units.size();) {
        const std::size_t length = characterAt(units, at).length;
        characters.push_back({range.location + at, length, units[at]});
        at += length;
    }
    return characters;
}

std::size_t MonospacedRowLayout::columnBehind(std::size_t column, const Character& character) const
{
    const std::size_t tab = metrics_.tabWidth;
    return character.unit == u'\t' ? (column / tab + 1) * tab : column + 1;
}

}  // namespace tavrel
