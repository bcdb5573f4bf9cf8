#pragma once

#include "terminal/TerminalSize.h"

namespace tavrel {

/// Where the cells of a terminal stand. Lengths are logical pixels; rows count from the first one
/// shown, columns from the left, both from 0.
struct GridGeometry {
    static constexpr double leftInset = 4;
    static constexpr double topInset = 2;

    double cellWidth = 7;    // At least 1.
    double cellHeight = 15;  // At least 1.

    /// The cells that fit, at least 2 by 2. Sizes that are no number count as 0.
    TerminalSize gridSize(double width, double height) const;

    /// The row of `y` and the column of `x`, as integer parts, so that the inset counts as the
    /// first row and column. What lies outside gives numbers outside the grid.
    int rowAt(double y) const;
    int columnAt(double x) const;

    double left(int column) const { return leftInset + column * cellWidth; }
};

}  // namespace tavrel
