#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavrel {

/// What kind of ASCII character a unit is: bits, so that scanners can ask for several at once.
using CharacterClasses = std::uint8_t;

constexpr CharacterClasses blankClass = 1;    // Space, tab.
constexpr CharacterClasses newlineClass = 2;  // Line feed, carriage return.
constexpr CharacterClasses digitClass = 4;
constexpr CharacterClasses uppercaseClass = 8;
constexpr CharacterClasses lowercaseClass = 16;
constexpr CharacterClasses underscoreClass = 32;
constexpr CharacterClasses hyphenClass = 64;
constexpr CharacterClasses dollarClass = 128;

constexpr CharacterClasses letterClasses = uppercaseClass | lowercaseClass;
constexpr CharacterClasses wordStartClasses = letterClasses | underscoreClass;
constexpr CharacterClasses wordClasses = wordStartClasses | digitClass;
constexpr CharacterClasses nameClasses = wordClasses | hyphenClass;

constexpr std::array<CharacterClasses, 128> characterClassTable = [] {
    std::array<CharacterClasses, 128> table{};
    table[' '] = table['\t'] = blankClass;
    table['\n'] = table['\r'] = newlineClass;
    for (std::size_t digit = '0'; digit <= '9'; ++digit)
        table[digit] = digitClass;
    for (std::size_t letter = 'A'; letter <= 'Z'; ++letter) {
        table[letter] = uppercaseClass;
        table[letter + 32] = lowercaseClass;
    }
    table['_'] = underscoreClass;
    table['-'] = hyphenClass;
    table['$'] = dollarClass;
    return table;
}();

/// None for a unit beyond ASCII: to every scanner it is a character without a meaning.
constexpr CharacterClasses classesOf(char16_t unit)
{
    return unit < characterClassTable.size() ? characterClassTable[unit] : CharacterClasses{0};
}

constexpr bool isAsciiDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}
constexpr bool isAsciiHexDigit(char16_t unit)
{
    return isAsciiDigit(unit) || ((unit | 32) >= u'a' && (unit | 32) <= u'f');
}

}  // namespace tavrel
