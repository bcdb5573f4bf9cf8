#include "terminal/GridGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavrel {
namespace {

int clampedToInt(double value)
{
    constexpr double limit = std::numeric_limits<int>::max();
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, -limit, limit));
}

int fitting(double length, double cell)
{
    return std::max(clampedToInt(std::trunc(length / cell)), 2);
}

}  // namespace

TerminalSize GridGeometry::gridSize(double width, double height) const
{
    return {fitting(width - 2 * leftInset, cellWidth), fitting(height - 2 * topInset, cellHeight)};
}

int GridGeometry::rowAt(double y) const
{
    return clampedToInt(std::trunc((y - topInset) / cellHeight));
}

int GridGeometry::columnAt(double x) const
{
    return clampedToInt(std::trunc((x - leftInset) / cellWidth));
}

}  // namespace tavrel
