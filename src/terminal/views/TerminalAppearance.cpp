#include "terminal/views/TerminalAppearance.h"

#include "config/Preferences.h"

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

constexpr double smallestFont = 6;
constexpr double largestFont = 512;

TerminalRgb rgbOf(Color color)
{
    return {color.red / 255.0, color.green / 255.0, color.blue / 255.0};
}

GridColors colorsOf(const EditorTheme& theme)
{
    GridColors colors{rgbOf(theme.terminalForeground),
                      rgbOf(theme.terminalBackground),
                      rgbOf(theme.cursor),
                      rgbOf(theme.selection),
                      rgbOf(theme.link),
                      {}};
    for (const Color color : theme.ansiColors)
        colors.ansiPalette.push_back(rgbOf(color));
    return colors;
}

}  // namespace

TerminalAppearance terminalAppearanceOf(const Preferences& preferences)
{
    // The negated test also catches a size that is no number.
    const double size = !(preferences.terminalFontSize >= smallestFont)
                            ? smallestFont
                            : std::min(preferences.terminalFontSize, largestFont);
    return {.fontName = QString::fromStdString(preferences.terminalFontName),
            .fontSize = static_cast<int>(std::round(size)),
            .colors = colorsOf(preferences.theme),
            .theme = viewTheme(preferences.theme),
            .wordCharacters =
                QString::fromStdString(preferences.terminalWordCharacters).toStdU32String(),
            .commandKey = preferences.commandKey};
}

}  // namespace tavrel
