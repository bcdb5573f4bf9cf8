#pragma once

#include "editor/views/ViewScroll.h"
#include "platform/TextRange.h"

#include <QRect>
#include <QRectF>
#include <QRegion>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace tavrel {

/// What stands in the text beside its letters: selections and cursors. Borrows its lists.
struct DecorationState {
    std::span<const TextRange> selectedRanges;      // In any order, none over another.
    std::optional<std::size_t> primaryCursor;       // Absent while something is selected.
    std::span<const std::size_t> secondaryCursors;  // Ascending.
    std::optional<std::size_t> marker;
};

/// The geometry that turns locations into rectangles of the view, in logical pixels.
struct DecorationMetrics {
    double left = 0;  // Of the rows.
    double rowHeight = 1;
    double cursorWidth = 2;
    double viewWidth = 0;
    double newlineWidth = 4;  // The stub that a selected terminator shows as.
};

/// The rectangles of a `DecorationState` in the visible rows. What was drawn is kept as rectangles,
/// so that what must be drawn anew is the difference of two lists, whatever happened to the text.
struct ViewDecorations {
    std::vector<QRectF> selection;  // From the top, in each row from the left.
    std::vector<QRectF> cursors;
    std::optional<QRectF> primary;  // Also in `cursors`.
    std::optional<QRectF> marker;   // The line itself, 2 wide, standing out of its row.

    /// Costs a look at each range, and for cursors O(visible rows × log(cursors)).
    static ViewDecorations make(const DecorationState& state, std::span<const VisibleRow> rows,
                                const DecorationMetrics& metrics);

    void moveBy(double dy);
    /// What differs between the two, in whole pixels.
    QRegion changesTo(const ViewDecorations& other) const;
};

/// Where a cursor at `location` stands in `row`.
QRectF cursorRect(const VisibleRow& row, std::size_t location, const DecorationMetrics& metrics);

}  // namespace tavrel
