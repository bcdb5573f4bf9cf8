#pragma once

#include "git/IgnoreMatcher.h"

#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

/// One pattern of an ignore file. A value that never changes; shared freely between threads.
class GitIgnoreRule {
public:
    /// Absent for a line that holds no rule: a blank one, a comment, a pattern that does not
    /// compile. `line` has no terminator.
    static std::optional<GitIgnoreRule> make(std::u16string_view line);

    /// Whether a match takes a path back in.
    bool negated() const { return negated_; }
    /// Whether the rule is for folders alone. The caller looks at this first.
    bool directoryOnly() const { return directoryOnly_; }
    bool matches(const IgnorePath& path) const { return matcher_.matches(path); }

    /// The pattern as a regular expression, which defines what `matches` answers. Made anew.
    std::u16string regex() const { return matcher_.expression(); }

private:
    GitIgnoreRule(bool negated, bool directoryOnly, IgnoreMatcher matcher)
        : negated_(negated), directoryOnly_(directoryOnly), matcher_(std::move(matcher))
    {
    }

    bool negated_;
    bool directoryOnly_;
    IgnoreMatcher matcher_;
};

}  // namespace tavrel
