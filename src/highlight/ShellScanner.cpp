#include "highlight/TokenLoop.h"

#include <algorithm>

namespace tavrel {
namespace {

constexpr SymbolTable shellOperatorSymbols{"&& || ;; << >> |& &> | & ; < > = !"};

/// Whether a word may start at `location`: there a "#" opens a comment.
bool isWordStart(ScannedText& text, std::size_t location)
{
    if (location == 0)
        return true;
    const char16_t before = text.unitAt(location - 1);
    return (classesOf(before) & (blankClass | newlineClass)) || before == u';' || before == u'|' ||
           before == u'&' || before == u'(';
}

/// Where a variable ends whose "$" is at `location`; `location` where there is none.
std::size_t variableEnd(ScannedText& text, std::size_t location)
{
    const std::size_t name = location + 1;
    const char16_t unit = text.unitAt(name);
    if (unit == u'{')
        return balancedEnd(text, name, u'{', u'}');
    if (unit == u'(')
        return balancedEnd(text, name, u'(', u')');
    if (classesOf(unit) & wordStartClasses)
        return text.skip(name, wordClasses);
    const bool isSpecial = isAsciiDigit(unit) ||
                           std::u16string_view(u"@*#?-$!").find(unit) != std::u16string_view::npos;
    return isSpecial ? name + 1 : location;
}

struct Shell {
    using Loop = TokenLoop<Shell>;

    static bool take(Loop& loop, char16_t unit)
    {
        ScannedText& text = loop.text();
        const std::size_t location = loop.location();
        if (classesOf(unit) & wordStartClasses)
            return takeWord(loop);
        switch (unit) {
        case u'#':
            if (isWordStart(text, location))
                return loop.takeLineComment();
            break;
        case u'$':
            if (const std::size_t end = variableEnd(text, location); end > location)
                return loop.take(end, SyntaxToken::propertyName);
            break;
        case u'"':
        case u'`':
            return loop.takeQuoted(LineFeed::isPart);
        case u'\'':
            return loop.takeQuoted(LineFeed::isPart, Backslash::isPlain);
        case u'\\':
            // What it hides opens nothing: "it\'s" holds no string.
            return loop.pass(std::min(location + 2, text.length()));
        default:
            break;
        }
        if (startsNumber(text, location, unit))
            return loop.take(numberEnd(text, location), SyntaxToken::number);
        return loop.takeSymbol(shellOperatorSymbols, unit) || loop.takePunctuation(unit);
    }

    static bool takeWord(Loop& loop)
    {
        const ScannedWord word = wordAt(loop.text(), loop.location(), wordClasses);
        const WordTable::Roles roles = loop.rolesOf(word);
        if (roles.isModeKeyword())
            return loop.take(word.end(), SyntaxToken::keyword);
        if (roles.isType())
            return loop.take(word.end(), SyntaxToken::typeName);
        if (loop.text().nextVisible(word.end()) == u'(')
            return loop.take(word.end(), SyntaxToken::functionName);
        return loop.pass(word.end());
    }
};

}  // namespace

const Scanner shellScanner{scanTokens<Shell>, {}};

}  // namespace tavrel
