#pragma once

#include <QtCore/qnamespace.h>
#include <optional>

namespace tavrel {

/// One key of the keyboard: its place, and what an American keyboard has printed on it.
struct KeyPlace {
    int evdevCode;  // The kernel's code of the place.
    int keyCode;    // The engines' code of the place.
    Qt::Key key;
    bool isOnKeypad = false;

    constexpr bool isLetter() const { return key >= Qt::Key_A && key <= Qt::Key_Z; }
    constexpr bool isDigit() const { return key >= Qt::Key_0 && key <= Qt::Key_9; }
};

/// The place of a native scan code, which is the kernel's code and 8 on X11 and Wayland, or null.
const KeyPlace* placeOfScanCode(unsigned scanCode);

/// The place where an American keyboard has `key`, or null. With the flag for Shift also the place
/// of what is typed with Shift there, with the one for the keypad only places of the keypad.
const KeyPlace* placeOfKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {});

/// A key that has a name instead of a text that depends on the layout.
struct NamedKey {
    Qt::Key key;
    int keyCode;  // -1 where the key has no known place.
    char16_t character;
    bool typesCharacter;  // Whether `character` is what the press types too.
};

/// The entry of `key`, function keys among them, or nothing.
std::optional<NamedKey> namedKey(Qt::Key key);

}  // namespace tavrel
