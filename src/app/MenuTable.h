#pragma once

#include <array>
#include <string_view>

namespace tavrel {

/// What a menu item does.
enum class MenuAction {
    separator,
    openFile,
    saveFile,
    saveFileAs,
    openSettings,
    modes,  // A submenu with the language modes.
    quit,
    toggleTerminal,
    newTerminalTab,
    command,  // The command of the row, on the current pane.
};

/// An item of the menu bar.
struct MenuItem {
    std::u16string_view menu;
    std::u16string_view title;
    std::string_view chord;  // In canonical form; empty for none.
    MenuAction action = MenuAction::separator;
    std::string_view command = {};
};

/// The menu bar, from left to right and from top to bottom.
inline constexpr std::array menuTable{
    MenuItem{u"File", u"Open File...", "cmd+o", MenuAction::openFile},
    MenuItem{u"File", u"Close File", {}, MenuAction::command, "closeFile"},
    MenuItem{u"File", u"Close All Files", {}, MenuAction::command, "closeAllFiles"},
    MenuItem{u"File", u"Close Window", {}, MenuAction::command, "closeWindow"},
    MenuItem{u"File", {}, {}, MenuAction::separator},
    MenuItem{u"File", u"Save", "cmd+s", MenuAction::saveFile},
    MenuItem{u"File", u"Save As...", "cmd+shift+s", MenuAction::saveFileAs},
    MenuItem{u"File", {}, {}, MenuAction::separator},
    MenuItem{u"File", u"Settings...", "cmd+,", MenuAction::openSettings},
    MenuItem{u"File", u"Modes", {}, MenuAction::modes},
    MenuItem{u"File", {}, {}, MenuAction::separator},
    MenuItem{u"File", u"Quit Tavrel Code", "cmd+q", MenuAction::quit},
    MenuItem{u"Edit", u"Undo", "cmd+z", MenuAction::command, "undo"},
    MenuItem{u"Edit", u"Redo", "cmd+y", MenuAction::command, "redo"},
    MenuItem{u"Edit", {}, {}, MenuAction::separator},
    MenuItem{u"Edit", u"Cut", "cmd+x", MenuAction::command, "cut"},
    MenuItem{u"Edit", u"Copy", "cmd+c", MenuAction::command, "copy"},
    MenuItem{u"Edit", u"Paste", "cmd+v", MenuAction::command, "paste"},
    MenuItem{u"Edit", u"Select All", "cmd+a", MenuAction::command, "selectAll"},
    MenuItem{u"View", u"New View of File", {}, MenuAction::command, "newView"},
    MenuItem{u"View", u"Toggle Terminal", "cmd+`", MenuAction::toggleTerminal},
    MenuItem{u"View", u"New Terminal Tab", {}, MenuAction::newTerminalTab},
};

}  // namespace tavrel
