#include "editor/LocationMap.h"

#include <algorithm>

namespace tavrel {

LocationMap::LocationMap(std::span<const TextChange> changes)
{
    stretches_.reserve(changes.size());
    std::size_t inserted = 0;  // By the changes so far; with `removed` it moves what lies behind.
    std::size_t removed = 0;
    for (const TextChange& change : changes) {
        const std::size_t moved = change.oldRange.location + inserted - removed;
        stretches_.push_back({change.oldRange, {moved, change.newLength}});
        inserted += change.newLength;
        removed += change.oldRange.length;
    }
}

std::size_t LocationMap::mapped(std::size_t location, InsertionSide side) const
{
    const auto behind =
        std::partition_point(stretches_.begin(), stretches_.end(), [&](const Stretch& stretch) {
            return stretch.oldRange.location < location ||
                   (stretch.oldRange.location == location && side == InsertionSide::behind);
        });
    if (behind == stretches_.begin())
        return location;
    const auto& [oldRange, newRange] = *(behind - 1);
    if (location >= oldRange.end())
        return newRange.end() + (location - oldRange.end());
    return newRange.location + std::min(location - oldRange.location, newRange.length);
}

TextRange LocationMap::mapped(TextRange range) const
{
    if (range.isEmpty())
        return {mapped(range.location), 0};
    const std::size_t start = mapped(range.location, InsertionSide::behind);
    const std::size_t end = mapped(range.end(), InsertionSide::before);
    return {start, std::max(start, end) - start};
}

}  // namespace tavrel
