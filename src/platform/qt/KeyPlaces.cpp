#include "platform/qt/KeyPlaces.h"

#include "platform/KeyEvent.h"

#include <algorithm>
#include <array>

namespace tavrel {
namespace {

/// In the order of the kernel's codes.
constexpr std::array keyPlaces{
    KeyPlace{1, 53, Qt::Key_Escape},
    KeyPlace{2, 18, Qt::Key_1},
    KeyPlace{3, 19, Qt::Key_2},
    KeyPlace{4, 20, Qt::Key_3},
    KeyPlace{5, 21, Qt::Key_4},
    KeyPlace{6, 23, Qt::Key_5},
    KeyPlace{7, 22, Qt::Key_6},
    KeyPlace{8, 26, Qt::Key_7},
    KeyPlace{9, 28, Qt::Key_8},
    KeyPlace{10, 25, Qt::Key_9},
    KeyPlace{11, 29, Qt::Key_0},
    KeyPlace{12, 27, Qt::Key_Minus},
    KeyPlace{13, 24, Qt::Key_Equal},
    KeyPlace{14, 51, Qt::Key_Backspace},
    KeyPlace{15, 48, Qt::Key_Tab},
    KeyPlace{16, 12, Qt::Key_Q},
    KeyPlace{17, 13, Qt::Key_W},
    KeyPlace{18, 14, Qt::Key_E},
    KeyPlace{19, 15, Qt::Key_R},
    KeyPlace{20, 17, Qt::Key_T},
    KeyPlace{21, 16, Qt::Key_Y},
    KeyPlace{22, 32, Qt::Key_U},
    KeyPlace{23, 34, Qt::Key_I},
    KeyPlace{24, 31, Qt::Key_O},
    KeyPlace{25, 35, Qt::Key_P},
    KeyPlace{26, 33, Qt::Key_BracketLeft},
    KeyPlace{27, 30, Qt::Key_BracketRight},
    KeyPlace{28, 36, Qt::Key_Return},
    KeyPlace{29, 59, Qt::Key_Control},
    KeyPlace{30, 0, Qt::Key_A},
    KeyPlace{31, 1, Qt::Key_S},
    KeyPlace{32, 2, Qt::Key_D},
    KeyPlace{33, 3, Qt::Key_F},
    KeyPlace{34, 5, Qt::Key_G},
    KeyPlace{35, 4, Qt::Key_H},
    KeyPlace{36, 38, Qt::Key_J},
    KeyPlace{37, 40, Qt::Key_K},
    KeyPlace{38, 37, Qt::Key_L},
    KeyPlace{39, 41, Qt::Key_Semicolon},
    KeyPlace{40, 39, Qt::Key_Apostrophe},
    KeyPlace{41, 50, Qt::Key_QuoteLeft},
    KeyPlace{42, 56, Qt::Key_Shift},
    KeyPlace{43, 42, Qt::Key_Backslash},
    KeyPlace{44, 6, Qt::Key_Z},
    KeyPlace{45, 7, Qt::Key_X},
    KeyPlace{46, 8, Qt::Key_C},
    KeyPlace{47, 9, Qt::Key_V},
    KeyPlace{48, 11, Qt::Key_B},
    KeyPlace{49, 45, Qt::Key_N},
    KeyPlace{50, 46, Qt::Key_M},
    KeyPlace{51, 43, Qt::Key_Comma},
    KeyPlace{52, 47, Qt::Key_Period},
    KeyPlace{53, 44, Qt::Key_Slash},
    KeyPlace{54, 60, Qt::Key_Shift},
    KeyPlace{55, 67, Qt::Key_Asterisk, true},
    KeyPlace{56, 58, Qt::Key_Alt},
    KeyPlace{57, 49, Qt::Key_Space},
    KeyPlace{58, 57, Qt::Key_CapsLock},
    KeyPlace{59, 122, Qt::Key_F1},
    KeyPlace{60, 120, Qt::Key_F2},
    KeyPlace{61, 99, Qt::Key_F3},
    KeyPlace{62, 118, Qt::Key_F4},
    KeyPlace{63, 96, Qt::Key_F5},
    KeyPlace{64, 97, Qt::Key_F6},
    KeyPlace{65, 98, Qt::Key_F7},
    KeyPlace{66, 100, Qt::Key_F8},
    KeyPlace{67, 101, Qt::Key_F9},
    KeyPlace{68, 109, Qt::Key_F10},
    KeyPlace{71, 89, Qt::Key_7, true},
    KeyPlace{72, 91, Qt::Key_8, true},
    KeyPlace{73, 92, Qt::Key_9, true},
    KeyPlace{74, 78, Qt::Key_Minus, true},
    KeyPlace{75, 86, Qt::Key_4, true},
    KeyPlace{76, 87, Qt::Key_5, true},
    KeyPlace{77, 88, Qt::Key_6, true},
    KeyPlace{78, 69, Qt::Key_Plus, true},
    KeyPlace{79, 83, Qt::Key_1, true},
    KeyPlace{80, 84, Qt::Key_2, true},
    KeyPlace{81, 85, Qt::Key_3, true},
    KeyPlace{82, 82, Qt::Key_0, true},
    KeyPlace{83, 65, Qt::Key_Period, true},
    KeyPlace{86, 10, Qt::Key_Less},  // The key that European keyboards have beside left Shift.
    KeyPlace{87, 103, Qt::Key_F11},
    KeyPlace{88, 111, Qt::Key_F12},
    KeyPlace{96, 76, Qt::Key_Enter, true},
    KeyPlace{97, 62, Qt::Key_Control},
    KeyPlace{98, 75, Qt::Key_Slash, true},
    KeyPlace{100, 61, Qt::Key_AltGr},
    KeyPlace{102, 115, Qt::Key_Home},
    KeyPlace{103, 126, Qt::Key_Up},
    KeyPlace{104, 116, Qt::Key_PageUp},
    KeyPlace{105, 123, Qt::Key_Left},
    KeyPlace{106, 124, Qt::Key_Right},
    KeyPlace{107, 119, Qt::Key_End},
    KeyPlace{108, 125, Qt::Key_Down},
    KeyPlace{109, 121, Qt::Key_PageDown},
    KeyPlace{110, 114, Qt::Key_Insert},
    KeyPlace{111, 117, Qt::Key_Delete},
    KeyPlace{117, 81, Qt::Key_Equal, true},
    KeyPlace{125, 55, Qt::Key_Meta},
    KeyPlace{126, 54, Qt::Key_Meta},
    KeyPlace{183, 105, Qt::Key_F13},
    KeyPlace{184, 107, Qt::Key_F14},
    KeyPlace{185, 113, Qt::Key_F15},
    KeyPlace{186, 106, Qt::Key_F16},
    KeyPlace{187, 64, Qt::Key_F17},
    KeyPlace{188, 79, Qt::Key_F18},
    KeyPlace{189, 80, Qt::Key_F19},
    KeyPlace{190, 90, Qt::Key_F20},
};

struct ShiftedKey {
    Qt::Key shifted;
    Qt::Key plain;
};

/// What an American keyboard types with Shift.
constexpr std::array shiftedKeys{
    ShiftedKey{Qt::Key_Exclam, Qt::Key_1},
    ShiftedKey{Qt::Key_At, Qt::Key_2},
    ShiftedKey{Qt::Key_NumberSign, Qt::Key_3},
    ShiftedKey{Qt::Key_Dollar, Qt::Key_4},
    ShiftedKey{Qt::Key_Percent, Qt::Key_5},
    ShiftedKey{Qt::Key_AsciiCircum, Qt::Key_6},
    ShiftedKey{Qt::Key_Ampersand, Qt::Key_7},
    ShiftedKey{Qt::Key_Asterisk, Qt::Key_8},
    ShiftedKey{Qt::Key_ParenLeft, Qt::Key_9},
    ShiftedKey{Qt::Key_ParenRight, Qt::Key_0},
    ShiftedKey{Qt::Key_Underscore, Qt::Key_Minus},
    ShiftedKey{Qt::Key_Plus, Qt::Key_Equal},
    ShiftedKey{Qt::Key_BraceLeft, Qt::Key_BracketLeft},
    ShiftedKey{Qt::Key_BraceRight, Qt::Key_BracketRight},
    ShiftedKey{Qt::Key_Colon, Qt::Key_Semicolon},
    ShiftedKey{Qt::Key_QuoteDbl, Qt::Key_Apostrophe},
    ShiftedKey{Qt::Key_AsciiTilde, Qt::Key_QuoteLeft},
    ShiftedKey{Qt::Key_Bar, Qt::Key_Backslash},
    ShiftedKey{Qt::Key_Less, Qt::Key_Comma},
    ShiftedKey{Qt::Key_Greater, Qt::Key_Period},
    ShiftedKey{Qt::Key_Question, Qt::Key_Slash},
};

constexpr std::array namedKeys{
    NamedKey{Qt::Key_Return, 36, 13, true},
    NamedKey{Qt::Key_Enter, 76, 13, true},
    NamedKey{Qt::Key_Tab, 48, 9, true},
    NamedKey{Qt::Key_Backtab, 48, 9, true},
    NamedKey{Qt::Key_Backspace, 51, 127, true},
    NamedKey{Qt::Key_Escape, 53, 27, true},
    NamedKey{Qt::Key_Up, 126, upArrowCharacter, false},
    NamedKey{Qt::Key_Down, 125, downArrowCharacter, false},
    NamedKey{Qt::Key_Left, 123, leftArrowCharacter, false},
    NamedKey{Qt::Key_Right, 124, rightArrowCharacter, false},
    NamedKey{Qt::Key_Insert, 114, insertCharacter, false},
    NamedKey{Qt::Key_Delete, 117, forwardDeleteCharacter, false},
    NamedKey{Qt::Key_Home, 115, homeCharacter, false},
    NamedKey{Qt::Key_End, 119, endCharacter, false},
    NamedKey{Qt::Key_PageUp, 116, pageUpCharacter, false},
    NamedKey{Qt::Key_PageDown, 121, pageDownCharacter, false},
};

constexpr unsigned scanCodeOffset = 8;  // What X11 and Wayland add to the kernel's codes.

}  // namespace

const KeyPlace* placeOfScanCode(unsigned scanCode)
{
    if (scanCode < scanCodeOffset || scanCode > 0xFFFF)
        return nullptr;
    const int evdevCode = static_cast<int>(scanCode - scanCodeOffset);
    const auto* found = std::ranges::lower_bound(keyPlaces, evdevCode, {}, &KeyPlace::evdevCode);
    return found != keyPlaces.end() && found->evdevCode == evdevCode ? found : nullptr;
}

const KeyPlace* placeOfKey(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const bool isOnKeypad = modifiers.testFlag(Qt::KeypadModifier);
    if (modifiers.testFlag(Qt::ShiftModifier) && !isOnKeypad) {
        const auto* shifted = std::ranges::find(shiftedKeys, key, &ShiftedKey::shifted);
        if (shifted != shiftedKeys.end())
            key = shifted->plain;
    }
    const auto* found = std::ranges::find_if(keyPlaces, [&](const KeyPlace& place) {
        return place.key == key && place.isOnKeypad == isOnKeypad;
    });
    return found != keyPlaces.end() ? found : nullptr;
}

std::optional<NamedKey> namedKey(Qt::Key key)
{
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35) {
        const KeyPlace* place = placeOfKey(key);
        const auto character =
            static_cast<char16_t>(firstFunctionKeyCharacter + (key - Qt::Key_F1));
        return NamedKey{key, place ? place->keyCode : -1, character, false};
    }
    const auto* found = std::ranges::find(namedKeys, key, &NamedKey::key);
    return found != namedKeys.end() ? std::optional(*found) : std::nullopt;
}

}  // namespace tavrel
