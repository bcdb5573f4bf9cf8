#include "editor/SearchResultLines.h"

#include "editor/TextSnapshot.h"

#include <algorithm>
#include <limits>

namespace tavrel {

namespace {

constexpr std::size_t longestLine = 8192;  // A path has at most 4096 bytes.

bool isDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

/// The value of digits that `text` begins with; absent where there are none.
struct Number {
    std::int64_t value;
    std::size_t length;
};

std::optional<Number> leadingNumber(std::u16string_view text)
{
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    Number number{0, 0};
    for (; number.length < text.size() && isDigit(text[number.length]); ++number.length) {
        const std::int64_t digit = text[number.length] - u'0';
        const bool isTooLarge = number.value > (largest - digit) / 10;
        number.value = isTooLarge ? largest : number.value * 10 + digit;
    }
    return number.length > 0 ? std::optional(number) : std::nullopt;
}

/// The line without its terminator, or nothing for one that is too long to be a heading.
std::optional<std::u16string> headingLine(const TextSnapshot& text, std::size_t lineIndex)
{
    const std::size_t start = text.lineStart(lineIndex);
    const std::size_t end = text.lineContentEnd(start);
    if (text.unitAt(start) != u'/' || end - start > longestLine)
        return std::nullopt;
    return text.text({start, end - start});
}

}  // namespace

std::optional<SearchResultPlace> searchResultHeading(std::u16string_view line)
{
    if (!line.starts_with(u'/') || !line.ends_with(u':'))
        return std::nullopt;
    line.remove_suffix(1);
    const std::size_t colon = line.rfind(u':');
    constexpr std::size_t shortestPath = 2;
    if (colon == std::u16string_view::npos || colon < shortestPath)
        return std::nullopt;
    const std::u16string_view digits = line.substr(colon + 1);
    const std::optional<Number> number = leadingNumber(digits);
    if (!number || number->length != digits.size())
        return std::nullopt;
    return SearchResultPlace{std::u16string(line.substr(0, colon)), number->value};
}

std::optional<std::int64_t> searchResultNumber(std::u16string_view line)
{
    if (!line.starts_with(u'>') && !line.starts_with(u' '))
        return std::nullopt;
    line.remove_prefix(1);
    line.remove_prefix(std::min(line.find_first_not_of(u' '), line.size()));
    const std::optional<Number> number = leadingNumber(line);
    if (!number || !line.substr(number->length).starts_with(u": "))
        return std::nullopt;
    return number->value;
}

std::optional<SearchResultPlace> searchResultAt(const TextSnapshot& text, std::size_t offset)
{
    if (text.isEmpty())
        return std::nullopt;
    const std::size_t clicked = text.lineIndexAt(std::min(offset, text.length() - 1));
    if (const auto line = headingLine(text, clicked)) {
        if (auto place = searchResultHeading(*line))
            return place;
    }
    const std::size_t start = text.lineStart(clicked);
    const std::size_t length = std::min(text.lineContentEnd(start) - start, longestLine);
    const auto number = searchResultNumber(text.text({start, length}));
    if (!number)
        return std::nullopt;
    for (std::size_t index = clicked; index-- > 0;) {
        const auto line = headingLine(text, index);
        auto place = line ? searchResultHeading(*line) : std::nullopt;
        if (place)
            return SearchResultPlace{std::move(place->path), *number};
    }
    return std::nullopt;
}

}  // namespace tavrel
