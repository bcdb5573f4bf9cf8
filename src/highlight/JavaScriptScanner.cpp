// JavaScript and TypeScript.

#include "highlight/CodeLoop.h"
#include "highlight/RegexLiterals.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view javascriptDeclarationKeywords = "class interface type enum";
constexpr std::string_view javascriptFunctionKeywords = "function";
constexpr std::string_view javascriptConstants = "true false null undefined nan infinity";

constexpr SymbolTable javascriptOperatorSymbols{
    "=== !== >>>= <<= >>= **= &&= ||= ?\?= => ... >>> ?. ++ -- == != <= >= && || ?? += -= *= /= %= "
    "&= |= ^= << >> ** = + - * / % < > ! & | ^ ~ ? : ."};

struct JavaScript : CommonWordOrder<JavaScript> {
    static constexpr const SymbolTable& operators = javascriptOperatorSymbols;
    static constexpr CharacterClasses wordStart = wordStartClasses | dollarClass;
    static constexpr CharacterClasses wordUnits = wordClasses | dollarClass;
    static constexpr bool hasRegexLiterals = true;

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        if (unit == u'`')
            return quotedEnd(text, location, LineFeed::isPart);
        return CodeLanguageDefaults::literalEnd(text, location, unit);
    }

    template<class Loop>
    bool takeOwnToken(Loop& loop, char16_t unit)
    {
        if (unit != u'/' || loop.has(codeFlag::regexForbidden))
            return false;
        const auto end = regexLiterals_.end(loop.text(), loop.location());
        if (end)
            loop.takeValue(*end, SyntaxToken::string);
        return end.has_value();
    }

    static std::optional<SyntaxToken> ownWordToken(ScannedText& text, const ScannedWord& word,
                                                   WordTable::Roles)
    {
        if (text.unitAt(word.end()) == u':')
            return SyntaxToken::propertyName;
        return std::nullopt;
    }

    RegexLiterals regexLiterals_;
};

constexpr std::array javascriptWords{
    WordList{javascriptDeclarationKeywords, declarationRole},
    WordList{javascriptFunctionKeywords, functionRole},
    WordList{javascriptConstants, constantRole},
    WordList{wordsBeforeRegex, beforeRegexRole},
};

}  // namespace

const Scanner javascriptScanner{scanCode<JavaScript>, javascriptWords};

}  // namespace tavrel
