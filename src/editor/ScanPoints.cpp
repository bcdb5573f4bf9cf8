#include "editor/ScanPoints.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tavrel {

namespace {

bool liesBefore(const KnownScanPoint& point, std::size_t location)
{
    return point.location() < location;
}

}  // namespace

void ScanPoints::reset()
{
    points_.assign(1, {});
    trueCount_ = 1;
    candidateCount_ = 0;
    longStretches_.clear();
}

const KnownScanPoint& ScanPoints::lastBefore(std::size_t location) const
{
    const auto end = points_.begin() + static_cast<std::ptrdiff_t>(trueCount_);
    const auto behind = std::upper_bound(
        points_.begin() + 1, end, location,
        [](std::size_t at, const KnownScanPoint& point) { return at < point.location(); });
    return *std::prev(behind);
}

const LongStretch* ScanPoints::longStretchAt(std::size_t location) const
{
    const auto behind = std::upper_bound(
        longStretches_.begin(), longStretches_.end(), location,
        [](std::size_t at, const LongStretch& stretch) { return at < stretch.location; });
    if (behind == longStretches_.begin())
        return nullptr;
    const LongStretch& stretch = *std::prev(behind);
    return location < stretch.end() && stretch.end() <= knownEnd() ? &stretch : nullptr;
}

void ScanPoints::textDidChange(TextRange oldRange, std::size_t newLength)
{
    // The first point stays in any case: nothing comes before it.
    std::size_t kept = trueCount_;
    while (kept > 1 && points_[kept - 1].reach > oldRange.location)
        --kept;
    const auto firstBehind = std::lower_bound(points_.begin() + static_cast<std::ptrdiff_t>(kept),
                                              points_.end(), oldRange.end(), liesBefore);
    const auto behind = static_cast<std::size_t>(firstBehind - points_.begin());
    const std::size_t candidatesEnd = trueCount_ + candidateCount_;

    // Only one break can be mended, so of three runs of candidates the last goes.
    std::size_t newCandidates = 0;
    std::size_t end = points_.size();
    if (behind < trueCount_) {
        newCandidates = trueCount_ - behind;
        end = candidatesEnd;
    } else if (behind < candidatesEnd) {
        newCandidates = candidatesEnd - behind;
    } else {
        newCandidates = points_.size() - behind;
    }
    forgetLongStretches(points_[kept - 1].location(),
                        behind < end ? points_[behind].location() : ~std::size_t{0});
    points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(end), points_.end());
    points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(kept),
                  points_.begin() + static_cast<std::ptrdiff_t>(std::min(behind, end)));
    trueCount_ = kept;
    candidateCount_ = newCandidates;

    const std::size_t growth = newLength - oldRange.length;  // Modulo 2^64.
    for (std::size_t i = kept; i < points_.size(); ++i) {
        points_[i].point.location += growth;
        points_[i].reach += growth;
    }
    for (LongStretch& stretch : longStretches_) {
        if (stretch.location >= oldRange.end() && stretch.location > points_[kept - 1].location())
            stretch.location += growth;
    }
}

bool ScanPoints::meets(std::span<const KnownScanPoint> candidates, const ScanPoint& point)
{
    const auto at =
        std::lower_bound(candidates.begin(), candidates.end(), point.location, liesBefore);
    return at != candidates.end() && at->point == point;
}

void ScanPoints::add(ScanProgress progress)
{
    if (progress.points.empty())
        return;
    const KnownScanPoint reached = progress.points.back();
    const bool hasMet = meets(candidates(), reached.point);
    forgetLongStretches(knownEnd(), reached.location());
    const auto oldEnd = std::lower_bound(
        longStretches_.begin(), longStretches_.end(), reached.location(),
        [](const LongStretch& stretch, std::size_t at) { return stretch.location < at; });
    longStretches_.insert(oldEnd, std::make_move_iterator(progress.longStretches.begin()),
                          std::make_move_iterator(progress.longStretches.end()));

    // Candidates that were passed, met or not, make room.
    const auto first = points_.begin() + static_cast<std::ptrdiff_t>(trueCount_);
    const auto passed = std::upper_bound(
        first, points_.end(), reached.location(),
        [](std::size_t at, const KnownScanPoint& point) { return at < point.location(); });
    const auto passedCount = static_cast<std::size_t>(passed - first);
    points_.insert(points_.erase(first, passed), progress.points.begin(), progress.points.end());
    trueCount_ += progress.points.size();
    if (passedCount > candidateCount_)
        candidateCount_ = points_.size() - trueCount_;  // Past all of them: the next ones count.
    else
        candidateCount_ -= passedCount;
    if (hasMet) {
        // What was looked at on the way here bears on all that follows.
        for (std::size_t i = trueCount_; i < points_.size() && points_[i].reach < reached.reach;
             ++i)
            points_[i].reach = reached.reach;
        trueCount_ += candidateCount_;
        candidateCount_ = points_.size() - trueCount_;
    }
    thinOut();
}

void ScanPoints::forgetLongStretches(std::size_t from, std::size_t end)
{
    std::erase_if(longStretches_, [&](const LongStretch& stretch) {
        return stretch.location >= from && stretch.location < end;
    });
}

// Edits leave points close together where they were.
void ScanPoints::thinOut()
{
    if (points_.size() <= maximumPoints || candidateCount_ > 0)
        return;
    const std::size_t step = knownEnd() / (maximumPoints / 2);
    std::vector<KnownScanPoint> thinned{points_.front()};
    for (std::size_t i = 1; i < points_.size(); ++i) {
        const bool isNeeded =
            i + 1 == points_.size() || points_[i + 1].location() - thinned.back().location() > step;
        if (isNeeded)
            thinned.push_back(points_[i]);
    }
    points_ = std::move(thinned);
    trueCount_ = points_.size();
}

}  // namespace tavrel
