#include "git/GitIgnoreRule.h"

#include "platform/Unicode.h"

namespace tavrel {

std::optional<GitIgnoreRule> GitIgnoreRule::make(std::u16string_view line)
{
    std::u16string_view pattern = trimmedWhitespace(line);
    if (pattern.empty() || pattern.front() == u'#')
        return std::nullopt;
    const bool negated = pattern.front() == u'!';
    if (negated)
        pattern.remove_prefix(1);
    if (pattern.starts_with(u"\\#") || pattern.starts_with(u"\\!"))
        pattern.remove_prefix(1);
    const bool directoryOnly = pattern.ends_with(u'/');
    if (directoryOnly)
        pattern.remove_suffix(1);
    if (pattern.empty())
        return std::nullopt;
    auto matcher = IgnoreMatcher::make(pattern);
    if (!matcher)
        return std::nullopt;
    return GitIgnoreRule(negated, directoryOnly, std::move(*matcher));
}

}  // namespace tavrel
