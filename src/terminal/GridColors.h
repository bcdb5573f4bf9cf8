#pragma once

#include "terminal/TerminalCell.h"
#include "terminal/TerminalPalette.h"

#include <vector>

namespace tavrel {

/// The colours that a terminal is drawn with; at first the built-in ones.
struct GridColors {
    TerminalRgb defaultForeground{1, 1, 1};
    TerminalRgb defaultBackground{0, 0, 0};
    TerminalRgb cursor{1, 0.5, 0};
    TerminalRgb selection{0.2, 0.26, 0.37};
    TerminalRgb link{0.45, 0.82, 1};
    std::vector<TerminalRgb> ansiPalette;  // By number; counts only with exactly 16 entries.

    bool operator==(const GridColors&) const = default;
};

/// What a cell is besides its own contents.
struct CellState {
    bool isSelected = false;
    bool isLink = false;

    bool operator==(const CellState&) const = default;
};

struct CellColors {
    TerminalRgb text;
    TerminalRgb fill;

    bool operator==(const CellColors&) const = default;
};

/// The colours of a cell: a link's text has the link's colour; `inverse` exchanges text and fill,
/// then `dim` makes the text faint; a selected cell is filled with the selection's colour whatever
/// its own. Bold changes no colour.
CellColors cellColors(const TerminalCell& cell, CellState state, const GridColors& colors);

}  // namespace tavrel
