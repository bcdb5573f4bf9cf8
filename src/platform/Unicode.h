#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavrel {

// What the engines ask about characters, in terms of Unicode's general categories.
//
// Every predicate takes a code point. A scan that goes by UTF-16 units may pass each unit as it
// is: a surrogate unit belongs to category Cs and is in none of the sets, except where a predicate
// says otherwise. A value above U+10FFFF is in none either. All functions are pure and may be
// called on any thread; a predicate costs a table look-up.

/// Categories L, M and N.
bool isAlphanumeric(char32_t character);

/// Categories L and M.
bool isLetter(char32_t character);

/// Categories Lu and Lt.
bool isUppercaseLetter(char32_t character);

/// Category Nd.
bool isDecimalDigit(char32_t character);

/// LF, VT, FF, CR, U+0085, U+2028 and U+2029.
constexpr bool isNewline(char32_t character)
{
    return (character >= 0x0A && character <= 0x0D) || character == 0x85 || character == 0x2028 ||
           character == 0x2029;
}

/// Category Zs and the tab. A line terminator is none.
bool isWhitespace(char32_t character);

inline bool isWhitespaceOrNewline(char32_t character)
{
    return isWhitespace(character) || isNewline(character);
}

/// Unicode's own property White_Space, which joins words in the text transformations.
bool hasWhiteSpaceProperty(char32_t character);

/// "_", an alphanumeric, or a surrogate unit: letters beyond the basic plane never break a word.
bool isWordCharacter(char16_t unit);

constexpr bool isHighSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool isLowSurrogate(char16_t unit)
{
    return (unit & 0xFC00) == 0xDC00;
}
constexpr bool isSurrogate(char16_t unit)
{
    return (unit & 0xF800) == 0xD800;
}

/// A code point of a text and the number of units it takes there, 1 or 2.
struct DecodedCharacter {
    char32_t character = 0;
    std::size_t length = 0;
};

/// The code point that starts at `location`, which must lie in the text. Half of a pair without
/// the other half is a code point by itself.
DecodedCharacter characterAt(std::u16string_view text, std::size_t location);

/// The view without its leading and trailing characters of the set.
std::u16string_view trimmedWhitespace(std::u16string_view text);
std::u16string_view trimmedWhitespaceAndNewlines(std::u16string_view text);

// Case mapping is the full one of the root locale, so a text may grow ("ß" becomes "SS"), and a
// final sigma is told from another. A lone surrogate stays as it is. Each costs O(length).

std::u16string lowercased(std::u16string_view text);
std::u16string uppercased(std::u16string_view text);

/// The text with its first code point in upper case: "ßa" gives "SSa". The rest is kept.
std::u16string withFirstCharacterUppercased(std::u16string_view text);

}  // namespace tavrel
