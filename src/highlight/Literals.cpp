#include "highlight/Literals.h"

#include <algorithm>

namespace tavrel {

std::size_t blockCommentEnd(ScannedText& text, std::size_t location)
{
    for (location += 2;;) {
        location = text.find(location, u'*');
        if (location >= text.length())
            return text.length();
        if (text.unitAt(++location) == u'/')
            return location + 1;
    }
}

std::size_t nestedCommentEnd(ScannedText& text, std::size_t location)
{
    std::size_t depth = 1;
    for (location += 2;;) {
        location = text.find(location, u'*', u'/');
        if (location >= text.length())
            return text.length();
        const char16_t unit = text.unitAt(location);
        const char16_t next = text.unitAt(++location);
        if (unit == u'*' && next == u'/') {
            ++location;
            if (--depth == 0)
                return location;
        } else if (unit == u'/' && next == u'*') {
            ++location;
            ++depth;
        }
    }
}

std::size_t quotedEnd(ScannedText& text, std::size_t location, LineFeed lineFeed,
                      Backslash backslash)
{
    const char16_t quote = text.unitAt(location++);
    const char16_t escape = backslash == Backslash::hidesOne ? u'\\' : quote;
    const char16_t stop = lineFeed == LineFeed::ends ? u'\n' : quote;
    for (;;) {
        const std::u16string_view units = text.piece(location);
        if (units.empty())
            return text.length();
        const auto found = std::find_if(units.begin(), units.end(), [&](char16_t unit) {
            return unit == quote || unit == escape || unit == stop;
        });
        location += static_cast<std::size_t>(found - units.begin());
        if (found == units.end())
            continue;
        if (*found == quote)
            return location + 1;
        if (*found == stop)
            return location;
        location = std::min(location + 2, text.length());
    }
}

bool hasTripleQuote(ScannedText& text, std::size_t location)
{
    const char16_t quote = text.unitAt(location);
    return text.unitAt(location + 1) == quote && text.unitAt(location + 2) == quote;
}

std::size_t tripleQuotedEnd(ScannedText& text, std::size_t location, Backslash backslash)
{
    const char16_t quote = text.unitAt(location);
    const char16_t escape = backslash == Backslash::hidesOne ? u'\\' : quote;
    for (location += 3;;) {
        location = text.find(location, quote, escape);
        if (location >= text.length())
            return text.length();
        if (text.unitAt(location) != quote)
            location = std::min(location + 2, text.length());
        else if (hasTripleQuote(text, location))
            return location + 3;
        else
            ++location;
    }
}

std::size_t hashedQuoteEnd(ScannedText& text, std::size_t location, std::size_t quotes,
                           std::size_t hashes, LineFeed lineFeed)
{
    const char16_t stop = lineFeed == LineFeed::ends ? u'\n' : u'"';
    std::size_t run = 0;  // Quotes side by side before `location`.
    while (location < text.length()) {
        const char16_t unit = text.unitAt(location);
        if (unit == u'"') {
            ++run;
            ++location;
        } else {
            if (unit == stop)
                return location;
            run = 0;
            location = text.find(location, u'"', stop);
        }
        if (run < quotes)
            continue;
        std::size_t matched = 0;
        while (matched < hashes && text.unitAt(location + matched) == u'#')
            ++matched;
        location += matched;
        if (matched == hashes)
            return location;
        // With no hash behind it, one more quote may still follow and end the literal.
        if (matched > 0)
            run = 0;
    }
    return text.length();
}

std::size_t balancedEnd(ScannedText& text, std::size_t location, char16_t open, char16_t close)
{
    std::size_t depth = 0;
    for (;;) {
        location = text.find(location, open, close);
        if (location >= text.length())
            return text.length();
        const bool opens = text.unitAt(location++) == open;
        depth = opens ? depth + 1 : depth - 1;
        if (depth == 0)
            return location;
    }
}

}  // namespace tavrel
