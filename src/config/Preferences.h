#pragma once

#include "config/EditorTheme.h"
#include "config/LanguageMode.h"
#include "editor/dispatch/KeyMapEntry.h"
#include "platform/CommandKey.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tavrel {

/// Everything that a person can configure, with the values built into the program.
///
/// A plain value. Numbers are as the settings give them and may be of any size: whoever uses one
/// holds it within what it is used for.
struct Preferences {
    /// In the order in which they count: of two entries for one sequence the later one wins. No two
    /// have the same text.
    std::vector<KeyMapEntry> keymap;
    EditorTheme theme = EditorTheme::builtIn();
    /// In the order in which they are asked for an extension.
    std::vector<std::shared_ptr<const LanguageMode>> languageModes;

    std::string editorFontName = "Menlo";
    double editorFontSize = 13.0;   // Points, unbounded.
    std::int64_t tabWidth = 2;      // Columns, at least 1.
    std::int64_t columnWidth = 80;  // Characters, at least 1.
    std::int64_t maxEditors = 4;    // 1 to 4.
    bool autoSaveOnFocusLoss = true;
    bool showPathInTitleBar = true;

    std::string terminalFontName;    // Empty: the system's monospaced font.
    double terminalFontSize = 12.0;  // Points, unbounded.
    std::string terminalWordCharacters = "-./_";
    std::int64_t terminalHistoryLines = 10000;  // At least 0.

    double sidebarFontSize = 13.0;  // Points, at least 8.
    std::vector<std::string> toolbarItems{"openFolder", "openFile",   "save",       "quickOpen",
                                          "find",       "terminal",   "newView",    "goto",
                                          "emoji",      "toggleTree", "refreshTree"};
    CommandKey commandKey = CommandKey::ctrl;
};

}  // namespace tavrel
