#include "terminal/GridColors.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

const TerminalRgb white{1, 1, 1};
const TerminalRgb black{0, 0, 0};

TerminalRgb faint(TerminalRgb color)
{
    color.alpha = 0.6;
    return color;
}

CellColors colorsOf(const TerminalCell& cell, CellState state = {})
{
    return cellColors(cell, state, GridColors());
}

TEST(GridColors, BeginWithTheBuiltInOnes)
{
    const GridColors colors;
    EXPECT_EQ(colors.defaultForeground, white);
    EXPECT_EQ(colors.defaultBackground, black);
    EXPECT_EQ(colors.selection, (TerminalRgb{0.2, 0.26, 0.37}));
    EXPECT_EQ(colors.link, (TerminalRgb{0.45, 0.82, 1.0}));
}

TEST(GridColors, ADefaultCellHasTheDefaultColours)
{
    EXPECT_EQ(colorsOf({U'a'}), (CellColors{white, black}));
}

TEST(GridColors, DirectColoursAreParts)
{
    const TerminalCell cell{U'a', TerminalColor::rgb(255, 51, 0), TerminalColor::rgb(0, 102, 255)};
    EXPECT_EQ(colorsOf(cell), (CellColors{{1, 0.2, 0}, {0, 0.4, 1}}));
}

TEST(GridColors, PaletteColoursComeFromTheTheme)
{
    GridColors colors;
    colors.ansiPalette.assign(16, TerminalRgb{0.5, 0.25, 0.125});
    const TerminalCell cell{U'a', TerminalColor::palette(3), TerminalColor::palette(16)};
    EXPECT_EQ(cellColors(cell, {}, colors), (CellColors{{0.5, 0.25, 0.125}, {0, 0, 0}}));
}

TEST(GridColors, ADefaultColourOfTheOtherKindIsThatColour)
{
    const TerminalCell cell{U'a', TerminalColor::defaultBackground(),
                            TerminalColor::defaultForeground()};
    EXPECT_EQ(colorsOf(cell), (CellColors{black, white}));
}

TEST(GridColors, InverseSwapsTheDefaults)
{
    TerminalCell cell{U'a'};
    cell.flags = TerminalCellFlags::inverse;
    EXPECT_EQ(colorsOf(cell), (CellColors{black, white}));
}

TEST(GridColors, DimAndInverseDimTheNewTextColour)
{
    TerminalCell cell{U'a'};
    cell.flags = TerminalCellFlags::dim;
    EXPECT_EQ(colorsOf(cell), (CellColors{faint(white), black}));
    cell.flags = TerminalCellFlags::dim | TerminalCellFlags::inverse;
    EXPECT_EQ(colorsOf(cell), (CellColors{faint(black), white}));
}

TEST(GridColors, BoldDoesNotBrighten)
{
    TerminalCell cell{U'a'};
    cell.flags = TerminalCellFlags::bold;
    EXPECT_EQ(colorsOf(cell), (CellColors{white, black}));
    cell.foreground = TerminalColor::palette(1);
    EXPECT_EQ(colorsOf(cell).text, paletteColor(1));
}

TEST(GridColors, ALinkHasItsOwnColour)
{
    const TerminalCell cell{U'a', TerminalColor::palette(1)};
    EXPECT_EQ(colorsOf(cell, {.isLink = true}), (CellColors{{0.45, 0.82, 1.0}, black}));
}

TEST(GridColors, TheSelectionFillsWhateverTheCellHas)
{
    TerminalCell cell{U'a', TerminalColor::palette(1), TerminalColor::palette(2)};
    EXPECT_EQ(colorsOf(cell, {.isSelected = true}),
              (CellColors{paletteColor(1), {0.2, 0.26, 0.37}}));
    cell.flags = TerminalCellFlags::inverse;
    EXPECT_EQ(colorsOf(cell, {.isSelected = true}),
              (CellColors{paletteColor(2), {0.2, 0.26, 0.37}}));
}

TEST(GridColors, InverseAndALinkPutTheLinksColourBehind)
{
    TerminalCell cell{U'a'};
    cell.flags = TerminalCellFlags::inverse;
    EXPECT_EQ(colorsOf(cell, {.isLink = true}), (CellColors{black, {0.45, 0.82, 1.0}}));
}

}  // namespace
}  // namespace tavrel
