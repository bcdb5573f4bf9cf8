#pragma once

#include "platform/KeyEvent.h"

#include <optional>
#include <string>

namespace tavrel {

/// Which of their two sequences the arrow keys send.
enum class CursorKeys {
    normal,
    application,
};

/// The bytes that a press sends to the shell, or nothing for a key that sends none.
///
/// Keys with a name go by their place on the keyboard, whatever the other modifiers. There are no
/// function keys, and no modifier is told to the shell. A press with Command sends nothing: it
/// belongs to the menus. Where Ctrl counts as Command, `keyRoute` says what reaches the shell.
std::optional<std::string> encodedKey(const KeyEvent& event, CursorKeys cursorKeys);

/// Whether the press is of a key with a sequence of its own, such as Return or an arrow.
bool isSequenceKey(const KeyEvent& event);

/// The byte of the key together with Control, by its characters without modifiers; nothing for a
/// key that has none. Does not ask whether the event holds Control.
std::optional<char> controlByte(const KeyEvent& event);

}  // namespace tavrel
