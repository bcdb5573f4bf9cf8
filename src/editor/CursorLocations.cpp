#include "editor/CursorLocations.h"

#include <algorithm>

namespace tavrel {

namespace {

void sortEachOnce(std::vector<std::size_t>& offsets)
{
    if (!std::is_sorted(offsets.begin(), offsets.end()))
        std::sort(offsets.begin(), offsets.end());
    offsets.erase(std::unique(offsets.begin(), offsets.end()), offsets.end());
}

}  // namespace

CursorLocations CursorLocations::normalised(std::vector<std::size_t> offsets,
                                            std::size_t textLength, TextRange primary)
{
    for (std::size_t& offset : offsets)
        offset = std::min(offset, textLength);
    sortEachOnce(offsets);
    if (primary.isEmpty()) {
        const auto [first, last] =
            std::equal_range(offsets.begin(), offsets.end(), primary.location);
        offsets.erase(first, last);
    }
    CursorLocations result;
    if (!offsets.empty())
        result.offsets_ = std::make_shared<const std::vector<std::size_t>>(std::move(offsets));
    return result;
}

std::vector<std::size_t> CursorLocations::withPrimary(std::size_t primaryLocation,
                                                      std::size_t textLength) const
{
    std::vector<std::size_t> all = offsets();
    for (std::size_t& offset : all)
        offset = std::min(offset, textLength);
    const std::size_t primary = std::min(primaryLocation, textLength);
    all.insert(std::lower_bound(all.begin(), all.end(), primary), primary);
    sortEachOnce(all);
    return all;
}

const std::vector<std::size_t>& CursorLocations::offsets() const
{
    static const std::vector<std::size_t> none;
    return offsets_ ? *offsets_ : none;
}

}  // namespace tavrel
