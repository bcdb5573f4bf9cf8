#include "highlight/CodeLoop.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view pythonDeclarationKeywords = "class";
constexpr std::string_view pythonFunctionKeywords = "def";
constexpr std::string_view pythonConstants = "true false none ellipsis notimplemented";

constexpr SymbolTable pythonOperatorSymbols{
    "**= //= >>= <<= := -> == != <= >= += -= *= /= %= &= |= ^= ** // << >> = + - * / % < > ! & | ^ "
    "~ : ."};

struct Python : CommonWordOrder<Python> {
    static constexpr const SymbolTable& operators = pythonOperatorSymbols;
    static constexpr CommentStyle comments = CommentStyle::hash;
    static constexpr std::string_view literalPrefixes = "rRuUbBfF";

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location, char16_t)
    {
        std::size_t quote = location;
        while (quote < location + 2 && isPrefix(text.unitAt(quote)))
            ++quote;
        const char16_t mark = text.unitAt(quote);
        if (mark != u'"' && mark != u'\'')
            return std::nullopt;
        return hasTripleQuote(text, quote) ? tripleQuotedEnd(text, quote)
                                           : quotedEnd(text, quote, LineFeed::ends);
    }

    static bool isPrefix(char16_t unit)
    {
        return unit < 128 && literalPrefixes.find(static_cast<char>(unit)) != literalPrefixes.npos;
    }

    /// "@" and a name with its dots, as in "@app.route".
    template<class Loop>
    static bool takeOwnToken(Loop& loop, char16_t unit)
    {
        ScannedText& text = loop.text();
        std::size_t end = loop.location() + 1;
        if (unit != u'@' || !(classesOf(text.unitAt(end)) & wordStart))
            return false;
        end = text.skip(end, wordUnits);
        while (text.unitAt(end) == u'.' && (classesOf(text.unitAt(end + 1)) & wordStart))
            end = text.skip(end + 1, wordUnits);
        loop.takeValue(end, SyntaxToken::decorator);
        return true;
    }
};

constexpr std::array pythonWords{
    WordList{pythonDeclarationKeywords, declarationRole},
    WordList{pythonFunctionKeywords, functionRole},
    WordList{pythonConstants, constantRole},
};

}  // namespace

const Scanner pythonScanner{scanCode<Python>, pythonWords};

}  // namespace tavrel
