#include "highlight/Literals.h"
#include "highlight/Scanner.h"

#include <algorithm>

namespace tavrel {
namespace {

/// The flags of a `ScanPoint` of this scanner.
constexpr std::uint32_t inTag = 1;         // Between a tag's name and its ">".
constexpr std::uint32_t behindEquals = 2;  // An attribute's value is next.

class HtmlLoop {
public:
    HtmlLoop(const ScanJob& job, ScanPoint from)
        : text_(job.text), painter_(job.painter), until_(job.until), location_(from.location),
          flags_(from.flags)
    {
    }

    ScanPoint run()
    {
        while (location_ < until_) {
            if (flags_ & inTag)
                stepInTag();
            else
                stepInText();
        }
        return {location_, flags_};
    }

private:
    void stepInText()
    {
        location_ = text_.find(location_, u'<', u'&', until_);
        if (location_ >= until_)
            return;
        if (text_.unitAt(location_) == u'&')
            takeEntity();
        else if (text_.matches(location_, "<!--"))
            take(behind("-->", location_ + 4), SyntaxToken::comment);
        else if (text_.matches(location_, "<!") || text_.matches(location_, "<?"))
            take(behind(">", location_ + 2), SyntaxToken::preprocessor);
        else
            takeTagStart();
    }

    void stepInTag()
    {
        const char16_t unit = text_.unitAt(location_);
        const CharacterClasses classes = classesOf(unit);
        const bool isValue = (flags_ & behindEquals) != 0;
        if (classes & (blankClass | newlineClass)) {
            ++location_;
            return;
        }
        flags_ &= ~behindEquals;
        if (unit == u'>') {
            take(location_ + 1, SyntaxToken::punctuation);
            flags_ = 0;
        } else if (unit == u'/' && text_.unitAt(location_ + 1) == u'>') {
            take(location_ + 2, SyntaxToken::punctuation);
            flags_ = 0;
        } else if (unit == u'=') {
            take(location_ + 1, SyntaxToken::punctuation);
            flags_ |= behindEquals;
        } else if (unit == u'"' || unit == u'\'') {
            take(quotedEnd(text_, location_, LineFeed::isPart), SyntaxToken::string);
        } else if ((classes & wordStartClasses) || (isValue && (classes & nameClasses))) {
            // A value without quotes is painted like a name, and may begin with a digit.
            take(text_.skip(location_, nameClasses), SyntaxToken::propertyName);
        } else {
            location_ = std::max(text_.skip(location_, nameClasses), location_ + 1);
        }
    }

    void takeTagStart()
    {
        const std::size_t name = location_ + (text_.unitAt(location_ + 1) == u'/' ? 2 : 1);
        if (!(classesOf(text_.unitAt(name)) & wordStartClasses)) {
            take(location_ + 1, SyntaxToken::punctuation);
            return;
        }
        take(name, SyntaxToken::punctuation);
        take(text_.skip(name, nameClasses), SyntaxToken::keyword);
        flags_ = inTag;
    }

    /// "&" and a name or a number up to ";".
    void takeEntity()
    {
        const std::size_t name = location_ + (text_.unitAt(location_ + 1) == u'#' ? 2 : 1);
        const std::size_t end = text_.skip(name, wordClasses);
        if (end > name && text_.unitAt(end) == u';')
            take(end + 1, SyntaxToken::constant);
        else
            location_ = end;
    }

    /// Behind the first `mark` from `location` on, or the end of the text.
    std::size_t behind(std::string_view mark, std::size_t location)
    {
        for (;; ++location) {
            location = text_.find(location, static_cast<char16_t>(mark.front()));
            if (location >= text_.length())
                return text_.length();
            if (text_.matches(location, mark))
                return location + mark.size();
        }
    }

    void take(std::size_t end, SyntaxToken token)
    {
        painter_.paint(location_, end, token);
        location_ = end;
    }

    ScannedText& text_;
    TokenPainter& painter_;
    const std::size_t until_;
    std::size_t location_;
    std::uint32_t flags_;
};

ScanPoint scanHtml(const ScanJob& job, ScanPoint from)
{
    return HtmlLoop(job, from).run();
}

}  // namespace

const Scanner htmlScanner{scanHtml, {}};

}  // namespace tavrel
