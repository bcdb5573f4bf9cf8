#include "highlight/Links.h"

#include "platform/RegularExpression.h"

#include <algorithm>
#include <optional>

namespace tavrel {
namespace {

constexpr std::size_t shortestLink = 9;  // The longer scheme and one character.

const std::optional<RegularExpression>& linkExpression()
{
    static const std::optional<RegularExpression> made = [] {
        auto compiled =
            RegularExpression::compile(u"https?://[^\\s<>\"'`]+", {.caseInsensitive = true});
        return compiled ? std::optional(*compiled) : std::nullopt;
    }();
    return made;
}

/// How much of `match` is the address.
std::size_t trimmedLength(std::u16string_view match)
{
    auto opened = std::count(match.begin(), match.end(), u'(');
    auto closed = std::count(match.begin(), match.end(), u')');
    while (!match.empty()) {
        const char16_t last = match.back();
        if (last == u')') {
            if (closed <= opened)
                break;
            --closed;
        } else if (std::u16string_view(u".,;:!?]}'\"").find(last) == std::u16string_view::npos) {
            break;
        }
        match.remove_suffix(1);
    }
    return match.size();
}

}  // namespace

std::vector<TextRange> linkRanges(std::u16string_view text)
{
    std::vector<TextRange> ranges;
    if (!linkExpression())
        return ranges;
    RegularExpressionMatcher matcher(*linkExpression());
    matcher.setText(text);
    while (matcher.next() == MatchOutcome::match) {
        TextRange range = matcher.range();
        range.length = trimmedLength(text.substr(range.location, range.length));
        if (range.length >= shortestLink)
            ranges.push_back(range);
    }
    return ranges;
}

}  // namespace tavrel
