#pragma once

#include <cstdint>
#include <string>

namespace tavrel {

/// The bits of `KeyEvent::modifierFlags`, and of the mask of a menu shortcut. Other bits may be
/// set in an event and mean nothing to the engines.
enum KeyModifier : std::uint64_t {
    shiftModifier = 0x20000,
    controlModifier = 0x40000,
    optionModifier = 0x80000,
    commandModifier = 0x100000,
};

/// The private characters that stand for keys without a text of their own.
enum KeyCharacter : char16_t {
    upArrowCharacter = 63232,
    downArrowCharacter = 63233,
    leftArrowCharacter = 63234,
    rightArrowCharacter = 63235,
    firstFunctionKeyCharacter = 63236,  // F1; the others follow in order.
    lastFunctionKeyCharacter = 63254,   // F19.
    insertCharacter = 63271,
    forwardDeleteCharacter = 63272,
    homeCharacter = 63273,
    endCharacter = 63275,
    pageUpCharacter = 63276,
    pageDownCharacter = 63277,
};

/// The press of a key, as the engines see it.
///
/// A value. `keyCode` is a place on the keyboard, whatever the layout: 0 is the key of "A" on an
/// American keyboard, 49 the space bar, 126 the up arrow. -1 is a key without a known place.
struct KeyEvent {
    int keyCode = -1;
    std::uint64_t modifierFlags = 0;

    /// The text that the press types, a control character where the key types one; empty for a key
    /// that types none, such as an arrow.
    std::u16string characters;

    /// The text of the key by the layout with no modifier applied but shift, or a private character
    /// of `KeyCharacter`; empty for a key that is none, such as a modifier or a dead key.
    std::u16string charactersIgnoringModifiers;

    bool operator==(const KeyEvent&) const = default;
};

}  // namespace tavrel
