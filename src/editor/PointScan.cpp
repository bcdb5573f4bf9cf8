#include "editor/PointScan.h"

#include <algorithm>
#include <utility>

namespace tavrel {

WatchedSource::WatchedSource(TextSnapshot text, std::size_t end, std::size_t windowUnits)
    : source_(std::move(text)), end_(std::min(end, source_.length())), windowUnits_(windowUnits)
{
}

TextWindow WatchedSource::windowAt(std::size_t location, std::span<char16_t> scratch) const
{
    TextWindow window =
        source_.windowAt(location, scratch.first(std::min(windowUnits_, scratch.size())));
    window.length = std::min(window.length, end_ - window.start);
    const std::size_t windowEnd = window.start + window.length;
    // A reader that knows the last unit knows that the text ends there.
    reach_ = std::max(reach_, windowEnd < end_ ? windowEnd : end_ + 1);
    return window;
}

const KnownScanPoint& PointScan::advance(std::size_t until, TokenRuns& runs)
{
    at_.point = highlighter_.scan(source_, at_.point, until, runs);
    at_.reach = std::max(at_.reach, source_.reach());
    return at_;
}

}  // namespace tavrel
