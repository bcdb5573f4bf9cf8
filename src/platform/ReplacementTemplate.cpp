#include "platform/ReplacementTemplate.h"

namespace tavrel {
namespace {

bool isAsciiDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

/// A group's number, and where in the template the digits that name it end.
struct GroupReference {
    std::size_t number;
    std::size_t end;
};

/// The group that the digits from `start` on name; the first of them is there.
GroupReference groupReferenceAt(std::u16string_view replacement, std::size_t start,
                                std::size_t groupCount)
{
    GroupReference reference{static_cast<std::size_t>(replacement[start] - u'0'), start + 1};
    while (reference.end < replacement.size() && isAsciiDigit(replacement[reference.end])) {
        const auto digit = static_cast<std::size_t>(replacement[reference.end] - u'0');
        const std::size_t longer = reference.number * 10 + digit;
        if (longer > groupCount)
            break;
        reference = {longer, reference.end + 1};
    }
    return reference;
}

}  // namespace

std::u16string escapedTemplate(std::u16string_view text)
{
    std::u16string result;
    result.reserve(text.size());
    for (const char16_t unit : text) {
        if (unit == u'$' || unit == u'\\')
            result += u'\\';
        result += unit;
    }
    return result;
}

void appendExpandedTemplate(std::u16string_view replacement, const RegularExpressionMatch& match,
                            std::u16string_view text, std::u16string& result)
{
    const std::size_t groupCount = match.groups.size() - 1;
    std::size_t index = 0;
    while (index < replacement.size()) {
        const char16_t unit = replacement[index];
        const bool hasNext = index + 1 < replacement.size();
        if (unit == u'\\') {
            if (hasNext)
                result += replacement[index + 1];
            index += 2;
        } else if (unit == u'$' && hasNext && isAsciiDigit(replacement[index + 1])) {
            const auto [number, end] = groupReferenceAt(replacement, index + 1, groupCount);
            if (number <= groupCount && match.groups[number])
                result += text.substr(match.groups[number]->location, match.groups[number]->length);
            index = end;
        } else {
            result += unit;
            ++index;
        }
    }
}

}  // namespace tavrel
