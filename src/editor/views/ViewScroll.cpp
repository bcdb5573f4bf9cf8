#include "editor/views/ViewScroll.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tavrel {

std::size_t ViewScroll::rowsInView() const
{
    return static_cast<std::size_t>(std::max(std::floor(viewHeight_ / rowHeight_), 1.0));
}

// The origin whose top edge lies `distance` above the top of `row`.
ScrollOrigin ViewScroll::up(TextRow row, double distance) const
{
    while (distance > 0) {
        std::optional<TextRow> before = rows_.rowBefore(row);
        if (!before)
            return {row.start(), 0};
        row = std::move(*before);
        distance -= rowHeight_;
    }
    return {row.start(), -distance};
}

ScrollOrigin ViewScroll::end() const
{
    const TextRow last = rows_.row(rows_.text().length());
    return up(last, std::max(viewHeight_ - rowHeight_, 0.0));
}

ScrollOrigin ViewScroll::clamped(ScrollOrigin origin) const
{
    TextRow row = rows_.row(origin.location);
    origin.location = row.start();
    origin.offset = std::clamp(origin.offset, 0.0, std::nextafter(rowHeight_, 0.0));
    double bottom = rowHeight_ - origin.offset;
    while (bottom < viewHeight_) {
        std::optional<TextRow> after = rows_.rowAfter(row);
        if (!after)
            return end();
        row = std::move(*after);
        bottom += rowHeight_;
    }
    return origin;
}

ScrollOrigin ViewScroll::movedBy(ScrollOrigin origin, double distance) const
{
    TextRow row = rows_.row(origin.location);
    const double target = origin.offset + distance;  // From the top of `row`.
    if (target < 0)
        return clamped(up(std::move(row), -target));
    double left = target;
    while (left >= rowHeight_) {
        std::optional<TextRow> after = rows_.rowAfter(row);
        if (!after)
            return end();
        row = std::move(*after);
        left -= rowHeight_;
    }
    return clamped({row.start(), left});
}

// Where the row that begins at `start` stands when all of it is in sight.
std::optional<double> ViewScroll::wholeRowTop(const std::vector<VisibleRow>& visible,
                                              std::size_t start) const
{
    for (const VisibleRow& each : visible) {
        const bool isWhole = each.top >= 0 && each.top + rowHeight_ <= viewHeight_;
        if (each.row.start() == start && (isWhole || viewHeight_ < rowHeight_))
            return each.top;
    }
    return std::nullopt;
}

// How far the picture has to move for a row that lies less than a page beyond one of its edges.
std::optional<double> ViewScroll::distanceTo(const std::vector<VisibleRow>& visible,
                                             const TextRow& target) const
{
    const bool isDown = target.start() > visible.front().row.start();
    TextRow row = isDown ? visible.back().row : visible.front().row;
    double top = isDown ? visible.back().top : visible.front().top;
    for (std::size_t i = 0; i <= rowsInView(); ++i) {
        if (row.start() == target.start())
            return isDown ? top + rowHeight_ - viewHeight_ : top;
        std::optional<TextRow> next = isDown ? rows_.rowAfter(row) : rows_.rowBefore(row);
        if (!next)
            break;
        row = std::move(*next);
        top += isDown ? rowHeight_ : -rowHeight_;
    }
    return std::nullopt;
}

ScrollOrigin ViewScroll::showing(ScrollOrigin origin, TextRange range) const
{
    const std::vector<VisibleRow> visible = visibleRows(origin);
    // The end of a range that ends in a terminator is on the row of that terminator.
    const TextRow target = rows_.row(range.isEmpty() ? range.location : range.end() - 1);
    const TextRow first = rows_.row(range.location);
    if (wholeRowTop(visible, target.start())) {
        if (wholeRowTop(visible, first.start()))
            return origin;
        const ScrollOrigin lifted{first.start(), 0};
        const bool showsBoth = wholeRowTop(visibleRows(lifted), target.start()).has_value();
        return showsBoth ? clamped(lifted) : origin;
    }
    if (const std::optional<double> distance = distanceTo(visible, target))
        return movedBy(origin, *distance);
    const double above = std::floor((viewHeight_ - rowHeight_) / 2 / rowHeight_) * rowHeight_;
    return clamped(up(target, std::max(above, 0.0)));
}

std::vector<VisibleRow> ViewScroll::visibleRows(ScrollOrigin origin) const
{
    std::vector<VisibleRow> result;
    result.reserve(rowsInView() + 2);
    std::optional<TextRow> row = rows_.row(origin.location);
    for (double top = -origin.offset; row && top < viewHeight_; top += rowHeight_) {
        std::optional<TextRow> after = rows_.rowAfter(*row);
        result.push_back({std::move(*row), top});
        row = std::move(after);
    }
    return result;
}

}  // namespace tavrel
