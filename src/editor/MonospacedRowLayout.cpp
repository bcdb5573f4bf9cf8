#include "editor/MonospacedRowLayout.h"

#include "editor/TextCursor.h"
#include "platform/Unicode.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavrel {

struct MonospacedRowLayout::Character {
    char16_t unit;  // The first one.
    std::size_t length;
};

/// Reads the characters of a stretch of text; a pair of surrogates is one.
class MonospacedRowLayout::Characters {
public:
    Characters(const TextSnapshot& text, std::size_t start, std::size_t end)
        : cursor_(text, start), end_(end)
    {
    }

    std::size_t end() const { return end_; }
    /// The character that starts at `place`, which lies before the end.
    Character at(std::size_t place)
    {
        const char16_t unit = cursor_.unitAt(place);
        const bool isPair =
            isHighSurrogate(unit) && place + 1 < end_ && isLowSurrogate(cursor_.unitAt(place + 1));
        return {unit, isPair ? std::size_t{2} : std::size_t{1}};
    }

private:
    TextCursor cursor_;
    std::size_t end_;
};

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
    Characters characters(text, line.location, text.lineContentEnd(place));
    std::size_t rowStart = line.location;
    for (;;) {
        const std::size_t next = nextRowStart(characters, rowStart);
        if (next == characters.end())
            return {rowStart, line.end() - rowStart};
        if (next > place)
            return {rowStart, next - rowStart};
        rowStart = next;
    }
}

/// Where the row that starts at `rowStart` is broken; the end of the content for the last one.
std::size_t MonospacedRowLayout::nextRowStart(Characters& characters, std::size_t rowStart) const
{
    std::size_t column = 0;
    std::size_t behindBlank = rowStart;
    for (std::size_t place = rowStart; place < characters.end();) {
        const Character character = characters.at(place);
        const bool isBlank = isWhitespace(character.unit);
        column = columnBehind(column, character);
        const bool fits = isBlank || column <= metrics_.columnWidth || place == rowStart;
        if (!fits)
            return behindBlank > rowStart ? behindBlank : place;
        place += character.length;
        if (isBlank)
            behindBlank = place;
    }
    return characters.end();
}

double MonospacedRowLayout::xAt(std::size_t location) const
{
    const TextSnapshot text = text_();
    const std::size_t end = std::min(location, text.length());
    std::size_t place = rowAt(end).location;
    Characters characters(text, place, end);
    std::size_t column = 0;
    while (place < end) {
        const Character character = characters.at(place);
        column = columnBehind(column, character);
        place += character.length;
    }
    return static_cast<double>(column);
}

std::size_t MonospacedRowLayout::locationAt(TextRange row, double x) const
{
    const TextSnapshot text = text_();
    const std::size_t contentEnd = std::min(text.lineContentEnd(row.location), row.end());
    const bool isWrapped = contentEnd == row.end() && row.end() < text.length();
    Characters characters(text, row.location, contentEnd);
    std::size_t nearest = row.location;
    double nearestDistance = x;
    std::size_t column = 0;
    for (std::size_t place = row.location; place < contentEnd;) {
        const Character character = characters.at(place);
        column = columnBehind(column, character);
        place += character.length;
        const double distance = std::abs(x - static_cast<double>(column));
        if (distance >= nearestDistance || (isWrapped && place == row.end()))
            break;
        nearest = place;
        nearestDistance = distance;
    }
    return nearest;
}

std::size_t MonospacedRowLayout::columnBehind(std::size_t column, const Character& character) const
{
    const std::size_t tab = metrics_.tabWidth;
    return character.unit == u'\t' ? (column / tab + 1) * tab : column + 1;
}

}  // namespace tavrel
