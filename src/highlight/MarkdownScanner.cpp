#include "highlight/Scanner.h"

#include <algorithm>
#include <array>

namespace tavrel {
namespace {

/// The flags of a `ScanPoint` of this scanner, which stands at the start of a line: which kind of
/// fence is open.
constexpr std::uint32_t inBacktickFence = 1;
constexpr std::uint32_t inTildeFence = 2;

/// Runs of more backticks than this open nothing.
constexpr std::size_t longestBacktickRun = 32;

class MarkdownLoop {
public:
    MarkdownLoop(const ScanJob& job, ScanPoint from)
        : text_(job.text), painter_(job.painter), until_(job.until), location_(from.location),
          fence_(from.flags)
    {
    }

    ScanPoint run()
    {
        while (location_ < until_) {
            const std::size_t end = text_.lineEnd(location_);
            takeLine(end);
            location_ = end + (end < text_.length());
        }
        return {location_, fence_};
    }

private:
    void takeLine(std::size_t end)
    {
        const std::size_t start = text_.skip(location_, blankClass);
        const std::uint32_t mark = fenceAt(start);
        if (fence_ != 0 || mark != 0) {
            painter_.paint(location_, end, SyntaxToken::string);
            if (fence_ == 0)
                fence_ = mark;
            else if (fence_ == mark)
                fence_ = 0;
            return;
        }
        if (text_.unitAt(start) == u'#')
            painter_.paint(location_, end, SyntaxToken::keyword);
        else if (text_.unitAt(location_) == u'>')
            painter_.paint(location_, end, SyntaxToken::comment);
        else if (const std::size_t marker = listMarkerEnd(start); marker > start)
            painter_.paint(start, marker, SyntaxToken::operatorColor);
        else
            takeInline(start, end);
    }

    /// The flag of the fence that a line opens or closes whose first visible unit is at `start`.
    std::uint32_t fenceAt(std::size_t start)
    {
        if (text_.matches(start, "```"))
            return inBacktickFence;
        return text_.matches(start, "~~~") ? inTildeFence : 0;
    }

    /// Where the marker of a list's item ends; `start` where there is none.
    std::size_t listMarkerEnd(std::size_t start)
    {
        const char16_t unit = text_.unitAt(start);
        if (unit == u'-' || unit == u'*' || unit == u'+')
            return classesOf(text_.unitAt(start + 1)) & blankClass ? start + 1 : start;
        const std::size_t digits = text_.skip(start, digitClass);
        return digits > start && text_.unitAt(digits) == u'.' ? digits + 1 : start;
    }

    void takeInline(std::size_t location, std::size_t end)
    {
        closingBracket_ = 0;
        closingParenthesis_ = 0;
        missingBackticks_ = {};
        while (location < end) {
            const char16_t unit = text_.unitAt(location);
            if (unit == u'`')
                location = takeBackticks(location, end);
            else if (unit == u'[')
                location = takeLink(location, end);
            else if (unit == u'*' || unit == u'_')
                location = take(location, runEnd(location), SyntaxToken::operatorColor);
            else
                ++location;
        }
    }

    /// A span of code: it closes with as many backticks as it opens with.
    std::size_t takeBackticks(std::size_t location, std::size_t end)
    {
        const std::size_t open = runEnd(location);
        const std::size_t length = open - location;
        if (length > longestBacktickRun || missingBackticks_[length])
            return open;
        for (std::size_t at = open; (at = findOnLine(at, u'`', end)) < end;) {
            const std::size_t start = at;
            at = runEnd(start);
            if (at - start == length)
                return take(location, at, SyntaxToken::string);
        }
        missingBackticks_[length] = true;
        return open;
    }

    /// "[text](target)"; the brackets stay as they are.
    std::size_t takeLink(std::size_t location, std::size_t end)
    {
        const std::size_t bracket = nextBracket(closingBracket_, location + 1, u']', end);
        if (bracket >= end || text_.unitAt(bracket + 1) != u'(')
            return location + 1;
        const std::size_t target = bracket + 2;
        const std::size_t parenthesis = nextBracket(closingParenthesis_, target, u')', end);
        if (parenthesis >= end)
            return location + 1;
        take(location + 1, bracket, SyntaxToken::propertyName);
        take(target, parenthesis, SyntaxToken::string);
        return parenthesis + 1;
    }

    std::size_t take(std::size_t location, std::size_t end, SyntaxToken token)
    {
        painter_.paint(location, end, token);
        return end;
    }

    /// Behind the units from `location` on that are all the same.
    std::size_t runEnd(std::size_t location)
    {
        const char16_t unit = text_.unitAt(location);
        while (text_.unitAt(location) == unit)
            ++location;
        return location;
    }

    std::size_t findOnLine(std::size_t from, char16_t wanted, std::size_t end)
    {
        while (from < end && text_.unitAt(from) != wanted)
            ++from;
        return from;
    }

    /// The same for a bracket, found once for all that ask before it.
    std::size_t nextBracket(std::size_t& known, std::size_t from, char16_t bracket, std::size_t end)
    {
        if (known < from)
            known = findOnLine(from, bracket, end);
        return known;
    }

    ScannedText& text_;
    TokenPainter& painter_;
    const std::size_t until_;
    std::size_t location_;  // The start of a line.
    std::uint32_t fence_;

    // What is known of the current line.
    std::size_t closingBracket_ = 0;      // The last one looked up, or the line's end; 0 where
    std::size_t closingParenthesis_ = 0;  // none was.
    std::array<bool, longestBacktickRun + 1> missingBackticks_{};  // By length.
};

ScanPoint scanMarkdown(const ScanJob& job, ScanPoint from)
{
    return MarkdownLoop(job, from).run();
}

}  // namespace

const Scanner markdownScanner{scanMarkdown, {}};

}  // namespace tavrel
