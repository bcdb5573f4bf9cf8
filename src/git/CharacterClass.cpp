#include "git/CharacterClass.h"

#include <array>
#include <string>

namespace tavrel {

std::optional<CharacterClass> CharacterClass::compile(std::u16string_view expression)
{
    auto compiled = RegularExpression::compile(expression);
    if (!compiled)
        return std::nullopt;
    return CharacterClass(std::move(*compiled));
}

CharacterClass::CharacterClass(RegularExpression expression) : expression_(std::move(expression))
{
    std::array<char16_t, asciiCount> characters{};
    for (std::size_t index = 0; index < asciiCount; ++index)
        characters[index] = static_cast<char16_t>(index);
    RegularExpressionMatcher matcher(expression_);
    matcher.setText({characters.data(), characters.size()});
    while (matcher.next() == MatchOutcome::match)
        ascii_.set(matcher.range().location);
}

bool CharacterClass::contains(char32_t character) const
{
    if (character < asciiCount)
        return ascii_[character];
    std::u16string text;
    if (character >= 0x10000) {
        text += static_cast<char16_t>(0xD7C0 + (character >> 10));
        text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    } else {
        text += static_cast<char16_t>(character);
    }
    RegularExpressionMatcher matcher(expression_);
    matcher.setText(text);
    return matcher.next() == MatchOutcome::match;
}

}  // namespace tavrel
