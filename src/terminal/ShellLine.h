#pragma once

#include "editor/dispatch/EditorCommand.h"

#include <string>
#include <string_view>

namespace tavrel {

/// The line that is being typed to a shell, as the screen shows it, and how to move on it.
struct ShellLine {
    std::u16string left;   // The row up to the cursor, the prompt included.
    std::u16string right;  // The rest of the row; blanks at its end mean nothing.
    bool applicationCursorKeys = false;
};

/// Whether `name` is a command that works on the line of a shell.
bool isShellLineCommand(std::string_view name);

/// The keys, as bytes, that do to the line what a command does to a text: as many presses of
/// Backspace as user-perceived characters go, then the new text; or presses of Left or Right. Empty
/// where there is nothing to do, and for other commands. Costs O(length).
std::string shellLineInput(const ShellLine& line, const EditorCommand& command);

}  // namespace tavrel
