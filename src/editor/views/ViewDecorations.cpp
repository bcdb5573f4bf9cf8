#include "editor/views/ViewDecorations.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tavrel {

namespace {

constexpr double markerWidth = 2;
constexpr double markerOverhang = 4;  // Above and below its row.

// Whether a cursor at `location` shows in this row and not at the start of the next one.
bool shows(const TextRow& row, std::size_t location)
{
    if (location < row.start())
        return false;
    if (location < row.end())
        return true;
    // Only the text's last row shows the location of its own end.
    return location == row.end() && row.endsLine() && row.end() == row.contentEnd();
}

void addSelection(std::vector<QRectF>& rects, const VisibleRow& visible, TextRange range,
                  const DecorationMetrics& metrics)
{
    const TextRow& row = visible.row;
    const std::size_t from = std::max(range.location, row.start());
    const std::size_t to = std::min(range.end(), row.end());
    if (from >= to)
        return;
    const std::size_t base = row.segment.start;
    double right = 0;
    for (const RowSpan& span : row.layout->spans(row.index, from - base, to - base)) {
        rects.emplace_back(metrics.left + span.left, visible.top, span.right - span.left,
                           metrics.rowHeight);
        right = span.right;
    }
    if (to > row.contentEnd()) {
        if (from >= row.contentEnd())
            right = row.xAt(row.contentEnd());
        rects.emplace_back(metrics.left + right, visible.top, metrics.newlineWidth,
                           metrics.rowHeight);
    }
}

auto key(const QRectF& rect)
{
    return std::make_tuple(rect.top(), rect.left(), rect.width(), rect.height());
}

bool isBefore(const QRectF& a, const QRectF& b)
{
    return key(a) < key(b);
}

void addDifference(QRegion& region, std::vector<QRectF> before, std::vector<QRectF> after)
{
    std::sort(before.begin(), before.end(), isBefore);
    std::sort(after.begin(), after.end(), isBefore);
    std::vector<QRectF> changed;
    std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                  std::back_inserter(changed), isBefore);
    for (const QRectF& rect : changed)
        region += rect.toAlignedRect();
}

}  // namespace

QRectF cursorRect(const VisibleRow& row, std::size_t location, const DecorationMetrics& metrics)
{
    const double x = std::floor(metrics.left + row.row.xAt(location));
    // Blanks that hang over the edge may carry a cursor out of sight; it stays at the edge.
    const double edge = std::max(metrics.viewWidth - metrics.cursorWidth, 0.0);
    return {std::min(x, edge), row.top, metrics.cursorWidth, metrics.rowHeight};
}

ViewDecorations ViewDecorations::make(const DecorationState& state,
                                      std::span<const VisibleRow> rows,
                                      const DecorationMetrics& metrics)
{
    ViewDecorations result;
    if (rows.empty())
        return result;
    const std::size_t shownStart = rows.front().row.start();
    const std::size_t shownEnd = rows.back().row.end();

    std::vector<TextRange> ranges;
    for (const TextRange& range : state.selectedRanges) {
        if (!range.isEmpty() && range.end() > shownStart && range.location < shownEnd)
            ranges.push_back(range);
    }
    std::sort(ranges.begin(), ranges.end());
    auto next = ranges.cbegin();  // The first that may reach into the row.
    for (const VisibleRow& row : rows) {
        while (next != ranges.cend() && next->end() <= row.row.start())
            ++next;
        for (auto it = next; it != ranges.cend() && it->location < row.row.end(); ++it)
            addSelection(result.selection, row, *it, metrics);
    }

    const auto addCursors = [&](const VisibleRow& row, std::span<const std::size_t> locations) {
        auto it = std::lower_bound(locations.begin(), locations.end(), row.row.start());
        for (; it != locations.end() && shows(row.row, *it); ++it)
            result.cursors.push_back(cursorRect(row, *it, metrics));
    };
    for (const VisibleRow& row : rows) {
        addCursors(row, state.secondaryCursors);
        if (state.primaryCursor && shows(row.row, *state.primaryCursor)) {
            result.primary = cursorRect(row, *state.primaryCursor, metrics);
            result.cursors.push_back(*result.primary);
        }
        if (state.marker && shows(row.row, *state.marker)) {
            const double x = std::floor(metrics.left + row.row.xAt(*state.marker)) + 0.5;
            result.marker = QRectF(x - markerWidth / 2, row.top - markerOverhang, markerWidth,
                                   metrics.rowHeight + 2 * markerOverhang);
        }
    }
    return result;
}

void ViewDecorations::moveBy(double dy)
{
    for (QRectF& rect : selection)
        rect.translate(0, dy);
    for (QRectF& rect : cursors)
        rect.translate(0, dy);
    if (primary)
        primary->translate(0, dy);
    if (marker)
        marker->translate(0, dy);
}

QRegion ViewDecorations::changesTo(const ViewDecorations& other) const
{
    QRegion region;
    addDifference(region, selection, other.selection);
    addDifference(region, cursors, other.cursors);
    if (marker != other.marker) {
        for (const std::optional<QRectF>& rect : {marker, other.marker}) {
            if (rect)
                region += rect->adjusted(-6, 0, 6, 0).toAlignedRect();
        }
    }
    return region;
}

}  // namespace tavrel
