#include "editor/views/EditorAppearance.h"

#include "config/Preferences.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tavrel {

namespace {

// Settings may hold any number. Past these a column is no wider than any line and a tab stop
// farther than any window.
constexpr std::int64_t widestColumn = 1'000'000;
constexpr std::int64_t widestTab = 1'000;
constexpr double largestFont = 512;

int fontPixels(double size)
{
    return static_cast<int>(std::round(size >= 1 ? std::min(size, largestFont) : 1.0));
}

}  // namespace

EditorAppearance appearanceOf(const Preferences& preferences)
{
    return {.fontName = QString::fromStdString(preferences.editorFontName),
            .fontSize = fontPixels(preferences.editorFontSize),
            .theme = viewTheme(preferences.theme),
            .commandKey = preferences.commandKey};
}

EditorPaneSettings paneSettingsOf(const Preferences& preferences)
{
    return {
        .tabWidth = static_cast<int>(std::clamp<std::int64_t>(preferences.tabWidth, 1, widestTab)),
        .columnWidth =
            static_cast<int>(std::clamp<std::int64_t>(preferences.columnWidth, 1, widestColumn)),
        .autoSaveOnFocusLoss = preferences.autoSaveOnFocusLoss};
}

}  // namespace tavrel
