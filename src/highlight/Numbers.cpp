#include "highlight/Numbers.h"

namespace tavrel {
namespace {

using DigitTest = bool (*)(char16_t unit);

bool isBinaryDigit(char16_t unit)
{
    return unit == u'0' || unit == u'1';
}

bool isOctalDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'7';
}

enum class Separators { none, apostrophe, apostropheAndUnderscore };

std::size_t digitsEnd(ScannedText& text, std::size_t location, DigitTest isDigit,
                      Separators separators)
{
    for (;; ++location) {
        const char16_t unit = text.unitAt(location);
        if (isDigit(unit))
            continue;
        if (unit == u'\'' && separators != Separators::none && isDigit(text.unitAt(location + 1)))
            continue;
        if (unit == u'_' && separators == Separators::apostropheAndUnderscore)
            continue;
        return location;
    }
}

/// Behind a "." and the digits after it, where there is at least one; else `location`.
std::size_t fractionEnd(ScannedText& text, std::size_t location, DigitTest isDigit,
                        Separators separators)
{
    if (text.unitAt(location) != u'.' || !isDigit(text.unitAt(location + 1)))
        return location;
    return digitsEnd(text, location + 1, isDigit, separators);
}

/// Behind `letter` in either case, a sign and digits, where there is at least one digit.
std::size_t exponentEnd(ScannedText& text, std::size_t location, char16_t letter)
{
    if ((text.unitAt(location) | 32) != letter)
        return location;
    const char16_t sign = text.unitAt(location + 1);
    const std::size_t digits = location + (sign == u'+' || sign == u'-' ? 2 : 1);
    if (!isAsciiDigit(text.unitAt(digits)))
        return location;
    return digitsEnd(text, digits, isAsciiDigit, Separators::none);
}

std::size_t decimalEnd(ScannedText& text, std::size_t location, Separators separators)
{
    location = digitsEnd(text, location, isAsciiDigit, separators);
    location = fractionEnd(text, location, isAsciiDigit, separators);
    return exponentEnd(text, location, u'e');
}

/// The letter behind a leading zero, in lower case; U+0000 where the number has none.
char16_t baseLetter(ScannedText& text, std::size_t location)
{
    return text.unitAt(location) == u'0' ? text.unitAt(location + 1) | 32 : u'\0';
}

}  // namespace

std::size_t cNumberEnd(ScannedText& text, std::size_t location)
{
    switch (baseLetter(text, location)) {
    case u'x':
        location = digitsEnd(text, location + 2, isAsciiHexDigit, Separators::apostrophe);
        location = fractionEnd(text, location, isAsciiHexDigit, Separators::apostrophe);
        location = exponentEnd(text, location, u'p');
        break;
    case u'b':
        location = digitsEnd(text, location + 2, isBinaryDigit, Separators::apostrophe);
        break;
    default:
        location = decimalEnd(text, location, Separators::apostrophe);
    }
    return text.skip(location, wordClasses);
}

std::size_t numberEnd(ScannedText& text, std::size_t location)
{
    constexpr Separators separators = Separators::apostropheAndUnderscore;
    switch (baseLetter(text, location)) {
    case u'x':
        location = digitsEnd(text, location + 2, isAsciiHexDigit, separators);
        break;
    case u'b':
        location = digitsEnd(text, location + 2, isBinaryDigit, separators);
        break;
    case u'o':
        location = digitsEnd(text, location + 2, isOctalDigit, separators);
        break;
    default:
        location = decimalEnd(text, location, separators);
    }
    return text.skip(location, wordClasses);
}

std::size_t plainDecimalEnd(ScannedText& text, std::size_t location)
{
    return decimalEnd(text, location, Separators::none);
}

}  // namespace tavrel
