#include "highlight/CodeLoop.h"

#include "platform/Unicode.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view rustDeclarationKeywords = "struct enum trait type union mod impl";
constexpr std::string_view rustFunctionKeywords = "fn";
constexpr std::string_view rustConstants = "true false";

constexpr SymbolTable rustOperatorSymbols{
    "..= ... <<= >>= -> => :: == != <= >= && || += -= *= /= %= &= |= ^= << >> .. = + - * / % < > ! "
    "& | ^ ? : . @"};

/// Where a raw string ends whose "r" is at `location`; nothing where it is no raw string.
std::optional<std::size_t> rawStringEnd(ScannedText& text, std::size_t location)
{
    std::size_t quote = location + 1;
    while (text.unitAt(quote) == u'#')
        ++quote;
    if (text.unitAt(quote) != u'"')
        return std::nullopt;
    return hashedQuoteEnd(text, quote + 1, 1, quote - location - 1, LineFeed::isPart);
}

/// Where a character literal ends whose quote is at `location`; nothing where the quote opens a
/// lifetime, or nothing at all.
std::optional<std::size_t> characterEnd(ScannedText& text, std::size_t location)
{
    const char16_t first = text.unitAt(location + 1);
    if (first == u'\\')
        return quotedEnd(text, location, LineFeed::ends);
    if (first == u'\'' || (classesOf(first) & newlineClass))
        return std::nullopt;
    const bool isPair = isHighSurrogate(first) && isLowSurrogate(text.unitAt(location + 2));
    const std::size_t closing = location + (isPair ? 3 : 2);
    return text.unitAt(closing) == u'\'' ? std::optional(closing + 1) : std::nullopt;
}

struct Rust : CommonWordOrder<Rust> {
    static constexpr const SymbolTable& operators = rustOperatorSymbols;
    static constexpr CommentStyle comments = CommentStyle::nestedSlashes;
    static constexpr std::string_view literalPrefixes = "br";
    static constexpr bool hasMacros = true;

    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        const std::size_t mark = unit == u'b' ? location + 1 : location;
        switch (text.unitAt(mark)) {
        case u'r':
            return rawStringEnd(text, mark);
        case u'"':
            return quotedEnd(text, mark, LineFeed::ends);
        case u'\'':
            return characterEnd(text, mark);
        default:
            return std::nullopt;
        }
    }

    template<class Loop>
    static bool takeOwnToken(Loop& loop, char16_t unit)
    {
        ScannedText& text = loop.text();
        if (unit == u'\'' && !characterEnd(text, loop.location()))
            return loop.takeMarkedName(SyntaxToken::typeName);
        if (unit != u'#')
            return false;
        const std::size_t bracket =
            loop.location() + (text.unitAt(loop.location() + 1) == u'!' ? 2 : 1);
        if (text.unitAt(bracket) != u'[')
            return false;
        loop.takeValue(balancedEnd(text, bracket, u'[', u']'), SyntaxToken::decorator);
        return true;
    }

    /// The call of a macro, as in "println!"; "a!=b" compares.
    static std::optional<SyntaxToken> ownWordToken(ScannedText& text, const ScannedWord& word,
                                                   WordTable::Roles)
    {
        if (text.unitAt(word.end()) == u'!' && text.unitAt(word.end() + 1) != u'=')
            return SyntaxToken::macro;
        return std::nullopt;
    }
};

constexpr std::array rustWords{
    WordList{rustDeclarationKeywords, declarationRole},
    WordList{rustFunctionKeywords, functionRole},
    WordList{rustConstants, constantRole},
};

}  // namespace

const Scanner rustScanner{scanCode<Rust>, rustWords};

}  // namespace tavrel
