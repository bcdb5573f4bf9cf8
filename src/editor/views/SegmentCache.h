#pragma once

#include "editor/views/LineSegment.h"
#include "editor/views/SegmentLayout.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tavrel {

/// The segments that were laid out last, by where they begin. Their number and their
/// memory are bounded.
class SegmentCache {
public:
    struct Entry {
        LineSegment segment;
        std::shared_ptr<const SegmentLayout> layout;
        std::uint64_t lastUse = 0;
    };

    /// The entry whose segment shows `location`, or null. Valid until the cache changes.
    const Entry* find(std::size_t location);
    const Entry* insert(const LineSegment& segment, std::shared_ptr<const SegmentLayout> layout);
    void clear()
    {
        entries_.clear();
        memoryBytes_ = 0;
    }

    /// Forgets what lies on the lines that `range` touches, and moves what lies behind them.
    /// `range` is in the coordinates of the text before the change.
    void replace(TextRange range, std::size_t newLength);

    std::size_t size() const { return entries_.size(); }
    std::size_t memoryBytes() const { return memoryBytes_; }
    static constexpr std::size_t capacity = 512;
    static constexpr std::size_t maximumMemoryBytes = 16 * 1024 * 1024;

private:
    void dropOldest();
    void updateMemory();

    std::vector<Entry> entries_;  // By start; no two overlap.
    std::uint64_t useCount_ = 0;
    std::size_t memoryBytes_ = 0;  // Of all layouts.
};

}  // namespace tavrel
