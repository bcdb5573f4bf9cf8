// Java, C# and Go, whose tokens differ in little.

#include "highlight/CodeLoop.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view javaDeclarationKeywords = "class interface enum record";
constexpr std::string_view javaConstants = "true false null";
constexpr std::string_view csharpDeclarationKeywords = "class interface enum struct record";
constexpr std::string_view csharpConstants = "true false null";
constexpr std::string_view goDeclarationKeywords = "type";
constexpr std::string_view goFunctionKeywords = "func";
constexpr std::string_view goConstants = "true false nil iota";

constexpr SymbolTable javaOperatorSymbols{
    ">>>= <<= >>= >>> -> :: ++ -- == != <= >= && || += -= *= /= %= &= |= ^= << >> = + - * / % < > "
    "! & | ^ ~ ? : ."};
constexpr SymbolTable goOperatorSymbols{
    "<<= >>= &^= := <- ... && || &^ ++ -- == != <= >= += -= *= /= %= &= |= ^= << >> = + - * / % < "
    "> ! & | ^ ."};

struct Java : CommonWordOrder<Java> {
    static constexpr const SymbolTable& operators = javaOperatorSymbols;
    static constexpr bool hasMacros = true;

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        if (unit == u'"' && hasTripleQuote(text, location))
            return tripleQuotedEnd(text, location);
        return CodeLanguageDefaults::literalEnd(text, location, unit);
    }

    template<class Loop>
    static bool takeOwnToken(Loop& loop, char16_t unit)
    {
        return unit == u'@' && loop.takeMarkedName(SyntaxToken::decorator);
    }
};

/// Where a verbatim string ends whose quote is at `location`: a doubled quote stands for one, and
/// a backslash for itself.
std::size_t verbatimEnd(ScannedText& text, std::size_t location)
{
    for (;;) {
        location = text.find(location + 1, u'"');
        if (location >= text.length())
            return text.length();
        if (text.unitAt(++location) != u'"')
            return location;
    }
}

struct CSharp : CommonWordOrder<CSharp> {
    static constexpr const SymbolTable& operators = javaOperatorSymbols;
    static constexpr bool hasMacros = true;

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        std::size_t quote = location;
        bool isVerbatim = false;
        if (unit == u'@' || unit == u'$') {
            isVerbatim = unit == u'@';
            const char16_t second = text.unitAt(++quote);
            if (second != unit && (second == u'@' || second == u'$')) {
                isVerbatim = true;
                ++quote;
            }
            if (text.unitAt(quote) != u'"')
                return std::nullopt;
        }
        if (isVerbatim)
            return verbatimEnd(text, quote);
        return CodeLanguageDefaults::literalEnd(text, quote, text.unitAt(quote));
    }

    template<class Loop>
    static bool takeOwnToken(Loop& loop, char16_t unit)
    {
        if (unit != u'#' || loop.has(codeFlag::lineHasText))
            return false;
        loop.take(loop.text().lineEnd(loop.location()), SyntaxToken::preprocessor);
        return true;
    }
};

struct Go : CommonWordOrder<Go> {
    static constexpr const SymbolTable& operators = goOperatorSymbols;
    static constexpr bool hasMacros = true;

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        if (unit == u'`')
            return quotedEnd(text, location, LineFeed::isPart, Backslash::isPlain);
        return CodeLanguageDefaults::literalEnd(text, location, unit);
    }
};

constexpr std::array javaWords{
    WordList{javaDeclarationKeywords, declarationRole},
    WordList{javaConstants, constantRole},
};

constexpr std::array csharpWords{
    WordList{csharpDeclarationKeywords, declarationRole},
    WordList{javaConstants, constantRole},
    WordList{csharpConstants, constantRole},
};

constexpr std::array goWords{
    WordList{goDeclarationKeywords, declarationRole},
    WordList{goFunctionKeywords, functionRole},
    WordList{goConstants, constantRole},
};

}  // namespace

const Scanner javaScanner{scanCode<Java>, javaWords};
const Scanner csharpScanner{scanCode<CSharp>, csharpWords};
const Scanner goScanner{scanCode<Go>, goWords};

}  // namespace tavrel
