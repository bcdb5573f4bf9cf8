// JSON and CSON: JSON text simply has none of what CSON allows beyond it.

#include "highlight/TokenLoop.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view dataConstants = "true false null none";

struct Data {
    using Loop = TokenLoop<Data>;

    static bool take(Loop& loop, char16_t unit)
    {
        ScannedText& text = loop.text();
        const std::size_t location = loop.location();
        if (unit == u'"') {
            const std::size_t end = quotedEnd(text, location, LineFeed::isPart);
            return loop.take(end,
                             isKey(text, end) ? SyntaxToken::propertyName : SyntaxToken::string);
        }
        if (isAsciiDigit(unit) || (unit == u'-' && isAsciiDigit(text.unitAt(location + 1))))
            return loop.take(plainDecimalEnd(text, unit == u'-' ? location + 1 : location),
                             SyntaxToken::number);
        if (classesOf(unit) & (wordStartClasses | dollarClass))
            return takeWord(loop);
        if (unit == u'#')
            return loop.takeLineComment();
        if (unit == u'/' && loop.takeSlashComment())
            return true;
        constexpr std::u16string_view operators = u"!&|^~?.";
        if (operators.find(unit) != operators.npos)
            return loop.take(location + 1, SyntaxToken::operatorColor);
        return loop.takePunctuation(unit);
    }

    /// Whether what ends at `location` is the key of a value.
    static bool isKey(ScannedText& text, std::size_t location)
    {
        return text.nextVisible(location) == u':';
    }

    /// The reader of CSON would go on over "." and "/" too; a comment right behind a word and a
    /// number's point are better seen.
    static bool takeWord(Loop& loop)
    {
        const ScannedWord word = wordAt(loop.text(), loop.location(), nameClasses | dollarClass);
        const WordTable::Roles roles = loop.rolesOf(word);
        if (isKey(loop.text(), word.end()))
            return loop.take(word.end(), SyntaxToken::propertyName);
        if (roles.isConstant())
            return loop.take(word.end(), SyntaxToken::constant);
        if (roles.isModeKeyword())
            return loop.take(word.end(), SyntaxToken::keyword);
        return loop.take(word.end(), SyntaxToken::string);
    }
};

constexpr std::array dataWords{WordList{dataConstants, constantRole}};

}  // namespace

const Scanner dataScanner{scanTokens<Data>, dataWords};

}  // namespace tavrel
