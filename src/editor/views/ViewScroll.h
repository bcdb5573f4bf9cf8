#pragma once

#include "editor/EditorTab.h"
#include "editor/views/ViewRows.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tavrel {

/// A row and where its top edge stands in the view.
struct VisibleRow {
    TextRow row;
    double top = 0;
};

/// Turns movements of the view into scroll origins, which are places in the text and never heights
/// from its top: what lies above is not laid out, so scrolling costs the same in a text of any
/// length. All lengths are logical pixels. Every function costs the layout of the rows it passes
/// over, which are at most those of two pages and of the distance moved.
class ViewScroll {
public:
    ViewScroll(const ViewRows& rows, double rowHeight, double viewHeight)
        : rows_(rows), rowHeight_(rowHeight), viewHeight_(viewHeight)
    {
    }

    /// The nearest origin that stands on a row's start and leaves no room below the text that could
    /// be filled from above it.
    ScrollOrigin clamped(ScrollOrigin origin) const;
    /// Down by `distance`, or up where it is negative.
    ScrollOrigin movedBy(ScrollOrigin origin, double distance) const;
    /// The origin nearest to `origin` at which `range` is in sight, its end before its start where
    /// there is no room for both. What is far away is brought to the middle of the view.
    ScrollOrigin showing(ScrollOrigin origin, TextRange range) const;
    /// The lowest place there is: the text's last row at the bottom of the view.
    ScrollOrigin end() const;

    /// The rows in sight, from the top.
    std::vector<VisibleRow> visibleRows(ScrollOrigin origin) const;

private:
    std::size_t rowsInView() const;
    ScrollOrigin up(TextRow row, double distance) const;
    std::optional<double> wholeRowTop(const std::vector<VisibleRow>& visible,
                                      std::size_t start) const;
    std::optional<double> distanceTo(const std::vector<VisibleRow>& visible,
                                     const TextRow& target) const;

    const ViewRows& rows_;
    double rowHeight_;
    double viewHeight_;
};

}  // namespace tavrel
