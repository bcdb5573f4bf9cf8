#include "terminal/KeyEncoder.h"

#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavrel {
namespace {

struct SequenceKey {
    int keyCode;  // The place on the keyboard.
    std::string_view normal;
    std::string_view application;
};

constexpr std::array sequenceKeys{
    SequenceKey{36, "\r", "\r"},             // Return
    SequenceKey{76, "\r", "\r"},             // Enter of the keypad
    SequenceKey{48, "\t", "\t"},             // Tab
    SequenceKey{51, "\x7F", "\x7F"},         // Backspace
    SequenceKey{53, "\x1B", "\x1B"},         // Escape
    SequenceKey{115, "\x1B[H", "\x1B[H"},    // Home
    SequenceKey{116, "\x1B[5~", "\x1B[5~"},  // Page Up
    SequenceKey{117, "\x1B[3~", "\x1B[3~"},  // Delete
    SequenceKey{119, "\x1B[F", "\x1B[F"},    // End
    SequenceKey{121, "\x1B[6~", "\x1B[6~"},  // Page Down
    SequenceKey{123, "\x1B[D", "\x1BOD"},    // Left
    SequenceKey{124, "\x1B[C", "\x1BOC"},    // Right
    SequenceKey{125, "\x1B[B", "\x1BOB"},    // Down
    SequenceKey{126, "\x1B[A", "\x1BOA"},    // Up
};

struct ControlCharacter {
    char32_t character;
    char byte;
};

// Beside the letters, whose bytes follow from their codes.
constexpr std::array controlCharacters{
    ControlCharacter{U'@', '\x00'}, ControlCharacter{U'[', '\x1B'}, ControlCharacter{U'\\', '\x1C'},
    ControlCharacter{U']', '\x1D'}, ControlCharacter{U'^', '\x1E'}, ControlCharacter{U'_', '\x1F'},
    ControlCharacter{U' ', '\x00'},
};

const SequenceKey* sequenceKeyOf(const KeyEvent& event)
{
    const auto* key = std::ranges::find(sequenceKeys, event.keyCode, &SequenceKey::keyCode);
    return key == sequenceKeys.end() ? nullptr : key;
}

}  // namespace

bool isSequenceKey(const KeyEvent& event)
{
    return sequenceKeyOf(event) != nullptr;
}

std::optional<char> controlByte(const KeyEvent& event)
{
    const std::u16string lower = lowercased(event.charactersIgnoringModifiers);
    if (lower.empty())
        return std::nullopt;
    const char32_t first = characterAt(lower, 0).character;
    if (first >= U'a' && first <= U'z')
        return static_cast<char>(first & 31);
    const auto* found = std::ranges::find(controlCharacters, first, &ControlCharacter::character);
    if (found == controlCharacters.end())
        return std::nullopt;
    return found->byte;
}

std::optional<std::string> encodedKey(const KeyEvent& event, CursorKeys cursorKeys)
{
    if (event.modifierFlags & commandModifier)
        return std::nullopt;
    if (const SequenceKey* key = sequenceKeyOf(event))
        return std::string(cursorKeys == CursorKeys::application ? key->application : key->normal);
    if (event.modifierFlags & controlModifier) {
        if (const auto byte = controlByte(event))
            return std::string(1, *byte);
    }
    if (event.characters.empty())
        return std::nullopt;
    return utf8FromUtf16(event.characters);
}

}  // namespace tavrel
