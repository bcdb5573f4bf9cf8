#pragma once

#include "editor/ScanPoints.h"
#include "editor/TextSnapshot.h"
#include "highlight/LexicalHighlighter.h"

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

namespace tavrel {

/// The scan of the rest of a text for its scan points, as work for a queue: it holds all that it
/// needs and changes nothing. Any thread.
struct PointScanWork {
    TextSnapshot text;
    std::shared_ptr<const LexicalHighlighter> highlighter;
    KnownScanPoint from;
    std::vector<KnownScanPoint> candidates;      // Where it meets one of these it is done.
    std::shared_ptr<std::atomic<bool>> isStale;  // Ends it once it is true.

    enum class Report { more, last };

    /// Tells what it finds bit by bit, about a megabyte of text each; the last report may be empty.
    /// Between two looks at `isStale` lies one token, however long, or some thousand units.
    void run(const std::function<void(ScanProgress, Report)>& report) const;
};

}  // namespace tavrel
