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

ScrollOrigin ViewScroll::showing(ScrollOrigin origin, TextRange range) const
{
    const std::vector<VisibleRow> visible = visibleRows(origin);
    // The end of a range that ends in a terminator is on the row of that terminator.
    const TextRow target = rows_.row(range.isEmpty() ? range.location : range.end() - 1);
    const TextRow first = rows_.row(range.location);
    const auto topOf = [&visible](const TextRow& row) -> std::optional<double> {
        for (const VisibleRow& each : visible) {
            if (each.row.start() == row.start())
                return each.top;
        }
        return std::nullopt;
    };
    const std::optional<double> top = topOf(target);
    if (top && *top + rowHeight_ <= viewHeight_ && (*top >= 0 || viewHeight_ < rowHeight_)) {
        const std::optional<double> firstTop = topOf(first);
        const std::size_t apart = target.start() - first.start();
        if ((firstTop && *firstTop >= 0) || apart > 0x10000)
            return origin;
        const ScrollOrigin lifted{first.start(), 0};
        const std::vector<VisibleRow> then = visibleRows(lifted);
        const bool showsBoth = std::any_of(then.begin(), then.end(), [&](const VisibleRow& each) {
            return each.row.start() == target.start() && each.top + rowHeight_ <= viewHeight_;
        });
        return showsBoth ? clamped(lifted) : origin;
    }
    // Just beyond an edge: move that far and no farther.
    const std::size_t near = rowsInView();
    if (!visible.empty() && target.start() > visible.front().row.start()) {
        TextRow row = visible.back().row;
        double bottom = visible.back().top + rowHeight_;
        for (std::size_t i = 0; i <= near; ++i) {
            if (row.start() == target.start())
                return movedBy(origin, bottom - viewHeight_);
            std::optional<TextRow> after = rows_.rowAfter(row);
            if (!after)
                break;
            row = std::move(*after);
            bottom += rowHeight_;
        }
    } else if (!visible.empty()) {
        TextRow row = visible.front().row;
        double rowTop = visible.front().top;
        for (std::size_t i = 0; i <= near; ++i) {
            if (row.start() == target.start())
                return movedBy(origin, rowTop);
            std::optional<TextRow> before = rows_.rowBefore(row);
            if (!before)
                break;
            row = std::move(*before);
            rowTop -= rowHeight_;
        }
    }
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
