#include "highlight/CodeLoop.h"
#include "highlight/RegexLiterals.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view perlDeclarationKeywords = "package use require no";
constexpr std::string_view perlFunctionKeywords = "sub";
constexpr std::string_view perlConstants = "undef";

constexpr SymbolTable perlOperatorSymbols{
    "<=> **= ||= //= &&= =~ !~ -> => :: ++ -- ** == != <= >= && || // .= += -= *= /= %= x= << >> = "
    "+ - * / % < > ! & | ^ ~ ? : ."};

bool isLineStart(ScannedText& text, std::size_t location)
{
    return location == 0 || (classesOf(text.unitAt(location - 1)) & newlineClass);
}

/// Where a block of documentation ends: with the next line that starts with "=cut".
std::size_t documentationEnd(ScannedText& text, std::size_t location)
{
    for (;;) {
        location = text.lineEnd(location);
        if (location >= text.length())
            return location;
        if (text.matches(++location, "=cut"))
            return text.lineEnd(location);
    }
}

/// Any punctuation of ASCII but the brackets that open an expression behind a "$".
bool isSpecialVariable(char16_t unit)
{
    return unit > u' ' && unit < 127 && !(classesOf(unit) & wordClasses) && unit != u'{' &&
           unit != u'(' && unit != u')';
}

/// Where a variable ends whose "$" is at `location`; `location` where there is none.
std::size_t scalarEnd(ScannedText& text, std::size_t location)
{
    std::size_t name = location + 1;
    // Each further "$" takes a reference; the last of them is a variable where no name follows.
    while (text.unitAt(name) == u'$')
        ++name;
    const char16_t unit = text.unitAt(name);
    if (classesOf(unit) & wordStartClasses)
        return text.skip(name, wordClasses);
    if (name > location + 1)
        return name;
    if (classesOf(unit) & digitClass)
        return text.skip(name, digitClass);
    if (unit == u'#')
        return text.skip(name + 1, classesOf(text.unitAt(name + 1)) & wordStartClasses
                                       ? wordClasses
                                       : CharacterClasses{0});
    if (unit == u'{') {
        const std::size_t end = text.skip(name + 1, wordClasses);
        return end > name + 1 && text.unitAt(end) == u'}' ? end + 1 : location;
    }
    return isSpecialVariable(unit) ? name + 1 : location;
}

struct Perl : CommonWordOrder<Perl> {
    static constexpr const SymbolTable& operators = perlOperatorSymbols;
    static constexpr CommentStyle comments = CommentStyle::hash;
    static constexpr bool hasRegexLiterals = true;

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        if (unit == u'"' || unit == u'\'' || unit == u'`')
            return quotedEnd(text, location, LineFeed::ends);
        return std::nullopt;
    }

    template<class Loop>
    bool takeOwnToken(Loop& loop, char16_t unit)
    {
        ScannedText& text = loop.text();
        const std::size_t location = loop.location();
        switch (unit) {
        case u'=':
            if (!isLineStart(text, location) ||
                !(classesOf(text.unitAt(location + 1)) & letterClasses))
                return false;
            loop.take(documentationEnd(text, location), SyntaxToken::comment);
            return true;
        case u'$': {
            const std::size_t end = scalarEnd(text, location);
            if (end == location)
                return false;
            loop.takeValue(end, SyntaxToken::propertyName);
            return true;
        }
        case u'@':
        case u'%':
            return loop.takeMarkedName(SyntaxToken::propertyName);
        case u'/':
            return !loop.has(codeFlag::regexForbidden) && takeRegex(loop);
        default:
            return false;
        }
    }

    template<class Loop>
    bool takeRegex(Loop& loop)
    {
        const auto end = regexLiterals_.end(loop.text(), loop.location());
        if (end)
            loop.takeValue(*end, SyntaxToken::string);
        return end.has_value();
    }

    RegexLiterals regexLiterals_;
};

constexpr std::array perlWords{
    WordList{perlDeclarationKeywords, declarationRole},
    WordList{perlFunctionKeywords, functionRole},
    WordList{perlConstants, constantRole},
    WordList{wordsBeforeRegex, beforeRegexRole},
};

}  // namespace

const Scanner perlScanner{scanCode<Perl>, perlWords};

}  // namespace tavrel
