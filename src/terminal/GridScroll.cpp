#include "terminal/GridScroll.h"

#include <algorithm>

namespace tavrel {

void GridScroll::update(std::int64_t rowCount, std::int64_t shownCount, std::int64_t droppedCount)
{
    const std::int64_t dropped = droppedCount - droppedCount_;
    rowCount_ = std::max<std::int64_t>(rowCount, 0);
    shownCount_ = std::max<std::int64_t>(shownCount, 1);
    droppedCount_ = droppedCount;
    if (isFollowing_)
        top_ = lastTop();
    else
        top_ = std::clamp<std::int64_t>(top_ - dropped, 0, lastTop());
}

void GridScroll::scrollTo(std::int64_t top)
{
    top_ = std::clamp<std::int64_t>(top, 0, lastTop());
    isFollowing_ = top_ == lastTop();
}

void GridScroll::follow()
{
    isFollowing_ = true;
    top_ = lastTop();
}

}  // namespace tavrel
