#include "editor/dispatch/KeyTranslator.h"
#include "terminal/ShellLine.h"
#include "terminal/TerminalSession.h"
#include "terminal/TerminalViewController.h"

#include <algorithm>
#include <array>

// Commands of the key map that mean something in a terminal.

namespace tavrel {
namespace {

/// The command that gives the keys to an editor column; its place is the column.
constexpr std::array<std::string_view, 4> editorCommands{"editor1", "editor2", "editor3",
                                                         "editor4"};

std::u16string utf16(std::u32string_view characters)
{
    std::u16string text;
    for (const char32_t character : characters) {
        constexpr char32_t firstPair = 0x10000;
        if (character < firstPair) {
            text += static_cast<char16_t>(character);
        } else {
            text += static_cast<char16_t>(0xD7C0 + (character >> 10));
            text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
        }
    }
    return text;
}

ShellLine shellLine(const TerminalEmulator& emulator)
{
    const TerminalRow row = emulator.screenRow(emulator.cursorY());
    const int cursor = emulator.cursorX();
    return {utf16(row.characters(0, cursor)), utf16(row.characters(cursor, row.columns())),
            emulator.applicationCursorKeys()};
}

}  // namespace

bool TerminalViewController::handleKeyCommand(const KeyEvent& event)
{
    const std::optional<std::string> chord = KeyTranslator::chordForEvent(event);
    const EditorCommandList* bound = chord ? keyMap_.commandsFor(*chord) : nullptr;
    if (!bound)
        return false;
    // A copy: what a command does may end in another key map.
    const EditorCommandList commands = *bound;
    return std::ranges::any_of(
        commands, [this](const EditorCommand& command) { return runCommand(command); });
}

bool TerminalViewController::runCommand(const EditorCommand& command)
{
    const auto editor = std::ranges::find(editorCommands, command.name);
    if (command.name == "nextView") {
        if (tabCount() > 1)
            selectTab((activeSessionIndex_ + 1) % tabCount());
    } else if (command.name == "previousView") {
        selectPreviousTab();
    } else if (command.name == "newTerminalTab") {
        newTab();
    } else if (command.name == "closeFile") {
        requestCloseTab(activeSessionIndex_);
    } else if (editor != editorCommands.end()) {
        if (delegate_)
            delegate_->terminalWantsEditorFocus(
                *this, static_cast<std::size_t>(editor - editorCommands.begin()));
    } else if (isShellLineCommand(command.name)) {
        runShellLineCommand(command);
    } else {
        return false;
    }
    return true;
}

void TerminalViewController::runShellLineCommand(const EditorCommand& command)
{
    const SessionPointer session = activeSession();
    if (!session || !session->started)
        return;
    const std::string keys = shellLineInput(shellLine(session->emulator), command);
    if (!keys.empty())
        type(*session, keys);
}

}  // namespace tavrel
