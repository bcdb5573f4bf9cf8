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
    quit,
    command,  // The command of the row, on the current pane.
};

/// An item of the menu bar.
struct MenuItem {
    std::u16string_view menu;
    std::u16string_view title;
    std::u16string_view shortcut;  // As the toolkit writes it; empty for none.
    MenuAction action = MenuAction::separator;
    std::string_view command = {};
};

/// The menu bar, from left to right and from top to bottom.
inline constexpr std::array menuTable{
    MenuItem{u"File", u"Open File...", u"Ctrl+O", MenuAction::openFile},
    MenuItem{u"File", {}, {}, MenuAction::separator},
    MenuItem{u"File", u"Save", u"Ctrl+S", MenuAction::saveFile},
    MenuItem{u"File", u"Save As...", u"Ctrl+Shift+S", MenuAction::saveFileAs},
    MenuItem{u"File", {}, {}, MenuAction::separator},
    MenuItem{u"File", u"Quit Tavrel Code", u"Ctrl+Q", MenuAction::quit},
    MenuItem{u"Edit", u"Undo", u"Ctrl+Z", MenuAction::command, "undo"},
    MenuItem{u"Edit", u"Redo", u"Ctrl+Y", MenuAction::command, "redo"},
    MenuItem{u"Edit", {}, {}, MenuAction::separator},
    MenuItem{u"Edit", u"Cut", u"Ctrl+X", MenuAction::command, "cut"},
    MenuItem{u"Edit", u"Copy", u"Ctrl+C", MenuAction::command, "copy"},
    MenuItem{u"Edit", u"Paste", u"Ctrl+V", MenuAction::command, "paste"},
    MenuItem{u"Edit", u"Select All", u"Ctrl+A", MenuAction::command, "selectAll"},
};

}  // namespace tavrel
