#include "terminal/GridColors.h"

#include <utility>

namespace tavrel {
namespace {

constexpr double dimAlpha = 0.6;

TerminalRgb colorOf(TerminalColor color, const GridColors& colors)
{
    switch (color.kind()) {
    case TerminalColor::Kind::defaultForeground:
        return colors.defaultForeground;
    case TerminalColor::Kind::defaultBackground:
        return colors.defaultBackground;
    case TerminalColor::Kind::palette:
        return paletteColor(color.index(), colors.ansiPalette);
    case TerminalColor::Kind::rgb:
        return {color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0};
    }
    return colors.defaultForeground;
}

}  // namespace

CellColors cellColors(const TerminalCell& cell, CellState state, const GridColors& colors)
{
    CellColors result{state.isLink ? colors.link : colorOf(cell.foreground, colors),
                      colorOf(cell.background, colors)};
    if (cell.flags.contains(TerminalCellFlags::inverse))
        std::swap(result.text, result.fill);
    if (cell.flags.contains(TerminalCellFlags::dim))
        result.text.alpha = dimAlpha;
    if (state.isSelected)
        result.fill = colors.selection;
    return result;
}

}  // namespace tavrel
