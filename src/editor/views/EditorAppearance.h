#pragma once

#include "editor/EditorPaneServices.h"
#include "editor/views/ViewTheme.h"
#include "platform/CommandKey.h"

#include <QString>

namespace tavrel {

struct Preferences;

/// How the editor's views look, and which key they take for the command key: what they follow of
/// the preferences, held within what a window can show.
struct EditorAppearance {
    QString fontName = QStringLiteral("Menlo");
    int fontSize = 13;  // Logical pixels, 1 to 512.
    ViewTheme theme;
    CommandKey commandKey = CommandKey::ctrl;
};

EditorAppearance appearanceOf(const Preferences& preferences);

/// What a pane follows of them, held within what it can work with.
EditorPaneSettings paneSettingsOf(const Preferences& preferences);

}  // namespace tavrel
