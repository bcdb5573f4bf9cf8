#pragma once

#include "highlight/Literals.h"
#include "highlight/Numbers.h"
#include "highlight/Scanner.h"
#include "highlight/SymbolTable.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tavrel {

enum class CommentStyle { slashes, nestedSlashes, hash };

/// What a scanner of code remembers from one token to the next. The bits are the flags of a
/// `ScanPoint`; a text begins with none of them.
namespace codeFlag {
constexpr std::uint32_t expectClass = 1;       // The next word is a type that is declared.
constexpr std::uint32_t expectFunction = 2;    // The next word is a function that is declared.
constexpr std::uint32_t afterTypeContext = 4;  // The next word is a type.
constexpr std::uint32_t memberAccess = 8;      // The previous symbol reaches into an object.
constexpr std::uint32_t lineHasText = 16;      // More than blanks stands before on this line.
constexpr std::uint32_t regexForbidden = 32;   // A "/" here divides.
}  // namespace codeFlag

/// What the traits of a language need not say: the most common answers.
struct CodeLanguageDefaults {
    static constexpr CommentStyle comments = CommentStyle::slashes;
    static constexpr CharacterClasses wordStart = wordStartClasses;
    static constexpr CharacterClasses wordUnits = wordClasses;
    /// Letters that may open a literal as its prefix.
    static constexpr std::string_view literalPrefixes = "";
    static constexpr bool hasMacros = false;
    static constexpr bool hasRegexLiterals = false;
    static constexpr bool cNumbers = false;

    /// Where the literal at `location` ends, or nothing where none begins there. Asked at quotes
    /// and at the letters of `literalPrefixes`.
    static std::optional<std::size_t> literalEnd(ScannedText& text, std::size_t location,
                                                 char16_t unit)
    {
        if (unit == u'"' || unit == u'\'')
            return quotedEnd(text, location, LineFeed::ends);
        return std::nullopt;
    }

    /// Takes a token that only this language has. Asked at every character that begins no word, no
    /// number and no comment, before all else.
    template<class Loop>
    static bool takeOwnToken(Loop&, char16_t)
    {
        return false;
    }

    /// The token of a word that is neither a constant nor a keyword of the mode, where a rule of
    /// this language alone decides it.
    static std::optional<SyntaxToken> ownWordToken(ScannedText&, const ScannedWord&,
                                                   WordTable::Roles)
    {
        return std::nullopt;
    }

    static bool isMemberSymbol(ScannedText& text, std::size_t location, std::size_t length)
    {
        return length == 1 && text.unitAt(location) == u'.';
    }
};

/// The one loop over code: at each place the first rule that applies takes a token.
///
/// `Language` is a class of traits over `CodeLanguageDefaults`. Its object lives for one run, so it
/// may remember what it has looked up ahead.
template<class Language>
class CodeLoop {
public:
    CodeLoop(const ScanJob& job, ScanPoint from)
        : text_(job.text), painter_(job.painter), words_(job.words), until_(job.until),
          location_(from.location), flags_(from.flags)
    {
    }

    ScanPoint run()
    {
        while (location_ < until_)
            step();
        return {location_, flags_};
    }

    // For the languages' own tokens.

    ScannedText& text() { return text_; }
    std::size_t location() const { return location_; }
    bool has(std::uint32_t flag) const { return (flags_ & flag) != 0; }

    /// Paints up to `end` and goes on there. The token is something on its line.
    void take(std::size_t end, SyntaxToken token)
    {
        painter_.paint(location_, end, token);
        location_ = end;
        flags_ |= codeFlag::lineHasText;
    }

    /// The same for what stands for a value, as a literal does: what follows it is no member of
    /// what came before, and a "/" behind it divides.
    void takeValue(std::size_t end, SyntaxToken token)
    {
        take(end, token);
        flags_ &= ~codeFlag::memberAccess;
        flags_ |= codeFlag::regexForbidden;
    }

    /// Takes "@" or another mark with the name right behind it; false where there is no name.
    bool takeMarkedName(SyntaxToken token)
    {
        if (!(classesOf(text_.unitAt(location_ + 1)) & Language::wordStart))
            return false;
        takeValue(text_.skip(location_ + 1, Language::wordUnits), token);
        return true;
    }

private:
    void step()
    {
        const char16_t unit = text_.unitAt(location_);
        const CharacterClasses classes = classesOf(unit);
        if (classes & Language::wordStart) {
            if (!isLiteralPrefix(unit) || !takeLiteral(unit))
                takeWord();
        } else if (classes & blankClass) {
            ++location_;
        } else if (classes & newlineClass) {
            ++location_;
            flags_ &= ~codeFlag::lineHasText;
        } else if (startsNumber(text_, location_, unit)) {
            takeValue(Language::cNumbers ? cNumberEnd(text_, location_)
                                         : numberEnd(text_, location_),
                      SyntaxToken::number);
        } else if (!takeComment(unit) && !language_.takeOwnToken(*this, unit) &&
                   !takeLiteral(unit) && !takeSymbol(unit)) {
            ++location_;
            flags_ |= codeFlag::lineHasText;
        }
    }

    static bool isLiteralPrefix(char16_t unit)
    {
        for (const char prefix : Language::literalPrefixes) {
            if (unit == static_cast<char16_t>(prefix))
                return true;
        }
        return false;
    }

    bool takeLiteral(char16_t unit)
    {
        const std::optional<std::size_t> end = language_.literalEnd(text_, location_, unit);
        if (!end)
            return false;
        takeValue(*end, SyntaxToken::string);
        return true;
    }

    bool takeComment(char16_t unit)
    {
        if constexpr (Language::comments == CommentStyle::hash) {
            if (unit != u'#')
                return false;
            take(text_.lineEnd(location_), SyntaxToken::comment);
            return true;
        } else {
            if (unit != u'/')
                return false;
            const char16_t next = text_.unitAt(location_ + 1);
            if (next == u'/')
                take(text_.lineEnd(location_), SyntaxToken::comment);
            else if (next == u'*')
                take(Language::comments == CommentStyle::nestedSlashes
                         ? nestedCommentEnd(text_, location_)
                         : blockCommentEnd(text_, location_),
                     SyntaxToken::comment);
            else
                return false;
            return true;
        }
    }

    bool takeSymbol(char16_t unit)
    {
        if (const std::size_t length = Language::operators.lengthAt(text_, location_, unit)) {
            const bool member = Language::isMemberSymbol(text_, location_, length);
            take(location_ + length, SyntaxToken::operatorColor);
            flags_ &= ~(codeFlag::memberAccess | codeFlag::regexForbidden);
            flags_ |= member ? codeFlag::memberAccess : 0;
            return true;
        }
        switch (unit) {
        case u')':
        case u']':
        case u'}':
            take(location_ + 1, SyntaxToken::punctuation);
            flags_ |= codeFlag::regexForbidden;
            return true;
        case u'(':
        case u'[':
        case u'{':
        case u';':
        case u',':
            take(location_ + 1, SyntaxToken::punctuation);
            flags_ &= ~codeFlag::regexForbidden;
            return true;
        default:
            return false;
        }
    }

    void takeWord()
    {
        const ScannedWord word = wordAt(text_, location_, Language::wordUnits);
        const WordTable::Roles roles = words_.rolesOf(text_, word);
        takeValue(word.end(), language_.wordToken(*this, word, roles));
        if constexpr (Language::hasRegexLiterals) {
            if (roles.has(beforeRegexRole))
                flags_ &= ~codeFlag::regexForbidden;
        }
        // A declaration reaches over keywords to the name, and no further.
        constexpr std::uint32_t declarations =
            codeFlag::expectClass | codeFlag::expectFunction | codeFlag::afterTypeContext;
        if (roles.has(declarationRole))
            flags_ = (flags_ & ~codeFlag::expectFunction) | codeFlag::expectClass;
        else if (roles.has(functionRole))
            flags_ = (flags_ & ~codeFlag::expectClass) | codeFlag::expectFunction;
        else if (roles.has(typeContextRole))
            flags_ |= codeFlag::afterTypeContext;
        else if (!roles.isModeKeyword() && !roles.has(builtinRole))
            flags_ &= ~declarations;
    }

    ScannedText& text_;
    TokenPainter& painter_;
    const WordTable& words_;
    const std::size_t until_;
    std::size_t location_;
    std::uint32_t flags_;
    Language language_;
};

/// The order in which most languages classify a word.
template<class Traits>
struct CommonWordOrder : CodeLanguageDefaults {
    template<class Loop>
    static SyntaxToken wordToken(Loop& loop, const ScannedWord& word, WordTable::Roles roles)
    {
        if (roles.isConstant())
            return SyntaxToken::constant;
        if (roles.isModeKeyword())
            return SyntaxToken::keyword;
        if (const auto own = Traits::ownWordToken(loop.text(), word, roles))
            return *own;
        if (loop.has(codeFlag::expectFunction))
            return SyntaxToken::functionName;
        if (loop.has(codeFlag::expectClass))
            return SyntaxToken::className;
        if (roles.isType())
            return SyntaxToken::typeName;
        const bool isCalled = loop.text().nextVisible(word.end()) == u'(';
        if (loop.has(codeFlag::memberAccess))
            return isCalled ? SyntaxToken::methodName : SyntaxToken::propertyName;
        if (Traits::hasMacros && word.looksLikeMacro())
            return SyntaxToken::macro;
        if (isCalled)
            return SyntaxToken::functionName;
        return word.looksLikeClass() ? SyntaxToken::className : SyntaxToken::identifier;
    }
};

template<class Language>
ScanPoint scanCode(const ScanJob& job, ScanPoint from)
{
    return CodeLoop<Language>(job, from).run();
}

}  // namespace tavrel
