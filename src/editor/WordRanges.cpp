#include "editor/WordRanges.h"

#include "editor/TextCursor.h"
#include "platform/Unicode.h"

#include <algorithm>

namespace tavrel {

namespace {

enum class PartClass { other, underscore, digit, upper, lower };

PartClass partClass(char16_t unit)
{
    if (unit >= 0xD800 && unit <= 0xDFFF)
        return PartClass::other;
    if (unit == u'_')
        return PartClass::underscore;
    if (isDecimalDigit(unit))
        return PartClass::digit;
    if (isUppercaseLetter(unit))
        return PartClass::upper;
    return isLetter(unit) ? PartClass::lower : PartClass::other;
}

/// Goes left from `location` for as long as `belongs` holds for the unit before it.
template<typename Predicate>
std::size_t skipBackward(TextCursor& cursor, std::size_t location, Predicate belongs)
{
    while (location > 0 && belongs(cursor.unitAt(location - 1)))
        --location;
    return location;
}

template<typename Predicate>
std::size_t skipForward(TextCursor& cursor, std::size_t location, std::size_t end,
                        Predicate belongs)
{
    while (location < end && belongs(cursor.unitAt(location)))
        ++location;
    return location;
}

bool isNoWordCharacter(char16_t unit)
{
    return !isWordCharacter(unit);
}

}  // namespace

TextRange wordRangeAt(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const std::size_t length = text.length();
    const std::size_t place = std::min(location, length);
    const bool isInside = place < length && isWordCharacter(cursor.unitAt(place));
    const bool isBehind = place > 0 && isWordCharacter(cursor.unitAt(place - 1));
    if (!isInside && !isBehind)
        return {place, 0};
    const std::size_t start = skipBackward(cursor, place, isWordCharacter);
    const std::size_t end = isInside ? skipForward(cursor, place, length, isWordCharacter) : place;
    return {start, end - start};
}

bool touchesNoWordCharacter(const TextSnapshot& text, TextRange range)
{
    TextCursor cursor(text);
    const bool before = range.location > 0 && isWordCharacter(cursor.unitAt(range.location - 1));
    const bool after = range.end() < text.length() && isWordCharacter(cursor.unitAt(range.end()));
    return !before && !after;
}

std::size_t wordBoundaryAfter(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const std::size_t end = text.length();
    const std::size_t word = skipForward(cursor, std::min(location, end), end, isNoWordCharacter);
    return skipForward(cursor, word, end, isWordCharacter);
}

std::size_t wordBoundaryBefore(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const std::size_t wordEnd =
        skipBackward(cursor, std::min(location, text.length()), isNoWordCharacter);
    return skipBackward(cursor, wordEnd, isWordCharacter);
}

TextRange wordsBefore(const TextSnapshot& text, std::size_t location, int wordCount)
{
    const std::size_t end = std::min(location, text.length());
    std::size_t start = wordBoundaryBefore(text, end);
    for (int word = 1; word < wordCount && start > 0; ++word)
        start = wordBoundaryBefore(text, start);
    return {start, end - start};
}

TextRange wordPartBefore(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const std::size_t end = std::min(location, text.length());
    const std::size_t partEnd = skipBackward(
        cursor, end, [](char16_t unit) { return partClass(unit) == PartClass::other; });
    if (partEnd == 0)
        return {0, end};
    const PartClass kind = partClass(cursor.unitAt(partEnd - 1));
    std::size_t start =
        skipBackward(cursor, partEnd, [kind](char16_t unit) { return partClass(unit) == kind; });
    const bool hasCapitalBefore =
        start > 0 && partClass(cursor.unitAt(start - 1)) == PartClass::upper;
    if (kind == PartClass::lower && hasCapitalBefore)
        --start;
    return {start, end - start};
}

}  // namespace tavrel
