#pragma once

#include "platform/KeyEvent.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// The key that a menu item shows and answers to.
struct MenuShortcut {
    std::u16string key;  // One code unit: the character itself, or a private one of `KeyCharacter`.
    std::uint64_t mask;  // Bits of `KeyModifier`.

    bool operator==(const MenuShortcut&) const = default;
};

/// Turns key presses into chords, and the written forms of a chord into one another.
///
/// A chord is modifier words and a key word joined by "+", all lower case: "ctrl+shift+f6". Its
/// canonical form has the words in the order "ctrl", "opt", "cmd", "shift". A sequence is chords
/// joined by ",". Texts are UTF-8 and may hold anything: what no key can send is never matched.
/// Every operation costs time in proportion to its text.
class KeyTranslator {
public:
    KeyTranslator() = delete;

    /// The canonical chord of a press, or nothing for a key that takes no part in chords. Digits,
    /// punctuation and named keys are read by their place on the keyboard, letters by the layout.
    static std::optional<std::string> chordForEvent(const KeyEvent& event);

    /// The canonical form of one chord. A text that is no chord comes back lower-cased.
    static std::string canonicalChord(std::string_view text);

    /// The canonical chords of a sequence, in order. A comma is a separator only behind a key:
    /// "cmd+," is one chord, and "cmd+k,cmd+," is two.
    static std::vector<std::string> sequenceSplit(std::string_view text);

    /// The chords joined by ",": the one text that stands for their sequence.
    static std::string joinedSequence(const std::vector<std::string>& chords);

    /// Whether a "," that follows `text` in a sequence would end a chord there.
    static bool endsWithWholeChord(std::string_view text);

    /// What a menu shows for a chord, or nothing for one that a menu cannot hold: an empty text, a
    /// word before the key that is no modifier, a key of several characters without a known sign.
    static std::optional<MenuShortcut> menuShortcut(std::string_view text);
};

}  // namespace tavrel
