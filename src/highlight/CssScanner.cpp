#include "highlight/TokenLoop.h"

namespace tavrel {
namespace {

constexpr CharacterClasses nameStartClasses = wordStartClasses | hyphenClass;

/// Whether a number begins at `location`, a sign before it included.
bool startsSignedNumber(ScannedText& text, std::size_t location, char16_t unit)
{
    if (unit == u'-')
        return startsNumber(text, location + 1, text.unitAt(location + 1));
    return startsNumber(text, location, unit);
}

std::size_t numberWithUnitEnd(ScannedText& text, std::size_t location, char16_t unit)
{
    location = plainDecimalEnd(text, unit == u'-' ? location + 1 : location);
    while ((classesOf(text.unitAt(location)) & letterClasses) || text.unitAt(location) == u'%')
        ++location;
    return location;
}

struct Css {
    using Loop = TokenLoop<Css>;

    static bool take(Loop& loop, char16_t unit)
    {
        ScannedText& text = loop.text();
        if (unit == u'/' && text.unitAt(loop.location() + 1) == u'*')
            return loop.take(blockCommentEnd(text, loop.location()), SyntaxToken::comment);
        if (unit == u'"' || unit == u'\'')
            return loop.takeQuoted(LineFeed::ends);
        if (unit == u'@' && takeMarked(loop, nameStartClasses, SyntaxToken::decorator))
            return true;
        if (unit == u'#' && takeMarked(loop, nameClasses, SyntaxToken::constant))
            return true;
        if (startsSignedNumber(text, loop.location(), unit))
            return loop.take(numberWithUnitEnd(text, loop.location(), unit), SyntaxToken::number);
        if (unit == u'.' && takeMarked(loop, nameStartClasses, SyntaxToken::className))
            return true;
        if (startsWord(text, loop.location(), unit))
            return takeWord(loop);
        if (unit == u'{' || unit == u'}')
            return loop.take(loop.location() + 1, SyntaxToken::punctuation);
        return loop.takePunctuation(unit);
    }

    /// A mark and a name right behind it, whose first character is of `first`.
    static bool takeMarked(Loop& loop, CharacterClasses first, SyntaxToken token)
    {
        const std::size_t name = loop.location() + 1;
        return (classesOf(loop.text().unitAt(name)) & first) &&
               loop.take(loop.text().skip(name, nameClasses), token);
    }

    /// A lone "-" is no word.
    static bool startsWord(ScannedText& text, std::size_t location, char16_t unit)
    {
        return (classesOf(unit) & wordStartClasses) ||
               (unit == u'-' && (classesOf(text.unitAt(location + 1)) & nameStartClasses));
    }

    static bool takeWord(Loop& loop)
    {
        const ScannedWord word = wordAt(loop.text(), loop.location(), nameClasses);
        const WordTable::Roles roles = loop.rolesOf(word);
        const char16_t next = loop.text().unitAt(word.end());
        if (roles.lowered & keywordRole)
            return loop.take(word.end(), SyntaxToken::keyword);
        if (next == u':')
            return loop.take(word.end(), SyntaxToken::propertyName);
        if (next == u'(')
            return loop.take(word.end(), SyntaxToken::functionName);
        if (roles.isType())
            return loop.take(word.end(), SyntaxToken::className);
        return loop.pass(word.end());
    }
};

}  // namespace

const Scanner cssScanner{scanTokens<Css>, {}};

}  // namespace tavrel
