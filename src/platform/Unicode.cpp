#include "platform/Unicode.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

namespace tavrel {
namespace {

constexpr std::uint8_t letterBit = 1;
constexpr std::uint8_t numberBit = 2;
constexpr std::uint8_t uppercaseBit = 4;

constexpr std::uint8_t latin1Class(unsigned character)
{
    const bool upper = (character >= 'A' && character <= 'Z') ||
                       (character >= 0xC0 && character <= 0xDE && character != 0xD7);
    const bool lower = (character >= 'a' && character <= 'z') || character == 0xAA ||
                       character == 0xB5 || character == 0xBA ||
                       (character >= 0xDF && character != 0xF7);
    const bool number = (character >= '0' && character <= '9') || character == 0xB2 ||
                        character == 0xB3 || character == 0xB9 ||
                        (character >= 0xBC && character <= 0xBE);
    return static_cast<std::uint8_t>((upper || lower ? letterBit : 0) | (number ? numberBit : 0) |
                                     (upper ? uppercaseBit : 0));
}

// Source text is nearly all Latin-1, and these bits answer for it without a call.
constexpr std::array<std::uint8_t, 256> latin1Classes = [] {
    std::array<std::uint8_t, 256> classes{};
    for (unsigned character = 0; character < classes.size(); ++character)
        classes[character] = latin1Class(character);
    return classes;
}();

bool hasCategory(char32_t character, std::uint32_t mask)
{
    return (U_GET_GC_MASK(static_cast<UChar32>(character)) & mask) != 0;
}

template<bool (*belongs)(char32_t)>
std::u16string_view trimmed(std::u16string_view text)
{
    // No member of the sets lies beyond the basic plane, so units are characters here.
    while (!text.empty() && belongs(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && belongs(text.back()))
        text.remove_suffix(1);
    return text;
}

using CaseMapping = std::int32_t (*)(UChar*, std::int32_t, const UChar*, std::int32_t, const char*,
                                     UErrorCode*);

std::u16string mapped(std::u16string_view text, CaseMapping mapping)
{
    // A mapping at most triples a text, and the library counts in 32 bits.
    constexpr std::size_t maximumPiece = std::numeric_limits<std::int32_t>::max() / 4;
    std::u16string result;
    while (!text.empty()) {
        std::size_t length = std::min(text.size(), maximumPiece);
        if (length < text.size() && isHighSurrogate(text[length - 1]))
            --length;
        const std::size_t start = result.size();
        result.resize(start + length);
        for (;;) {
            UErrorCode status = U_ZERO_ERROR;
            const std::int32_t needed =
                mapping(result.data() + start, static_cast<std::int32_t>(result.size() - start),
                        text.data(), static_cast<std::int32_t>(length), "", &status);
            result.resize(start + static_cast<std::size_t>(std::max(needed, 0)));
            if (status != U_BUFFER_OVERFLOW_ERROR)
                break;
        }
        text.remove_prefix(length);
    }
    return result;
}

}  // namespace

bool isAlphanumeric(char32_t character)
{
    if (character < latin1Classes.size())
        return (latin1Classes[character] & (letterBit | numberBit)) != 0;
    return hasCategory(character, U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK);
}

bool isLetter(char32_t character)
{
    if (character < latin1Classes.size())
        return (latin1Classes[character] & letterBit) != 0;
    return hasCategory(character, U_GC_L_MASK | U_GC_M_MASK);
}

bool isUppercaseLetter(char32_t character)
{
    if (character < latin1Classes.size())
        return (latin1Classes[character] & uppercaseBit) != 0;
    return hasCategory(character, U_GC_LU_MASK | U_GC_LT_MASK);
}

bool isDecimalDigit(char32_t character)
{
    if (character < 0x80)
        return character >= '0' && character <= '9';
    return hasCategory(character, U_GC_ND_MASK);
}

bool isWhitespace(char32_t character)
{
    if (character < 0x80)
        return character == ' ' || character == '\t';
    return hasCategory(character, U_GC_ZS_MASK);
}

bool hasWhiteSpaceProperty(char32_t character)
{
    return u_isUWhiteSpace(static_cast<UChar32>(character)) != 0;
}

bool isWordCharacter(char16_t unit)
{
    return unit == u'_' || isSurrogate(unit) || isAlphanumeric(unit);
}

DecodedCharacter characterAt(std::u16string_view text, std::size_t location)
{
    const char16_t unit = text[location];
    if (isHighSurrogate(unit) && location + 1 < text.size() && isLowSurrogate(text[location + 1]))
        return {static_cast<char32_t>(U16_GET_SUPPLEMENTARY(unit, text[location + 1])), 2};
    return {unit, 1};
}

std::u16string_view trimmedWhitespace(std::u16string_view text)
{
    return trimmed<isWhitespace>(text);
}

std::u16string_view trimmedWhitespaceAndNewlines(std::u16string_view text)
{
    return trimmed<isWhitespaceOrNewline>(text);
}

std::u16string lowercased(std::u16string_view text)
{
    return mapped(text, u_strToLower);
}

std::u16string uppercased(std::u16string_view text)
{
    return mapped(text, u_strToUpper);
}

std::u16string withFirstCharacterUppercased(std::u16string_view text)
{
    if (text.empty())
        return {};
    const std::size_t first = characterAt(text, 0).length;
    std::u16string result = uppercased(text.substr(0, first));
    result += text.substr(first);
    return result;
}

}  // namespace tavrel
