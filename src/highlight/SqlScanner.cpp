#include "highlight/TokenLoop.h"

namespace tavrel {
namespace {

constexpr SymbolTable sqlOperatorSymbols{"<> <= >= != || = < > + - * / % ."};

struct Sql {
    using Loop = TokenLoop<Sql>;

    static bool take(Loop& loop, char16_t unit)
    {
        ScannedText& text = loop.text();
        if (classesOf(unit) & wordStartClasses)
            return takeWord(loop);
        if (unit == u'-' && text.unitAt(loop.location() + 1) == u'-')
            return loop.takeLineComment();
        if (unit == u'/' && loop.takeSlashComment())
            return true;
        // A string may span lines, as every database lets it.
        if (unit == u'\'' || unit == u'"' || unit == u'`')
            return loop.takeQuoted(LineFeed::isPart);
        if (startsNumber(text, loop.location(), unit))
            return loop.take(numberEnd(text, loop.location()), SyntaxToken::number);
        return loop.takeSymbol(sqlOperatorSymbols, unit) || loop.takePunctuation(unit);
    }

    static bool takeWord(Loop& loop)
    {
        const ScannedWord word = wordAt(loop.text(), loop.location(), wordClasses);
        const WordTable::Roles roles = loop.rolesOf(word);
        if (roles.lowered & keywordRole)
            return loop.take(word.end(), SyntaxToken::keyword);
        if (roles.isType())
            return loop.take(word.end(), SyntaxToken::typeName);
        return loop.pass(word.end());
    }
};

}  // namespace

const Scanner sqlScanner{scanTokens<Sql>, {}};

}  // namespace tavrel
