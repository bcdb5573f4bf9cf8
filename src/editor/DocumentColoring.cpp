#include "editor/DocumentColoring.h"

#include "editor/PointScan.h"
#include "editor/PointScanWork.h"
#include "platform/WorkQueue.h"

#include <algorithm>
#include <utility>

namespace tavrel {

namespace {

// What is coloured beside what is shown, in units, so that small motions find it done.
constexpr std::size_t marginBefore = 1024;
constexpr std::size_t marginBehind = 4096;

// How far a scan on the main thread goes: from a point to what it is to colour, behind an edit,
// and past the end of what it is to colour, to see what the last token is.
constexpr std::size_t farthestStart = 256 * 1024;
constexpr std::size_t farthestBehindEdit = 32 * 1024;
constexpr std::size_t farthestBehindStretch = 64 * 1024;

// A slice whose true state is not known starts this far before what it is to colour.
constexpr std::size_t sliceBefore = 16 * 1024;
constexpr std::size_t sliceBehind = 2048;

// The distance of scan points near an edit.
constexpr std::size_t stepNearEdit = 2048;
// Windows of a scan near an edit are small, so that few points depend on each place.
constexpr std::size_t windowNearEdit = 1024;
constexpr std::size_t window = 4096;

// Tokens take more memory than text, so only so many units have theirs.
constexpr std::size_t maximumColored = 1024 * 1024;
constexpr std::size_t forgottenAtOnce = 64 * 1024;

// A language without a scanner of its own is scanned whole, a while after the last edit, in texts
// of this length at most.
constexpr std::size_t longestWholeScan = 2 * 1024 * 1024;
constexpr double wholeScanDelaySeconds = 0.35;

TextRange rangeBetween(std::size_t start, std::size_t end)
{
    return {start, end - start};
}

// One change that stands for all of them.
TextChange hullOf(std::span<const TextChange> changes)
{
    const std::size_t start = changes.front().oldRange.location;
    const std::size_t oldLength = changes.back().oldRange.end() - start;
    std::size_t newLength = oldLength;
    for (const TextChange& change : changes)
        newLength = newLength - change.oldRange.length + change.newLength;
    return {{start, oldLength}, newLength};
}

// The part of `runs` that lies in `range`.
TokenRuns partOf(const TokenRuns& runs, TextRange range)
{
    TokenRuns part;
    std::size_t start = 0;
    for (const TokenRuns::Run& run : runs.runs()) {
        const std::size_t end = start + run.length;
        const std::size_t from = std::max(start, range.location);
        const std::size_t to = std::min(end, range.end());
        if (from < to)
            part.append(to - from, run.token);
        start = end;
        if (start >= range.end())
            break;
    }
    return part;
}

// How many units at the start have the same token in both.
std::size_t equalStart(const TokenRuns& a, const TokenRuns& b)
{
    std::size_t length = 0;
    const auto count = std::min(a.runs().size(), b.runs().size());
    for (std::size_t i = 0; i < count; ++i) {
        if (a.runs()[i].token != b.runs()[i].token)
            return length;
        length += std::min<std::size_t>(a.runs()[i].length, b.runs()[i].length);
        if (a.runs()[i].length != b.runs()[i].length)
            return length;
    }
    return length;
}

// The same from the end.
std::size_t equalEnd(const TokenRuns& a, const TokenRuns& b)
{
    std::size_t length = 0;
    const auto count = std::min(a.runs().size(), b.runs().size());
    for (std::size_t i = 1; i <= count; ++i) {
        const TokenRuns::Run& ofA = a.runs()[a.runs().size() - i];
        const TokenRuns::Run& ofB = b.runs()[b.runs().size() - i];
        if (ofA.token != ofB.token)
            return length;
        length += std::min<std::size_t>(ofA.length, ofB.length);
        if (ofA.length != ofB.length)
            return length;
    }
    return length;
}

}  // namespace

DocumentColoring::DocumentColoring(TextStorage& storage)
    : storage_(storage), self_(std::make_shared<DocumentColoring*>(this))
{
    storage_.addObserver(this);
}

DocumentColoring::~DocumentColoring()
{
    cancelScan();
    *self_ = nullptr;
    storage_.removeObserver(this);
}

void DocumentColoring::setLanguage(std::shared_ptr<const LanguageMode> language,
                                   MainQueue& mainQueue, WorkQueue* workQueue)
{
    mainQueue_ = &mainQueue;
    workQueue_ = workQueue;
    if (language == language_)
        return;
    const bool isOther = !language_ || !language || *language != *language_;
    language_ = std::move(language);
    if (isOther)
        startAnew();
}

void DocumentColoring::startAnew()
{
    cancelScan();
    const TextStorageBatch batch(storage_);
    for (const ColoredRanges::Stretch& stretch : colored_.stretches())
        storage_.setTokens(stretch.start, TokenRuns(stretch.end - stretch.start));
    colored_.clear();
    points_.reset();
    highlighter_.reset();
    if (viewers_.empty() || !language_)
        return;
    highlighter_ = std::make_shared<const LexicalHighlighter>(*language_);
    colorShown();
    scanRestLater();
}

// --- What is shown

void DocumentColoring::show(const void* viewer, TextRange range)
{
    const auto known = std::find_if(viewers_.begin(), viewers_.end(),
                                    [&](const Viewer& each) { return each.viewer == viewer; });
    if (known == viewers_.end())
        viewers_.push_back({viewer, range});
    else
        known->range = range;
    if (!language_)
        return;
    if (!highlighter_) {
        highlighter_ = std::make_shared<const LexicalHighlighter>(*language_);
        scanRestLater();
    }
    colorShown();
    forgetFarStretches();
}

void DocumentColoring::hide(const void* viewer)
{
    std::erase_if(viewers_, [&](const Viewer& each) { return each.viewer == viewer; });
}

void DocumentColoring::colorShown()
{
    const std::size_t known = hasPoints() ? points_.knownEnd() : 0;
    std::vector<TextRange> wanting;
    for (const Viewer& viewer : viewers_) {
        const TextRange shown = clampedRange(viewer.range, storage_.length());
        if (colored_.wanting(shown, known).empty())
            continue;
        const std::size_t start = shown.location - std::min(shown.location, marginBefore);
        const std::size_t end = std::min(shown.end() + marginBehind, storage_.length());
        const std::vector<TextRange> parts = colored_.wanting(rangeBetween(start, end), known);
        wanting.insert(wanting.end(), parts.begin(), parts.end());
    }
    for (const TextRange& range : wanting)
        color(range);
}

void DocumentColoring::color(TextRange range)
{
    if (!hasPoints()) {
        colorBySlice(range);
        return;
    }
    const std::size_t known = std::clamp(points_.knownEnd(), range.location, range.end());
    if (known > range.location)
        colorKnownSegments(rangeBetween(range.location, known));
    if (known == range.end())
        return;
    if (known - points_.lastBefore(known).location() <= farthestStart)
        colorFromPoint(rangeBetween(known, range.end()));
    else
        colorBySlice(rangeBetween(known, range.end()));
}

// Points lie on both sides of everything here, and long stretches are at hand.
void DocumentColoring::colorKnownSegments(TextRange range)
{
    std::size_t from = range.location;
    while (from < range.end()) {
        const LongStretch* stretch = points_.longStretchAt(from);
        if (!stretch) {
            std::size_t to = range.end();
            if (const LongStretch* last = points_.longStretchAt(to - 1))
                to = std::max(last->location, from + 1);
            colorFromPoint(rangeBetween(from, to));
            from = to;
            continue;
        }
        const std::size_t to = std::min(stretch->end(), range.end());
        setTokens(from, partOf(stretch->runs, {from - stretch->location, to - from}));
        colored_.add(rangeBetween(from, to), true);
        from = to;
    }
}

void DocumentColoring::colorFromPoint(TextRange range)
{
    const WatchedSource source(storage_.snapshot(), range.end() + farthestBehindStretch, window);
    const PaintedStretch painted =
        highlighter_->highlightFrom(source, points_.lastBefore(range.location).point, range);
    const bool hasSeenAll = !source.hasMetEnd() || source.length() == storage_.length();
    setTokens(range.location, painted.runs);
    colored_.add(range, hasSeenAll || range.end() <= points_.knownEnd());
}

// As if the text began a little before the range.
void DocumentColoring::colorBySlice(TextRange range)
{
    const TextSnapshot& text = storage_.snapshot();
    const std::size_t before = range.location - std::min(range.location, sliceBefore);
    // Where the line begins far before it, the slice begins inside the line.
    const std::size_t line = text.lineStart(text.lineIndexAt(before));
    const std::size_t start = before - line <= sliceBefore ? line : before;
    const std::size_t end = std::min(range.end() + sliceBehind, text.length());
    const WatchedSource source(text, end, window);
    const PaintedStretch painted = highlighter_->highlight(source, range, rangeBetween(start, end));
    setTokens(painted.range.location, painted.runs);
    // Without points nothing better is to come.
    colored_.add(range, !hasPoints());
}

void DocumentColoring::setTokens(std::size_t location, const TokenRuns& runs)
{
    const TokenRuns present = storage_.snapshot().tokens({location, runs.length()});
    const std::size_t start = equalStart(present, runs);
    if (start >= runs.length())
        return;
    const std::size_t end = runs.length() - equalEnd(present, runs);
    storage_.setTokens(location + start, partOf(runs, rangeBetween(start, end)));
}

void DocumentColoring::forgetFarStretches()
{
    if (colored_.length() <= maximumColored)
        return;
    const ColoredRanges::Stretch first = colored_.stretches().front();
    const ColoredRanges::Stretch last = colored_.stretches().back();
    std::size_t before = storage_.length();  // The distances to the nearest view.
    std::size_t behind = storage_.length();
    for (const Viewer& viewer : viewers_) {
        const std::size_t shown = viewer.range.location;
        before = std::min(before, shown - std::min(shown, first.start));
        behind = std::min(behind, last.end - std::min(last.end, viewer.range.end()));
    }
    const ColoredRanges::Stretch farthest = before > behind ? first : last;
    const std::size_t length =
        std::min({farthest.end - farthest.start, forgottenAtOnce, std::max(before, behind) / 2});
    if (length == 0)
        return;
    const std::size_t start = before > behind ? farthest.start : farthest.end - length;
    storage_.setTokens(start, TokenRuns(length));
    colored_.remove({start, length});
}

// --- Edits

void DocumentColoring::storageDidChange(const TextStorage& storage,
                                        std::span<const TextChange> changes)
{
    cancelScan();
    const TextChange change = hullOf(changes);
    const TextRange changed{change.oldRange.location, change.newLength};
    colored_.textDidChange(change.oldRange, change.newLength);
    points_.textDidChange(change.oldRange, change.newLength);
    for (Viewer& viewer : viewers_)
        viewer.range = clampedRange(viewer.range, storage.length());
    if (!highlighter_ || viewers_.empty()) {
        colored_.remove(changed);
        colored_.doubt(points_.knownEnd());
        return;
    }
    if (hasPoints()) {
        if (changes.size() > 1)
            colored_.remove(changed);
        rescan(changed);
        scanRestLater();
    } else {
        // The change may make or break a token that began before it.
        const std::size_t start = changed.location - std::min(changed.location, sliceBehind);
        const std::size_t end = std::min(changed.end() + sliceBehind, storage.length());
        colored_.remove(rangeBetween(start, end));
        scanRestLater(wholeScanDelaySeconds);
    }
}

void DocumentColoring::rescan(TextRange changed)
{
    const KnownScanPoint from = points_.last();
    const std::size_t length = storage_.length();
    if (changed.location - from.location() > farthestStart) {
        colored_.remove(changed);
        colored_.doubt(from.location());
        return;
    }
    const std::size_t behind = std::min(changed.length, farthestBehindEdit) + farthestBehindEdit;
    const WatchedSource source(storage_.snapshot(), changed.location + behind, windowNearEdit);
    const bool isCut = source.length() < length;
    PointScan scan(*highlighter_, source, from);
    ScanProgress progress;
    TokenRuns runs;
    std::size_t candidate = 0;
    const std::span<const KnownScanPoint> candidates = points_.candidates();
    bool isDone = false;
    while (!isDone && scan.at().location() < source.length()) {
        std::size_t until = scan.at().location() + stepNearEdit;
        while (candidate < candidates.size() &&
               candidates[candidate].location() <= scan.at().location())
            ++candidate;
        if (candidate < candidates.size())
            until = std::min(until, candidates[candidate].location());
        scan.advance(until, runs);
        if (isCut && source.hasMetEnd())
            break;
        progress.points.push_back(scan.at());
        isDone = ScanPoints::meets(candidates, scan.at().point);
    }
    points_.add(std::move(progress));

    const TextRange scanned = rangeBetween(from.location(), from.location() + runs.length());
    const TextStorageBatch batch(storage_);
    setTokens(scanned.location, runs);
    if (changed.end() > scanned.end())
        colored_.remove(rangeBetween(scanned.end(), changed.end()));
    colored_.add(scanned, true);
    if (points_.knownEnd() < length)
        colored_.doubt(points_.knownEnd());
}

// --- The rest of the text

void DocumentColoring::cancelScan()
{
    scheduledScan_.cancel();
    if (scanIsStale_)
        scanIsStale_->store(true, std::memory_order_relaxed);
    scanIsStale_.reset();
}

void DocumentColoring::scanRestLater(double delaySeconds)
{
    if (!mainQueue_ || !workQueue_ || scheduledScan_.isPending() || scanIsStale_)
        return;
    const bool isDue =
        hasPoints() ? !isKnownThroughout() : language_->id != LanguageMode::plain().id;
    if (!isDue)
        return;
    scheduledScan_ = mainQueue_->postAfter(delaySeconds, [this, self = std::weak_ptr(self_)] {
        if (!self.expired())
            scanRest();
    });
}

void DocumentColoring::scanRest()
{
    if (hasPoints())
        scanPoints();
    else if (storage_.length() <= longestWholeScan)
        scanWhole();
}

void DocumentColoring::scanPoints()
{
    scanIsStale_ = std::make_shared<std::atomic<bool>>(false);
    const auto candidates = points_.candidates();
    PointScanWork work{storage_.snapshot(),
                       highlighter_,
                       points_.last(),
                       {candidates.begin(), candidates.end()},
                       scanIsStale_};
    workQueue_->post([work = std::move(work), self = std::weak_ptr(self_), mainQueue = mainQueue_] {
        work.run([&](ScanProgress progress, PointScanWork::Report report) {
            const bool isLast = report == PointScanWork::Report::last;
            mainQueue->post(
                [self, isLast, isStale = work.isStale, progress = std::move(progress)]() mutable {
                    const auto owner = self.lock();
                    if (owner && !isStale->load(std::memory_order_relaxed))
                        (*owner)->didScan(std::move(progress), isLast);
                });
        });
    });
}

void DocumentColoring::didScan(ScanProgress progress, bool isLast)
{
    points_.add(std::move(progress));
    colorShown();
    if (!isLast)
        return;
    scanIsStale_.reset();
    scanRestLater();  // A scan that met what was known before leaves what was not.
}

void DocumentColoring::scanWhole()
{
    scanIsStale_ = std::make_shared<std::atomic<bool>>(false);
    workQueue_->post([text = storage_.snapshot(), highlighter = highlighter_,
                      isStale = scanIsStale_, self = std::weak_ptr(self_), mainQueue = mainQueue_] {
        if (isStale->load(std::memory_order_relaxed))
            return;
        PaintedStretch painted = highlighter->highlight(SnapshotSource(text));
        mainQueue->post([self, isStale, runs = std::move(painted.runs)] {
            const auto owner = self.lock();
            if (owner && !isStale->load(std::memory_order_relaxed))
                (*owner)->didScanWhole(runs);
        });
    });
}

void DocumentColoring::didScanWhole(const TokenRuns& runs)
{
    scanIsStale_.reset();
    setTokens(0, runs);
    colored_.add({0, storage_.length()}, true);
}

}  // namespace tavrel
