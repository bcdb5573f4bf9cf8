#include "editor/PointScanWork.h"

#include "editor/PointScan.h"

#include <algorithm>
#include <utility>

namespace tavrel {

namespace {

// The distance of scan points, and how many there are to be at most.
constexpr std::size_t step = 8192;
constexpr std::size_t maximumSteps = 16 * 1024;
// So many steps between two points are a long stretch, whose tokens are kept.
constexpr std::size_t stepsOfALongStretch = 4;

constexpr std::size_t window = 4096;
constexpr std::size_t unitsPerReport = 1024 * 1024;

}  // namespace

void PointScanWork::run(const std::function<void(ScanProgress, Report)>& report) const
{
    const std::size_t length = text.length();
    const std::size_t distance = std::max(step, length / maximumSteps);
    const WatchedSource source(text, length, window);
    PointScan scan(*highlighter, source, from);
    ScanProgress progress;
    std::size_t reported = from.location();
    std::size_t candidate = 0;
    bool hasMet = false;
    TokenRuns runs;
    while (scan.at().location() < length && !hasMet && !isStale->load(std::memory_order_relaxed)) {
        const std::size_t start = scan.at().location();
        while (candidate < candidates.size() && candidates[candidate].location() <= start)
            ++candidate;
        std::size_t until = start + distance;
        if (candidate < candidates.size())
            until = std::min(until, candidates[candidate].location());
        runs.clear();
        progress.points.push_back(scan.advance(until, runs));
        if (runs.length() > stepsOfALongStretch * distance)
            progress.longStretches.push_back({start, runs});
        hasMet = ScanPoints::meets(candidates, scan.at().point);
        if (scan.at().location() - reported >= unitsPerReport) {
            report(std::exchange(progress, {}), Report::more);
            reported = scan.at().location();
        }
    }
    report(std::move(progress), Report::last);
}

}  // namespace tavrel
