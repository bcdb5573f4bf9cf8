#pragma once

#include <cstdint>

namespace tavrel {

/// What a code unit is painted as. Each names a colour of the theme by its field.
///
/// One byte: the low seven bits hold the token, the high bit says that the unit is underlined.
enum class SyntaxToken : std::uint8_t {
    foreground,
    keyword,
    string,
    comment,
    number,
    identifier,
    typeName,
    className,
    functionName,
    methodName,
    propertyName,
    macro,
    preprocessor,
    constant,
    decorator,
    operatorColor,
    punctuation,
    link,
    gitAdded,
    gitModified,
    gitRemoved,
    accent,
};

constexpr std::uint8_t underlineBit = 0x80;

constexpr SyntaxToken underlined(SyntaxToken token)
{
    return static_cast<SyntaxToken>(static_cast<std::uint8_t>(token) | underlineBit);
}
constexpr bool isUnderlined(SyntaxToken token)
{
    return (static_cast<std::uint8_t>(token) & underlineBit) != 0;
}
constexpr SyntaxToken withoutUnderline(SyntaxToken token)
{
    return static_cast<SyntaxToken>(static_cast<std::uint8_t>(token) & ~underlineBit);
}

}  // namespace tavrel
