#pragma once

#include "editor/ScanPoints.h"
#include "editor/SnapshotSource.h"
#include "highlight/LexicalHighlighter.h"

#include <cstddef>

namespace tavrel {

/// A snapshot, perhaps only the first part of it, that notes how far it has been read.
class WatchedSource final : public TextSource {
public:
    /// The text ends at `end` for whoever reads it. Hands out at most `windowUnits` at a time:
    /// smaller windows cost more, and tell more closely what was looked at.
    WatchedSource(TextSnapshot text, std::size_t end, std::size_t windowUnits);

    std::size_t length() const override { return end_; }
    TextWindow windowAt(std::size_t location, std::span<char16_t> scratch) const override;

    /// Text from here on has not been looked at. Behind `length()` where its end may have been.
    std::size_t reach() const { return reach_; }
    bool hasMetEnd() const { return reach_ > end_; }

private:
    SnapshotSource source_;
    std::size_t end_;
    std::size_t windowUnits_;
    mutable std::size_t reach_ = 0;
};

/// Goes through a text from one scan point to the next. Borrows the highlighter. One thread.
class PointScan {
public:
    PointScan(const LexicalHighlighter& highlighter, const WatchedSource& source,
              const KnownScanPoint& from)
        : highlighter_(highlighter), source_(source), at_(from)
    {
    }

    const KnownScanPoint& at() const { return at_; }

    /// Goes on to the first token boundary at or past `until`, and appends the tokens of the way.
    const KnownScanPoint& advance(std::size_t until, TokenRuns& runs);

private:
    const LexicalHighlighter& highlighter_;
    const WatchedSource& source_;
    KnownScanPoint at_;
};

}  // namespace tavrel
