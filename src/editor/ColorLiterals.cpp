#include "editor/ColorLiterals.h"

#include "editor/TextSnapshot.h"
#include "platform/RegularExpression.h"

#include <algorithm>
#include <string>

namespace tavrel {

namespace {

const std::optional<RegularExpression>& literalExpression()
{
    static const std::optional<RegularExpression> made = [] {
        auto compiled = RegularExpression::compile(u"#[0-9A-Fa-f]{6}\\b");
        return compiled ? std::optional(*compiled) : std::nullopt;
    }();
    return made;
}

bool isQuotationMark(char16_t unit)
{
    return unit == u'"' || unit == u'\'';
}

bool isOn(const ColorLiteral& literal, const TextSnapshot& text, std::size_t offset)
{
    const TextRange range = literal.range;
    const bool hasMarkBefore =
        range.location > 0 && isQuotationMark(text.unitAt(range.location - 1));
    const bool hasMarkBehind = isQuotationMark(text.unitAt(range.end()));
    const std::size_t first = range.location - (hasMarkBefore ? 1 : 0);
    const std::size_t last = range.end() + (hasMarkBehind ? 1 : 0);
    return offset >= first && offset <= last;
}

}  // namespace

std::optional<ColorLiteral> colorLiteralFrom(const TextSnapshot& text, std::size_t location)
{
    constexpr std::size_t lookAhead = 8;  // Units, for the end of the word.
    if (text.unitAt(location) != u'#' || !literalExpression())
        return std::nullopt;
    const std::u16string units = text.text({location, ColorLiteral::length + lookAhead});
    RegularExpressionMatcher matcher(*literalExpression());
    matcher.setText(units);
    if (matcher.matchAtStart() != MatchOutcome::match)
        return std::nullopt;
    const auto color =
        parseHexColor(std::string(units.begin(), units.begin() + ColorLiteral::length));
    if (!color)
        return std::nullopt;
    return ColorLiteral{{location, ColorLiteral::length}, *color};
}

std::optional<ColorLiteral> colorLiteralAt(const TextSnapshot& text, std::size_t offset)
{
    constexpr std::size_t reach = ColorLiteral::length + 1;  // With a quotation mark.
    const std::size_t first = offset - std::min(offset, reach);
    for (std::size_t location = first; location <= offset + 1; ++location) {
        const std::optional<ColorLiteral> literal = colorLiteralFrom(text, location);
        if (literal && isOn(*literal, text, offset))
            return literal;
    }
    return std::nullopt;
}

}  // namespace tavrel
