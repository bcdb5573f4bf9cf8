#include "platform/RegularExpression.h"

#include <algorithm>
#include <limits>
#include <unicode/uregex.h>
#include <unicode/ustring.h>

namespace tavrel {
namespace {

using Instant = std::chrono::steady_clock::time_point;

/// Texts up to this length are looked through in well under the time between two looks.
constexpr std::size_t shortTextLength = 4096;
constexpr std::uint32_t attemptsBetweenLooks = 64;

const char16_t* dataOf(std::u16string_view text)
{
    return text.empty() ? u"" : text.data();
}

std::uint32_t flagsOf(RegularExpressionOptions options)
{
    std::uint32_t flags = 0;
    flags |= options.caseInsensitive * std::uint32_t{UREGEX_CASE_INSENSITIVE};
    flags |= options.allowCommentsAndWhitespace * std::uint32_t{UREGEX_COMMENTS};
    flags |= options.dotMatchesLineSeparators * std::uint32_t{UREGEX_DOTALL};
    flags |= options.anchorsMatchLines * std::uint32_t{UREGEX_MULTILINE};
    return flags;
}

/// The words for an error of the library: "U_REGEX_MISMATCHED_PAREN" is "mismatched paren".
std::string messageFor(UErrorCode status)
{
    std::string_view name = u_errorName(status);
    for (const std::string_view prefix : {"U_REGEX_", "U_"}) {
        if (name.starts_with(prefix)) {
            name.remove_prefix(prefix.size());
            break;
        }
    }
    std::string message;
    for (const char character : name) {
        const bool upper = character >= 'A' && character <= 'Z';
        message += character == '_' ? ' ' : upper ? static_cast<char>(character + 32) : character;
    }
    return message;
}

/// Where the library's position, a line from 1 and an offset in it, lies in the pattern. The
/// library counts lines at LF, CR, U+0085 and U+2028 alike.
std::size_t locationOf(const UParseError& error, std::u16string_view pattern)
{
    std::size_t start = 0;
    std::int32_t line = 1;
    for (std::size_t index = 0; index < pattern.size() && line < error.line; ++index) {
        const char16_t unit = pattern[index];
        if (unit == u'\n' || unit == 0x85 || unit == 0x2028 ||
            (unit == u'\r' && !(index + 1 < pattern.size() && pattern[index + 1] == u'\n'))) {
            ++line;
            start = index + 1;
        }
    }
    const std::size_t offset = error.offset > 0 ? static_cast<std::size_t>(error.offset) : 0;
    return std::min(start + offset, pattern.size());
}

}  // namespace

tl::expected<RegularExpression, RegularExpressionError>
RegularExpression::compile(std::u16string_view pattern, RegularExpressionOptions options)
{
    const auto failure = [](std::string message, std::size_t location = 0) {
        return tl::unexpected(RegularExpressionError{std::move(message), location});
    };
    if (pattern.empty())
        return failure("empty pattern");
    if (pattern.size() > maximumPatternLength)
        return failure("pattern too big");
    UParseError error{};
    UErrorCode status = U_ZERO_ERROR;
    std::shared_ptr<URegularExpression> compiled(
        uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), flagsOf(options),
                    &error, &status),
        uregex_close);
    if (U_FAILURE(status) || !compiled)
        return failure(messageFor(status), locationOf(error, pattern));
    RegularExpression expression(std::move(compiled));
    if (expression.groupCount() > maximumGroupCount)
        return failure("too many groups");
    return expression;
}

RegularExpression::RegularExpression(std::shared_ptr<const URegularExpression> compiled)
    : compiled_(std::move(compiled))
{
    UErrorCode status = U_ZERO_ERROR;
    // The library takes no pointer to const here, though it only reads.
    const std::int32_t count =
        uregex_groupCount(const_cast<URegularExpression*>(compiled_.get()), &status);
    groupCount_ = U_SUCCESS(status) ? static_cast<std::size_t>(count) : 0;
}

std::u16string_view RegularExpression::pattern() const
{
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    const UChar* text = uregex_pattern(compiled_.get(), &length, &status);
    return U_SUCCESS(status) ? std::u16string_view(text, static_cast<std::size_t>(length))
                             : std::u16string_view();
}

/// What the library asks, step by step, whether the attempt may go on.
struct RegularExpressionMatcher::Watch {
    MatchLimits limits;
    bool textIsShort = true;
    std::int32_t steps = 0;       // The library's count, which grows over all attempts in a text.
    std::int32_t firstSteps = 0;  // Its value when the attempt began.
    std::uint32_t looks = 0;
    std::optional<Instant> deadline;  // Set by the first look, so short attempts read no clock.

    void begin()
    {
        firstSteps = steps;
        looks = 0;
        deadline.reset();
    }

    bool mayGoOn()
    {
        if (limits.cancelled && limits.cancelled->load(std::memory_order_relaxed))
            return false;
        const Instant now = std::chrono::steady_clock::now();
        if (!deadline)
            deadline = now + limits.time;
        return now < *deadline;
    }

    static UBool stepDone(const void* context, std::int32_t steps)
    {
        auto& watch = *static_cast<Watch*>(const_cast<void*>(context));
        watch.steps = steps;
        return steps - watch.firstSteps < watch.limits.steps && watch.mayGoOn();
    }

    static UBool startFailed(const void* context, std::int64_t)
    {
        auto& watch = *static_cast<Watch*>(const_cast<void*>(context));
        if (watch.textIsShort && ++watch.looks % attemptsBetweenLooks != 0)
            return true;
        return watch.mayGoOn();
    }
};

void RegularExpressionMatcher::Close::operator()(URegularExpression* matcher) const
{
    uregex_close(matcher);
}

RegularExpressionMatcher::RegularExpressionMatcher(const RegularExpression& expression,
                                                   MatchLimits limits)
    : watch_(std::make_unique<Watch>()), groupCount_(expression.groupCount())
{
    watch_->limits = limits;
    UErrorCode status = U_ZERO_ERROR;
    matcher_.reset(uregex_clone(expression.compiled_.get(), &status));
    uregex_setStackLimit(matcher_.get(), limits.stackBytes, &status);
    uregex_setMatchCallback(matcher_.get(), Watch::stepDone, watch_.get(), &status);
    uregex_setFindProgressCallback(matcher_.get(), Watch::startFailed, watch_.get(), &status);
    if (U_FAILURE(status))
        matcher_.reset();
}

RegularExpressionMatcher::~RegularExpressionMatcher() = default;
RegularExpressionMatcher::RegularExpressionMatcher(RegularExpressionMatcher&&) noexcept = default;
RegularExpressionMatcher&
RegularExpressionMatcher::operator=(RegularExpressionMatcher&&) noexcept = default;

void RegularExpressionMatcher::setText(std::u16string_view text, TextRange range,
                                       MatchBounds bounds)
{
    constexpr std::size_t maximumLength = std::numeric_limits<std::int32_t>::max();
    range = clampedRange(range, text.size());
    exhausted_ = !matcher_ || text.size() > maximumLength;
    outcome_ = exhausted_ ? MatchOutcome::stopped : MatchOutcome::noMatch;
    if (exhausted_)
        return;
    watch_->textIsShort = text.size() <= shortTextLength;
    watch_->steps = 0;
    UErrorCode status = U_ZERO_ERROR;
    uregex_setText(matcher_.get(), dataOf(text), static_cast<std::int32_t>(text.size()), &status);
    uregex_useAnchoringBounds(matcher_.get(), bounds.anchoring, &status);
    uregex_useTransparentBounds(matcher_.get(), bounds.transparent, &status);
    if (range.length != text.size())
        uregex_setRegion(matcher_.get(), static_cast<std::int32_t>(range.location),
                         static_cast<std::int32_t>(range.end()), &status);
    if (U_FAILURE(status)) {
        exhausted_ = true;
        outcome_ = MatchOutcome::stopped;
    }
}

MatchOutcome RegularExpressionMatcher::attempt(bool anchoredAtStart)
{
    watch_->begin();
    UErrorCode status = U_ZERO_ERROR;
    const bool found = anchoredAtStart ? uregex_lookingAt(matcher_.get(), -1, &status)
                                       : uregex_findNext(matcher_.get(), &status);
    if (U_FAILURE(status))
        return MatchOutcome::stopped;
    return found ? MatchOutcome::match : MatchOutcome::noMatch;
}

MatchOutcome RegularExpressionMatcher::next()
{
    if (exhausted_)
        return outcome_;
    outcome_ = attempt(false);
    exhausted_ = outcome_ != MatchOutcome::match;
    return outcome_;
}

MatchOutcome RegularExpressionMatcher::matchAtStart()
{
    if (exhausted_)
        return outcome_;
    outcome_ = attempt(true);
    exhausted_ = outcome_ != MatchOutcome::match;
    return outcome_;
}

TextRange RegularExpressionMatcher::range() const
{
    return group(0).value_or(TextRange{});
}

std::optional<TextRange> RegularExpressionMatcher::group(std::size_t number) const
{
    if (outcome_ != MatchOutcome::match || number > groupCount_)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    const auto index = static_cast<std::int32_t>(number);
    const std::int32_t start = uregex_start(matcher_.get(), index, &status);
    const std::int32_t end = uregex_end(matcher_.get(), index, &status);
    if (U_FAILURE(status) || start < 0 || end < start)
        return std::nullopt;
    return TextRange{static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)};
}

RegularExpressionMatch RegularExpressionMatcher::match() const
{
    RegularExpressionMatch match;
    match.groups.reserve(groupCount_ + 1);
    match.groups.emplace_back(range());
    for (std::size_t number = 1; number <= groupCount_; ++number)
        match.groups.push_back(group(number));
    return match;
}

tl::expected<std::optional<RegularExpressionMatch>, MatchStopped>
firstMatch(const RegularExpression& expression, std::u16string_view text, TextRange range,
           MatchBounds bounds, MatchLimits limits)
{
    RegularExpressionMatcher matcher(expression, limits);
    matcher.setText(text, range, bounds);
    switch (matcher.next()) {
    case MatchOutcome::match:
        return matcher.match();
    case MatchOutcome::noMatch:
        return std::nullopt;
    case MatchOutcome::stopped:
        break;
    }
    return tl::unexpected(MatchStopped{});
}

std::u16string escapedPattern(std::u16string_view text)
{
    constexpr std::u16string_view metacharacters = u"*?+[(){}^$|\\./";
    std::u16string result;
    result.reserve(text.size());
    for (const char16_t unit : text) {
        if (metacharacters.find(unit) != std::u16string_view::npos)
            result += u'\\';
        result += unit;
    }
    return result;
}

}  // namespace tavrel
