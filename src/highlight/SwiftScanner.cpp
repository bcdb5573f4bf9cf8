// Swift, and Kotlin, which has its operators.

#include "highlight/CodeLoop.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view swiftDeclarationKeywords =
    "actor class enum extension protocol struct typealias";
constexpr std::string_view swiftFunctionKeywords = "func";
constexpr std::string_view swiftConstants = "true false nil";

constexpr std::string_view kotlinDeclarationKeywords = "class interface object enum typealias";
constexpr std::string_view kotlinFunctionKeywords = "fun";
constexpr std::string_view kotlinConstants = "true false null";

constexpr SymbolTable swiftOperatorSymbols{
    "... ..< -> == != <= >= && || ?? += -= *= /= %= &= |= ^= << >> = + - * / % < > ! & | ^ ~ ? : "
    "."};

struct Swift : CommonWordOrder<Swift> {
    static constexpr const SymbolTable& operators = swiftOperatorSymbols;
    static constexpr CommentStyle comments = CommentStyle::nestedSlashes;

    std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location, char16_t unit)
    {
        if (unit == u'#')
            return hashedLiteralEnd(text, location);
        if (unit != u'"')
            return std::nullopt;
        return hasTripleQuote(text, location) ? tripleQuotedEnd(text, location)
                                              : quotedEnd(text, location, LineFeed::ends);
    }

    template<class Loop>
    static bool takeOwnToken(Loop& loop, char16_t unit)
    {
        if (unit == u'@')
            return loop.takeMarkedName(SyntaxToken::decorator);
        return unit == u'#' && loop.takeMarkedName(SyntaxToken::preprocessor);
    }

    static std::optional<SyntaxToken> ownWordToken(ScannedText& text, const ScannedWord& word,
                                                   WordTable::Roles)
    {
        if (word.length == 4 && text.matches(word.location, "Self"))
            return SyntaxToken::typeName;
        if (word.length == 4 && text.matches(word.location, "init") &&
            text.nextVisible(word.end()) == u'(')
            return SyntaxToken::functionName;
        return std::nullopt;
    }

    /// Where a literal ends that begins with "#": as many of them as before the quote stand behind
    /// it.
    std::optional<std::size_t> hashedLiteralEnd(ScannedText& text, std::size_t location)
    {
        if (location < plainHashesEnd_)
            return std::nullopt;
        std::size_t quote = location;
        while (text.unitAt(quote) == u'#')
            ++quote;
        if (text.unitAt(quote) != u'"') {
            plainHashesEnd_ = quote;
            return std::nullopt;
        }
        const std::size_t hashes = quote - location;
        return hasTripleQuote(text, quote)
                   ? hashedQuoteEnd(text, quote + 3, 3, hashes, LineFeed::isPart)
                   : hashedQuoteEnd(text, quote + 1, 1, hashes, LineFeed::ends);
    }

    std::size_t plainHashesEnd_ = 0;  // Up to here every "#" is known to open no literal.
};

struct Kotlin : CommonWordOrder<Kotlin> {
    static constexpr const SymbolTable& operators = swiftOperatorSymbols;
    static constexpr CommentStyle comments = CommentStyle::nestedSlashes;
    static constexpr bool hasMacros = true;

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        // Three quotes open a raw string: a backslash in it is a character like any other.
        if (unit == u'"' && hasTripleQuote(text, location))
            return tripleQuotedEnd(text, location, Backslash::isPlain);
        return CodeLanguageDefaults::literalEnd(text, location, unit);
    }

    template<class Loop>
    static bool takeOwnToken(Loop& loop, char16_t unit)
    {
        return unit == u'@' && loop.takeMarkedName(SyntaxToken::decorator);
    }
};

constexpr std::array swiftWords{
    WordList{swiftDeclarationKeywords, declarationRole},
    WordList{swiftFunctionKeywords, functionRole},
    WordList{swiftConstants, constantRole},
};

constexpr std::array kotlinWords{
    WordList{kotlinDeclarationKeywords, declarationRole},
    WordList{kotlinFunctionKeywords, functionRole},
    WordList{kotlinConstants, constantRole},
};

}  // namespace

const Scanner swiftScanner{scanCode<Swift>, swiftWords};
const Scanner kotlinScanner{scanCode<Kotlin>, kotlinWords};

}  // namespace tavrel
