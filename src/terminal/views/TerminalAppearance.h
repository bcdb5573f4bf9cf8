#pragma once

#include "editor/views/ViewTheme.h"
#include "platform/CommandKey.h"
#include "terminal/GridColors.h"

#include <QString>

#include <string>

namespace tavrel {

struct Preferences;

/// How the terminal looks and which keys and words it knows: what it follows of the preferences,
/// held within what a window can show.
struct TerminalAppearance {
    QString fontName;   // Empty: the system's fixed-width font.
    int fontSize = 12;  // Logical pixels, 6 to 512.
    GridColors colors;
    ViewTheme theme;  // Of the bars around the grid.
    std::u32string wordCharacters = U"-./_";
    CommandKey commandKey = CommandKey::ctrl;
};

TerminalAppearance terminalAppearanceOf(const Preferences& preferences);

}  // namespace tavrel
