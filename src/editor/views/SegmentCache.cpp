#include "editor/views/SegmentCache.h"

#include <algorithm>

namespace tavrel {

const SegmentCache::Entry* SegmentCache::find(std::size_t location)
{
    auto behind = std::upper_bound(
        entries_.begin(), entries_.end(), location,
        [](std::size_t at, const Entry& entry) { return at < entry.segment.start; });
    if (behind == entries_.begin())
        return nullptr;
    Entry& entry = *std::prev(behind);
    const LineSegment& segment = entry.segment;
    // A last segment without a terminator ends the text, and shows its end too.
    const bool isLast = segment.isLastOfLine && segment.nextStart == segment.end;
    if (location >= segment.nextStart && !(isLast && location == segment.end))
        return nullptr;
    entry.lastUse = ++useCount_;
    return &entry;
}

const SegmentCache::Entry* SegmentCache::insert(const LineSegment& segment,
                                                std::shared_ptr<const SegmentLayout> layout)
{
    memoryBytes_ += layout->memoryBytes();
    if (entries_.size() >= capacity || memoryBytes_ > maximumMemoryBytes) {
        dropOldest();
        memoryBytes_ += layout->memoryBytes();
    }
    const auto at = std::lower_bound(
        entries_.begin(), entries_.end(), segment.start,
        [](const Entry& entry, std::size_t start) { return entry.segment.start < start; });
    return &*entries_.insert(at, Entry{segment, std::move(layout), ++useCount_});
}

void SegmentCache::replace(TextRange range, std::size_t newLength)
{
    // Touching counts: a terminator typed or taken away at a line's edge changes its neighbour too.
    // So does coming near: where a long line is cut depends on what stands around the cut.
    std::erase_if(entries_, [&range](const Entry& entry) {
        const std::size_t reach = entry.segment.isLastOfLine ? 0 : cutContextLength;
        return entry.segment.lineStart <= range.end() &&
               entry.segment.nextStart + reach >= range.location;
    });
    updateMemory();
    for (Entry& entry : entries_) {
        LineSegment& segment = entry.segment;
        if (segment.start < range.end())
            continue;
        for (std::size_t* place :
             {&segment.lineStart, &segment.start, &segment.end, &segment.nextStart})
            *place = *place - range.length + newLength;
    }
}

// Drops the half that has not been used for longest.
void SegmentCache::dropOldest()
{
    if (!entries_.empty()) {
        std::vector<std::uint64_t> uses;
        uses.reserve(entries_.size());
        for (const Entry& entry : entries_)
            uses.push_back(entry.lastUse);
        const auto middle = uses.begin() + static_cast<std::ptrdiff_t>(uses.size() / 2);
        std::nth_element(uses.begin(), middle, uses.end());
        std::erase_if(entries_,
                      [limit = *middle](const Entry& entry) { return entry.lastUse <= limit; });
    }
    updateMemory();
}

void SegmentCache::updateMemory()
{
    memoryBytes_ = 0;
    for (const Entry& entry : entries_)
        memoryBytes_ += entry.layout->memoryBytes();
}

}  // namespace tavrel
