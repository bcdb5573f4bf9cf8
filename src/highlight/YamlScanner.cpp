#include "highlight/TokenLoop.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view yamlConstants = "true false null yes no on off";

struct Yaml {
    using Loop = TokenLoop<Yaml>;

    static bool take(Loop& loop, char16_t unit)
    {
        ScannedText& text = loop.text();
        const std::size_t location = loop.location();
        if (classesOf(unit) & wordStartClasses)
            return takeWord(loop);
        switch (unit) {
        case u'#':
            return isWordStart(text, location) && loop.takeLineComment();
        case u'"':
            return loop.takeQuoted(LineFeed::ends);
        case u'\'':
            return loop.takeQuoted(LineFeed::ends, Backslash::isPlain);
        case u'&':
        case u'*':
            return takeMarked(loop, location + 1);
        case u'!':
            return takeMarked(loop, location + (text.unitAt(location + 1) == u'!' ? 2 : 1));
        default:
            break;
        }
        if (startsNumber(text, location, unit))
            return loop.take(numberEnd(text, location), SyntaxToken::number);
        constexpr std::u16string_view punctuation = u":-,[]{}|>";
        return punctuation.find(unit) != punctuation.npos &&
               loop.take(location + 1, SyntaxToken::punctuation);
    }

    static bool isWordStart(ScannedText& text, std::size_t location)
    {
        return location == 0 ||
               (classesOf(text.unitAt(location - 1)) & (blankClass | newlineClass));
    }

    /// An anchor, an alias or a tag, whose name is at `name`.
    static bool takeMarked(Loop& loop, std::size_t name)
    {
        return (classesOf(loop.text().unitAt(name)) & wordClasses) &&
               loop.take(loop.text().skip(name, nameClasses), SyntaxToken::decorator);
    }

    static bool takeWord(Loop& loop)
    {
        const ScannedWord word = wordAt(loop.text(), loop.location(), nameClasses);
        if (loop.text().unitAt(word.end()) == u':')
            return loop.take(word.end(), SyntaxToken::propertyName);
        if (loop.rolesOf(word).isConstant())
            return loop.take(word.end(), SyntaxToken::constant);
        return loop.pass(word.end());
    }
};

constexpr std::array yamlWords{WordList{yamlConstants, constantRole}};

}  // namespace

const Scanner yamlScanner{scanTokens<Yaml>, yamlWords};

}  // namespace tavrel
