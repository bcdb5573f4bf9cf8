#pragma once

#include "platform/TextRange.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

struct URegularExpression;

namespace tavrel {

struct RegularExpressionOptions {
    bool caseInsensitive = false;
    bool allowCommentsAndWhitespace = false;
    bool dotMatchesLineSeparators = false;
    bool anchorsMatchLines = false;
};

/// Why a pattern did not compile, in words, and where in it, in units from 0.
struct RegularExpressionError {
    std::string message;
    std::size_t location = 0;
};

/// A compiled pattern in ICU's syntax. Making one takes microseconds to milliseconds.
///
/// A value that never changes: copies share the compiled form, and any number of threads may match
/// with one at once, each through a `RegularExpressionMatcher` of its own.
class RegularExpression {
public:
    static constexpr std::size_t maximumPatternLength = 1 << 20;
    static constexpr std::size_t maximumGroupCount = 10'000;

    /// Fails for an empty pattern, for one past the two bounds, and where ICU finds an error.
    static tl::expected<RegularExpression, RegularExpressionError>
    compile(std::u16string_view pattern, RegularExpressionOptions options = {});

    /// Number of capture groups, the whole match not counted.
    std::size_t groupCount() const { return groupCount_; }

    /// Valid as long as a copy of this object lives.
    std::u16string_view pattern() const;

private:
    friend class RegularExpressionMatcher;
    explicit RegularExpression(std::shared_ptr<const URegularExpression> compiled);

    std::shared_ptr<const URegularExpression> compiled_;  // Only cloned, never matched with.
    std::size_t groupCount_ = 0;
};

/// How much one attempt to find a match may cost before it is given up as stopped.
///
/// A step is 10,000 backtracking points, about a millisecond; the same text and pattern always
/// take the same number. The time also bounds the patterns that run long in few steps. It is
/// looked at between steps, so one step in a very long text may overshoot it.
struct MatchLimits {
    std::int32_t steps = 1'000;
    std::chrono::milliseconds time{2'000};
    std::int32_t stackBytes = 8'000'000;
    const std::atomic<bool>* cancelled = nullptr;  // Stops the attempt once it is true; borrowed.
};

/// What the ends of the searched range mean to a pattern. Looking behind sees the text before the
/// range in any case: the library hides only what lies ahead.
struct MatchBounds {
    bool anchoring = true;     // "^" and "$" match at the ends of the range.
    bool transparent = false;  // Look-ahead and "\b" see the text outside the range.
};

enum class MatchOutcome { match, noMatch, stopped };

/// One match: the whole range as group 0, then the groups; one that took no part is absent.
struct RegularExpressionMatch {
    std::vector<std::optional<TextRange>> groups;

    TextRange range() const { return *groups.front(); }
    bool operator==(const RegularExpressionMatch&) const = default;
};

/// Finds the matches of one pattern, text after text. One thread at a time.
///
/// Making one costs about a microsecond, so keep it for many texts. The text of `setText` is
/// borrowed until the next call of it. Lone surrogates are characters like any other.
class RegularExpressionMatcher {
public:
    explicit RegularExpressionMatcher(const RegularExpression& expression, MatchLimits limits = {});
    ~RegularExpressionMatcher();
    RegularExpressionMatcher(RegularExpressionMatcher&&) noexcept;
    RegularExpressionMatcher& operator=(RegularExpressionMatcher&&) noexcept;

    /// Takes up another text and starts over. `range` is clamped; locations in results are
    /// those of the text, whatever the range.
    void setText(std::u16string_view text, TextRange range, MatchBounds bounds = {});
    void setText(std::u16string_view text) { setText(text, {0, text.size()}); }

    /// Goes to the next match behind the last one, at first from the start of the range; an empty
    /// match is followed by a step of one character. Each call has the limits anew. After an
    /// answer other than `match` the same answer comes again until `setText`. A text of 2 Gi
    /// units or more is `stopped`.
    MatchOutcome next();

    /// Whether there is a match that begins exactly where the range begins.
    MatchOutcome matchAtStart();

    /// The current match; only after an answer of `match`.
    TextRange range() const;
    /// Group `number`, from 0; absent where it took no part or does not exist.
    std::optional<TextRange> group(std::size_t number) const;
    std::size_t groupCount() const { return groupCount_; }
    RegularExpressionMatch match() const;

private:
    struct Watch;
    struct Close {
        void operator()(URegularExpression* matcher) const;
    };

    MatchOutcome attempt(bool anchoredAtStart);

    std::unique_ptr<Watch> watch_;  // The library keeps a pointer to it, so it goes last.
    std::unique_ptr<URegularExpression, Close> matcher_;  // None when memory was short.
    std::size_t groupCount_ = 0;
    MatchOutcome outcome_ = MatchOutcome::noMatch;  // Of the last attempt.
    bool exhausted_ = true;  // Whether the last attempt ended the search of this text.
};

struct MatchStopped {};

/// The first match of `expression` in `range` of `text`, absent where there is none.
tl::expected<std::optional<RegularExpressionMatch>, MatchStopped>
firstMatch(const RegularExpression& expression, std::u16string_view text, TextRange range,
           MatchBounds bounds = {}, MatchLimits limits = {});

/// `text` as a pattern that matches just that text: a backslash before each metacharacter.
std::u16string escapedPattern(std::u16string_view text);

}  // namespace tavrel
