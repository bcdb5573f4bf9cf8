#pragma once

#include "highlight/Literals.h"
#include "highlight/Numbers.h"
#include "highlight/Scanner.h"
#include "highlight/SymbolTable.h"

#include <cstddef>

namespace tavrel {

/// The loop of a language whose tokens say by themselves what they are, so that nothing need be
/// remembered between them.
///
/// `Language` has a function `take(TokenLoop&, char16_t unit)` that takes the token at the
/// location, and answers false where there is none: the unit is then left unpainted.
template<class Language>
class TokenLoop {
public:
    TokenLoop(const ScanJob& job, ScanPoint from) : job_(job), location_(from.location) {}

    ScanPoint run()
    {
        while (location_ < job_.until) {
            const char16_t unit = job_.text.unitAt(location_);
            if ((classesOf(unit) & (blankClass | newlineClass)) || !Language::take(*this, unit))
                ++location_;
        }
        return {location_, 0};
    }

    ScannedText& text() const { return job_.text; }
    std::size_t location() const { return location_; }

    /// Paints up to `end` and goes on there.
    bool take(std::size_t end, SyntaxToken token)
    {
        job_.painter.paint(location_, end, token);
        location_ = end;
        return true;
    }

    /// Goes on at `end` and leaves what lies before it unpainted.
    bool pass(std::size_t end)
    {
        location_ = end;
        return true;
    }

    /// A comment to the end of the line.
    bool takeLineComment() { return take(text().lineEnd(location_), SyntaxToken::comment); }

    /// "//" or "/*", whichever stands at the location.
    bool takeSlashComment()
    {
        if (text().matches(location_, "//"))
            return takeLineComment();
        return text().matches(location_, "/*") &&
               take(blockCommentEnd(text(), location_), SyntaxToken::comment);
    }

    bool takeQuoted(LineFeed lineFeed, Backslash backslash = Backslash::hidesOne)
    {
        return take(quotedEnd(text(), location_, lineFeed, backslash), SyntaxToken::string);
    }

    bool takeSymbol(const SymbolTable& operators, char16_t unit)
    {
        const std::size_t length = operators.lengthAt(text(), location_, unit);
        return length > 0 && take(location_ + length, SyntaxToken::operatorColor);
    }

    /// One of the mode's punctuation characters.
    bool takePunctuation(char16_t unit)
    {
        return job_.punctuation.contains(unit) && take(location_ + 1, SyntaxToken::punctuation);
    }

    /// The roles of the word at the location, which ends at `word.end()`.
    WordTable::Roles rolesOf(const ScannedWord& word) const
    {
        return job_.words.rolesOf(job_.text, word);
    }

private:
    const ScanJob& job_;
    std::size_t location_;
};

template<class Language>
ScanPoint scanTokens(const ScanJob& job, ScanPoint from)
{
    return TokenLoop<Language>(job, from).run();
}

}  // namespace tavrel
