#include "highlight/GenericScan.h"

#include "highlight/CharacterClass.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <string>

namespace tavrel {
namespace {

std::u16string escapedUtf8(std::string_view text)
{
    return escapedPattern(utf16FromUtf8(text));
}

std::u16string stringPattern(std::string_view delimiter)
{
    if (delimiter == "`")
        return u"`(?:\\\\.|[^`])*`";
    const std::u16string quote = delimiter == "'" ? u"'" : escapedUtf8(delimiter);
    return quote + u"(?:\\\\.|[^" + quote + u"\\n])*" + quote;
}

std::u16string keywordPattern(const std::set<std::string>& keywords)
{
    std::vector<std::u16string> longestFirst;
    for (const std::string& keyword : keywords)
        longestFirst.push_back(escapedUtf8(keyword));
    std::stable_sort(longestFirst.begin(), longestFirst.end(),
                     [](const auto& one, const auto& other) { return one.size() > other.size(); });
    std::u16string pattern;
    for (const std::u16string& keyword : longestFirst)
        pattern += (pattern.empty() ? u"" : u"|") + keyword;
    return u"\\b(?:" + pattern + u")\\b";
}

/// A class of exactly these characters: each is escaped, since "-" and "&" mean something there.
std::u16string punctuationPattern(std::string_view characters)
{
    std::u16string pattern = u"[";
    for (const char16_t unit : utf16FromUtf8(characters)) {
        if (unit < 0x80 && !(classesOf(unit) & wordClasses))
            pattern.push_back(u'\\');
        pattern.push_back(unit);
    }
    return pattern + u"]";
}

}  // namespace

GenericScan::GenericScan(const LanguageMode& mode)
{
    for (const std::string& delimiter : mode.stringDelimiters)
        addPass(stringPattern(delimiter), SyntaxToken::string);
    for (const std::string& marker : mode.lineComments)
        addPass(escapedUtf8(marker) + u".*", SyntaxToken::comment);
    for (const auto& [open, close] : mode.blockComments)
        addPass(escapedUtf8(open) + u"(?s:.*?)" + escapedUtf8(close), SyntaxToken::comment);
    addPass(u"\\b-?(?:0x[0-9A-Fa-f]+|\\d+(?:\\.\\d+)?)\\b", SyntaxToken::number);
    if (!mode.keywords.empty())
        addPass(keywordPattern(mode.keywords), SyntaxToken::keyword);
    if (!mode.punctuation.empty())
        addPass(punctuationPattern(mode.punctuation), SyntaxToken::punctuation);
}

void GenericScan::run(std::u16string_view text, TokenCanvas& canvas) const
{
    for (const Pass& pass : passes_) {
        RegularExpressionMatcher matcher(pass.expression);
        matcher.setText(text);
        while (matcher.next() == MatchOutcome::match)
            canvas.paint(matcher.range(), pass.token);
    }
}

void GenericScan::addPass(std::u16string_view pattern, SyntaxToken token)
{
    if (auto expression = RegularExpression::compile(pattern))
        passes_.push_back({*expression, token});
}

}  // namespace tavrel
