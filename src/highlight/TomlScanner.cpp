#include "highlight/TokenLoop.h"

#include <array>

namespace tavrel {
namespace {

constexpr std::string_view tomlConstants = "true false";

/// The flag of a `ScanPoint`: more than blanks stands before on this line.
constexpr std::uint32_t lineHasText = 1;

/// Digits, dates and times. What follows of a hexadecimal number, of an exponent or behind a "_"
/// belongs to it.
std::size_t tomlNumberEnd(ScannedText& text, std::size_t location)
{
    constexpr std::u16string_view units = u"-:TZ+.";
    while (isAsciiDigit(text.unitAt(location)) || units.find(text.unitAt(location)) != units.npos)
        ++location;
    return text.skip(location, wordClasses);
}

class TomlLoop {
public:
    TomlLoop(const ScanJob& job, ScanPoint from)
        : job_(job), text_(job.text), location_(from.location), flags_(from.flags)
    {
    }

    ScanPoint run()
    {
        while (location_ < job_.until)
            step();
        return {location_, flags_};
    }

private:
    void step()
    {
        const char16_t unit = text_.unitAt(location_);
        const CharacterClasses classes = classesOf(unit);
        if (classes & newlineClass) {
            ++location_;
            flags_ = 0;
            return;
        }
        if (classes & blankClass) {
            ++location_;
            return;
        }
        if (unit == u'#')
            take(text_.lineEnd(location_), SyntaxToken::comment);
        else if (unit == u'[' && !(flags_ & lineHasText) && headerEnd() > location_)
            take(headerEnd(), SyntaxToken::className);
        else if (unit == u'"' || unit == u'\'')
            takeString(unit == u'"' ? Backslash::hidesOne : Backslash::isPlain);
        else if (startsTomlNumber(unit))
            take(tomlNumberEnd(text_, location_ + 1), SyntaxToken::number);
        else if (classes & nameClasses)
            takeWord();
        else if (job_.punctuation.contains(unit))
            take(location_ + 1, SyntaxToken::punctuation);
        else
            ++location_;
        flags_ = lineHasText;
    }

    /// Where the table header at the location ends; the location itself where it has no closing
    /// bracket on its line.
    std::size_t headerEnd()
    {
        const std::size_t brackets = text_.unitAt(location_ + 1) == u'[' ? 2 : 1;
        for (std::size_t at = location_ + brackets; at < text_.length(); ++at) {
            const char16_t unit = text_.unitAt(at);
            if (classesOf(unit) & newlineClass)
                return location_;
            if (unit == u']' && (brackets == 1 || text_.unitAt(at + 1) == u']'))
                return at + brackets;
        }
        return location_;
    }

    void takeString(Backslash backslash)
    {
        take(hasTripleQuote(text_, location_)
                 ? tripleQuotedEnd(text_, location_, backslash)
                 : quotedEnd(text_, location_, LineFeed::ends, backslash),
             SyntaxToken::string);
    }

    bool startsTomlNumber(char16_t unit)
    {
        return isAsciiDigit(unit) ||
               ((unit == u'-' || unit == u'+') && isAsciiDigit(text_.unitAt(location_ + 1)));
    }

    void takeWord()
    {
        const ScannedWord word = wordAt(text_, location_, nameClasses);
        const std::size_t next = text_.skip(word.end(), blankClass);
        if (text_.unitAt(word.end()) == u'.' || text_.unitAt(next) == u'=')
            take(word.end(), SyntaxToken::propertyName);
        else if (job_.words.rolesOf(text_, word).has(constantRole))
            take(word.end(), SyntaxToken::constant);
        else
            location_ = word.end();
    }

    void take(std::size_t end, SyntaxToken token)
    {
        job_.painter.paint(location_, end, token);
        location_ = end;
    }

    const ScanJob& job_;
    ScannedText& text_;
    std::size_t location_;
    std::uint32_t flags_;
};

ScanPoint scanToml(const ScanJob& job, ScanPoint from)
{
    return TomlLoop(job, from).run();
}

constexpr std::array tomlWords{WordList{tomlConstants, constantRole}};

}  // namespace

const Scanner tomlScanner{scanToml, tomlWords};

}  // namespace tavrel
