#pragma once

#include "platform/TextRange.h"

#include <cstddef>

namespace tavrel {

/// The rows in which a text is shown, as far as moving a cursor up and down needs them.
///
/// A row is a line of the text, or one piece of a line that is wrapped. Its range runs to where the
/// next row starts, so it holds the line's terminator; a text that is empty or ends in a terminator
/// has an empty last row. Distances are points in a window and columns in a headless run; nobody
/// but the layout needs to know which.
class RowLayout {
public:
    virtual ~RowLayout() = default;

    /// The row that shows `location`; where a wrapped line is broken that is the row that begins
    /// there. Past the end it is the last row.
    virtual TextRange rowAt(std::size_t location) const = 0;

    /// How far the left edge of the unit at `location` is from the left edge of its row.
    virtual double xAt(std::size_t location) const = 0;

    /// The location in `row` whose left edge is nearest to `x`: at most where the row's terminator
    /// begins, and in a wrapped row at most its last unit, since its end shows on the next row.
    virtual std::size_t locationAt(TextRange row, double x) const = 0;

    /// How many rows one page moves; at least 1.
    virtual std::size_t rowsPerPage() const = 0;
};

}  // namespace tavrel
