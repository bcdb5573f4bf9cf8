#include "highlight/TokenRuns.h"

namespace tavrel {

TokenRuns::TokenRuns(std::size_t length)
{
    append(length, SyntaxToken::foreground);
}

SyntaxToken TokenRuns::tokenAt(std::size_t location) const
{
    for (const Run& run : runs_) {
        if (location < run.length)
            return run.token;
        location -= run.length;
    }
    return SyntaxToken::foreground;
}

void TokenRuns::paint(TextRange range, SyntaxToken token)
{
    range = clampedRange(range, length_);
    if (range.isEmpty())
        return;

    // Scanners paint from left to right, so the place is looked for from the end.
    std::size_t first = runs_.size();
    std::size_t start = length_;
    while (start > range.location)
        start -= runs_[--first].length;

    // What `range` touches, from the run it begins in to the run it ends in, is taken off and
    // appended again, cut and painted.
    const std::vector<Run> touched(runs_.begin() + static_cast<std::ptrdiff_t>(first), runs_.end());
    runs_.resize(first);
    length_ = start;
    std::size_t end = start;
    bool painted = false;
    for (const Run& run : touched) {
        const std::size_t from = end;
        end += run.length;
        if (from < range.location)
            append(std::min(end, range.location) - from, run.token);
        if (!painted && end > range.location) {
            append(range.length, token);
            painted = true;
        }
        if (end > range.end())
            append(end - std::max(from, range.end()), run.token);
    }
}

}  // namespace tavrel
