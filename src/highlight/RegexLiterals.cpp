#include "highlight/RegexLiterals.h"

#include <algorithm>

namespace tavrel {

std::optional<std::size_t> RegexLiterals::end(ScannedText& text, std::size_t location)
{
    const std::size_t start = location + 1;
    const char16_t first = text.unitAt(start);
    if (first == u'/' || first == u'*')
        return std::nullopt;
    followFailed(text, start);
    if (hasFailed() && failsOutside_)
        return std::nullopt;

    // Where the way inside is known to fail, so is this one from the bracket on that joins them.
    const bool joins = hasFailed() && failsInside_;
    bool inClass = false;
    std::size_t at = start;
    for (;; ++at) {
        const char16_t unit = text.unitAt(at);
        if (at >= text.length() || (classesOf(unit) & newlineClass))
            break;
        if (unit == u'/' && !inClass)
            return text.skip(at + 1, wordClasses | dollarClass);
        if (unit == u'\\') {
            if (classesOf(text.unitAt(at + 1)) & newlineClass)
                break;
            ++at;
        } else if (unit == u'[' || unit == u']') {
            if (joins)
                break;
            inClass = unit == u'[';
        }
    }
    if (!joins) {
        failedAt_ = start;
        failedEnd_ = std::max(at, start + 1);
        failsInside_ = false;
    }
    failsOutside_ = true;
    return std::nullopt;
}

/// Moves the failed walks on to `location`. The "/" before it is no backslash, so no walk steps
/// over `location`.
void RegexLiterals::followFailed(ScannedText& text, std::size_t location)
{
    while (hasFailed() && failedAt_ < location) {
        const char16_t unit = text.unitAt(failedAt_);
        failedAt_ += unit == u'\\' ? 2 : 1;
        if (unit == u'[') {
            failsInside_ = failsInside_ || failsOutside_;
            failsOutside_ = false;
        } else if (unit == u']') {
            failsOutside_ = failsInside_ || failsOutside_;
            failsInside_ = false;
        }
    }
}

}  // namespace tavrel
