// C and C++.

#include "highlight/AngleBrackets.h"
#include "highlight/CodeLoop.h"
#include "highlight/CppKeywords.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view cppDeclarationKeywords = "class struct enum union concept";
constexpr std::string_view cppTypeContextKeywords = "typename typedef using";
constexpr std::string_view cppFunctionLikeKeywords =
    "if for while switch catch sizeof alignof decltype noexcept requires return new delete "
    "static_cast dynamic_cast const_cast reinterpret_cast";

constexpr SymbolTable cppOperatorSymbols{
    "->* ... :: ++ -- -> == != <= >= && || += -= *= /= %= &= |= ^= <<= >>= <=> << >> .* ## + - * / "
    "% = < > ! & | ^ ~ ? : ."};

/// Longer ones are no delimiters to a compiler either, which ends at 16 characters.
constexpr std::size_t longestRawDelimiter = 255;

/// Where a raw literal ends whose quote is at `location`; nothing where its head is malformed.
std::optional<std::size_t> rawLiteralEnd(ScannedText& text, std::size_t location)
{
    const std::size_t delimiter = location + 1;
    std::size_t open = delimiter;
    for (; text.unitAt(open) != u'('; ++open) {
        const char16_t unit = text.unitAt(open);
        if (open >= text.length() || open - delimiter > longestRawDelimiter || unit == u'"' ||
            (classesOf(unit) & newlineClass))
            return std::nullopt;
    }
    const std::size_t length = open - delimiter;
    for (std::size_t close = open + 1;; ++close) {
        close = text.find(close, u')');
        if (close >= text.length())
            return text.length();
        std::size_t matched = 0;
        while (matched < length &&
               text.unitAt(close + 1 + matched) == text.unitAt(delimiter + matched))
            ++matched;
        if (matched == length && text.unitAt(close + 1 + length) == u'"')
            return close + length + 2;
    }
}

/// Where a preprocessor line ends: a backslash before the line's end takes the next line in.
std::size_t preprocessorEnd(ScannedText& text, std::size_t location)
{
    for (;;) {
        location = text.lineEnd(location);
        if (location >= text.length() || text.unitAt(location - 1) != u'\\')
            return location;
        location += text.matches(location, "\r\n") ? 2 : 1;
    }
}

struct Cpp : CodeLanguageDefaults {
    static constexpr const SymbolTable& operators = cppOperatorSymbols;
    static constexpr std::string_view literalPrefixes = "uULR";
    static constexpr bool cNumbers = true;

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        std::size_t quote = location;
        if (unit == u'u')
            quote += text.unitAt(location + 1) == u'8' ? 2 : 1;
        else if (unit == u'U' || unit == u'L')
            ++quote;
        if (text.unitAt(quote) == u'R' && text.unitAt(quote + 1) == u'"')
            return rawLiteralEnd(text, quote + 1);
        const char16_t mark = text.unitAt(quote);
        if (mark == u'"' || mark == u'\'')
            return quotedEnd(text, quote, LineFeed::ends);
        return std::nullopt;
    }

    template<class Loop>
    static bool takeOwnToken(Loop& loop, char16_t unit)
    {
        if (unit != u'#' || loop.has(codeFlag::lineHasText))
            return false;
        loop.take(preprocessorEnd(loop.text(), loop.location()), SyntaxToken::preprocessor);
        return true;
    }

    static bool isMemberSymbol(ScannedText& text, std::size_t location, std::size_t length)
    {
        const char16_t unit = text.unitAt(location);
        if (length == 1)
            return unit == u'.';
        return length == 2 && (text.matches(location, "->") || text.matches(location, "::"));
    }

    template<class Loop>
    SyntaxToken wordToken(Loop& loop, const ScannedWord& word, WordTable::Roles roles)
    {
        if (roles.isModeKeyword() || roles.has(builtinRole))
            return roles.isType() ? SyntaxToken::typeName : SyntaxToken::keyword;
        if (loop.has(codeFlag::afterTypeContext | codeFlag::expectClass))
            return SyntaxToken::className;
        if (roles.isType())
            return SyntaxToken::typeName;
        if (word.looksLikeMacro())
            return SyntaxToken::macro;
        if (!roles.has(callLikeRole) && isCalled(loop.text(), word.end()))
            return loop.has(codeFlag::memberAccess) ? SyntaxToken::methodName
                                                    : SyntaxToken::functionName;
        return word.looksLikeClass() ? SyntaxToken::className : SyntaxToken::identifier;
    }

    /// Whether "(" is the next thing behind a word that ends at `location`, its template
    /// parameters aside.
    bool isCalled(ScannedText& text, std::size_t location)
    {
        location = text.skip(location, blankClass | newlineClass);
        if (text.unitAt(location) == u'<') {
            const auto closing = brackets_.closing(text, location);
            if (!closing)
                return false;
            location = text.skip(*closing + 1, blankClass | newlineClass);
        }
        return text.unitAt(location) == u'(';
    }

    AngleBrackets brackets_;
};

constexpr std::array cppWords{
    WordList{cppBuiltinKeywords, builtinRole},
    WordList{cppDeclarationKeywords, declarationRole},
    // The name of a namespace is painted like that of a class.
    WordList{"namespace", declarationRole},
    WordList{cppTypeContextKeywords, typeContextRole},
    WordList{cppFunctionLikeKeywords, callLikeRole},
};

}  // namespace

const Scanner cppScanner{scanCode<Cpp>, cppWords};

}  // namespace tavrel
