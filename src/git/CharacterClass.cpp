#include "git/CharacterClass.h"

#include <array>
#include <string>

namespace tavrel {
namespace {

/// Whether a set of ASCII characters and ranges holds all other characters, or none of them.
/// Absent for a set that names such characters, or that is made of several.
std::optional<bool> holdsBeyondAscii(std::u16string_view expression)
{
    const std::u16string_view content = expression.substr(1);
    for (const char16_t unit : content) {
        if (unit >= CharacterClass::asciiCount || unit == u'[')
            return std::nullopt;
    }
    if (content.find(u"&&") != std::u16string_view::npos ||
        content.find(u"--") != std::u16string_view::npos)
        return std::nullopt;
    return content.starts_with(u'^');
}

}  // namespace

std::optional<CharacterClass> CharacterClass::compile(std::u16string_view expression)
{
    auto compiled = RegularExpression::compile(expression);
    if (!compiled)
        return std::nullopt;
    return CharacterClass(std::move(*compiled));
}

CharacterClass::CharacterClass(RegularExpression expression)
    : beyondAscii_(holdsBeyondAscii(expression.pattern())), expression_(std::move(expression))
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
    if (beyondAscii_)
        return *beyondAscii_;
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
