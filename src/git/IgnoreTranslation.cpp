#include "git/IgnoreTranslation.h"

#include "platform/RegularExpression.h"
#include "platform/Unicode.h"

namespace tavrel {
namespace {

using Kind = IgnoreStep::Kind;

/// Reads a pattern from left to right, one step at a time.
class PatternReader {
public:
    explicit PatternReader(std::u16string_view pattern) : rest_(pattern) {}

    bool isAtEnd() const { return rest_.empty(); }

    IgnoreStep next()
    {
        switch (rest_.front()) {
        case u'*':
            return star();
        case u'?':
            rest_.remove_prefix(1);
            return {Kind::notSlash, 0, u"[^/]"};
        case u'[':
            return bracket();
        case u'\\':
            if (rest_.size() > 1)
                rest_.remove_prefix(1);
            return character();
        default:
            return character();
        }
    }

private:
    IgnoreStep star()
    {
        if (rest_.starts_with(u"**/")) {
            rest_.remove_prefix(3);
            return {Kind::folders, 0, u"(?:[^/]+/)*"};
        }
        if (rest_.starts_with(u"**")) {
            rest_.remove_prefix(2);
            return {Kind::anything, 0, u".*"};
        }
        rest_.remove_prefix(1);
        return {Kind::notSlashes, 0, u"[^/]*"};
    }

    /// A set ends at the first closing bracket, and one with nothing in it is no set.
    IgnoreStep bracket()
    {
        const std::size_t end = rest_.find(u']');
        if (end == std::u16string_view::npos || end == 1)
            return character();
        std::u16string_view content = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        std::u16string expression = u"[";
        if (content.front() == u'!' || content.front() == u'^') {
            expression += u'^';
            content.remove_prefix(1);
        }
        for (const char16_t unit : content) {
            if (unit == u'\\')
                expression += u'\\';
            expression += unit;
        }
        expression += u']';
        return {Kind::characterClass, 0, std::move(expression)};
    }

    IgnoreStep character()
    {
        const auto [character, length] = characterAt(rest_, 0);
        IgnoreStep step{Kind::character, character, escapedPattern(rest_.substr(0, length))};
        rest_.remove_prefix(length);
        return step;
    }

    std::u16string_view rest_;
};

}  // namespace

IgnoreTranslation translateIgnorePattern(std::u16string_view pattern)
{
    IgnoreTranslation translation;
    translation.isAnchored = pattern.find(u'/') != std::u16string_view::npos;
    if (pattern.starts_with(u'/'))
        pattern.remove_prefix(1);
    translation.expression = translation.isAnchored ? u"^" : u"^(?:.*/)?";
    for (PatternReader reader(pattern); !reader.isAtEnd();) {
        translation.steps.push_back(reader.next());
        translation.expression += translation.steps.back().expression;
    }
    translation.expression += u'$';
    return translation;
}

}  // namespace tavrel
