#include "highlight/Links.h"

#include "platform/RegularExpression.h"

#include <algorithm>
#include <optional>

namespace tavrel {
namespace {

constexpr std::size_t shortestLink = 9;  // The longer scheme and one character.
constexpr std::u16string_view separator = u"://";

bool isLetter(char16_t unit, char16_t small)
{
    return unit == small || unit == small - (u'a' - u'A');
}

// Where the scheme begins that ends at `end`; absent where it is no scheme of a link. Without
// regard to case, in which the long s is an s.
std::optional<std::size_t> schemeStart(std::u16string_view text, std::size_t end)
{
    const bool isLonger = end > 0 && (isLetter(text[end - 1], u's') || text[end - 1] == u'\u017F');
    const std::size_t length = isLonger ? 5 : 4;
    if (end < length)
        return std::nullopt;
    const std::u16string_view scheme = text.substr(end - length, 4);
    const bool isHttp = isLetter(scheme[0], u'h') && isLetter(scheme[1], u't') &&
                        isLetter(scheme[2], u't') && isLetter(scheme[3], u'p');
    return isHttp ? std::optional(end - length) : std::nullopt;
}

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

// The expression is tried only where a scheme stands, so that text without links costs next to
// nothing.
std::vector<TextRange> linkRanges(std::u16string_view text)
{
    std::vector<TextRange> ranges;
    if (!linkExpression())
        return ranges;
    RegularExpressionMatcher matcher(*linkExpression());
    std::size_t from = 0;
    while ((from = text.find(separator, from)) != std::u16string_view::npos) {
        const std::optional<std::size_t> start = schemeStart(text, from);
        from += separator.size();
        if (!start || from == text.size())
            continue;
        // With the one unit behind the separator it is a link or not; then the rest is asked for.
        matcher.setText(text, {*start, from + 1 - *start});
        if (matcher.next() != MatchOutcome::match)
            continue;
        matcher.setText(text, {*start, text.size() - *start});
        if (matcher.next() != MatchOutcome::match)
            continue;
        TextRange range = matcher.range();
        from = range.end();
        range.length = trimmedLength(text.substr(range.location, range.length));
        if (range.length >= shortestLink)
            ranges.push_back(range);
    }
    return ranges;
}

}  // namespace tavrel
