#include "editor/dispatch/KeyTranslator.h"

#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tavrel {
namespace {

struct ModifierWord {
    std::string_view word;
    std::uint64_t bit;
};

/// In canonical order.
constexpr std::array modifierWords{
    ModifierWord{"ctrl", controlModifier},
    ModifierWord{"opt", optionModifier},
    ModifierWord{"cmd", commandModifier},
    ModifierWord{"shift", shiftModifier},
};

struct PositionedKey {
    int keyCode;
    std::string_view word;
};

/// The keys that are read by their place, in the order of their codes.
constexpr std::array positionedKeys{
    PositionedKey{18, "1"},         PositionedKey{19, "2"},         PositionedKey{20, "3"},
    PositionedKey{21, "4"},         PositionedKey{22, "6"},         PositionedKey{23, "5"},
    PositionedKey{24, "="},         PositionedKey{25, "9"},         PositionedKey{26, "7"},
    PositionedKey{27, "-"},         PositionedKey{28, "8"},         PositionedKey{29, "0"},
    PositionedKey{30, "]"},         PositionedKey{33, "["},         PositionedKey{36, "return"},
    PositionedKey{39, "'"},         PositionedKey{41, ";"},         PositionedKey{42, "\\"},
    PositionedKey{43, ","},         PositionedKey{44, "/"},         PositionedKey{47, "."},
    PositionedKey{48, "tab"},       PositionedKey{49, "space"},     PositionedKey{50, "`"},
    PositionedKey{51, "backspace"}, PositionedKey{53, "escape"},    PositionedKey{96, "f5"},
    PositionedKey{97, "f6"},        PositionedKey{98, "f7"},        PositionedKey{100, "f8"},
    PositionedKey{111, "f12"},      PositionedKey{115, "home"},     PositionedKey{116, "pageup"},
    PositionedKey{119, "end"},      PositionedKey{121, "pagedown"}, PositionedKey{123, "left"},
    PositionedKey{124, "right"},    PositionedKey{125, "down"},     PositionedKey{126, "up"},
};

struct NamedMenuKey {
    std::string_view word;
    char16_t character;
};

constexpr std::array namedMenuKeys{
    NamedMenuKey{"escape", 27},
    NamedMenuKey{"return", 13},
    NamedMenuKey{"tab", 9},
    NamedMenuKey{"space", 32},
};

constexpr int functionKeyCount = lastFunctionKeyCharacter - firstFunctionKeyCharacter + 1;

std::string_view wordAtPosition(int keyCode)
{
    const auto* found =
        std::ranges::lower_bound(positionedKeys, keyCode, {}, &PositionedKey::keyCode);
    return found != positionedKeys.end() && found->keyCode == keyCode ? found->word
                                                                      : std::string_view{};
}

/// Bytes that are no UTF-8 come out as U+FFFD.
std::string lowerCased(std::string_view text)
{
    const bool isPlain = std::ranges::all_of(text, [](char unit) {
        return static_cast<unsigned char>(unit) < 0x80 && (unit < 'A' || unit > 'Z');
    });
    return isPlain ? std::string(text) : utf8FromUtf16(lowercased(utf16FromUtf8(text)));
}

std::vector<std::string_view> piecesBetweenPlus(std::string_view text)
{
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find('+', start), text.size());
        if (end > start)
            pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return pieces;
}

const ModifierWord* modifierNamed(std::string_view word)
{
    const auto* found = std::ranges::find(modifierWords, word, &ModifierWord::word);
    return found != modifierWords.end() ? found : nullptr;
}

std::optional<std::string> keyWord(const KeyEvent& event)
{
    if (const std::string_view word = wordAtPosition(event.keyCode); !word.empty())
        return std::string(word);
    const std::u16string& text = event.charactersIgnoringModifiers;
    if (text.empty())
        return std::nullopt;
    if (text.size() == 1 && text[0] >= firstFunctionKeyCharacter &&
        text[0] <= lastFunctionKeyCharacter)
        return "f" + std::to_string(text[0] - firstFunctionKeyCharacter + 1);
    return utf8FromUtf16(text);
}

/// The number of a function key word "f1" to "f19", or 0.
int functionKeyNumber(std::string_view word)
{
    if (word.size() < 2 || word.size() > 3 || word[0] != 'f' || word[1] == '0')
        return 0;
    int number = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data() + 1, end, number);
    const bool isNumber = error == std::errc{} && stop == end && word[1] != '-';
    return isNumber && number <= functionKeyCount ? number : 0;
}

/// The one code unit that a menu shows for a key word, or nothing.
std::optional<char16_t> menuCharacter(std::string_view word)
{
    if (const int number = functionKeyNumber(word))
        return static_cast<char16_t>(firstFunctionKeyCharacter + number - 1);
    const auto* named = std::ranges::find(namedMenuKeys, word, &NamedMenuKey::word);
    if (named != namedMenuKeys.end())
        return named->character;
    constexpr std::size_t longestUnit = 3;  // Bytes of UTF-8 that one code unit takes at most.
    if (word.size() > longestUnit)
        return std::nullopt;
    const std::u16string text = utf16FromUtf8(word);
    return text.size() == 1 ? std::optional<char16_t>(text[0]) : std::nullopt;
}

}  // namespace

std::optional<std::string> KeyTranslator::chordForEvent(const KeyEvent& event)
{
    const std::optional<std::string> key = keyWord(event);
    if (!key)
        return std::nullopt;
    std::string chord;
    for (const ModifierWord& modifier : modifierWords)
        if (event.modifierFlags & modifier.bit)
            chord.append(modifier.word).append("+");
    return lowerCased(chord + *key);
}

std::string KeyTranslator::canonicalChord(std::string_view text)
{
    const std::string lower = lowerCased(text);
    std::vector<std::string_view> pieces = piecesBetweenPlus(lower);
    if (pieces.size() < 2)
        return lower;
    const std::string_view key = pieces.back();
    pieces.pop_back();

    std::string chord;
    for (const ModifierWord& modifier : modifierWords)
        if (std::ranges::find(pieces, modifier.word) != pieces.end())
            chord.append(modifier.word).append("+");
    for (const std::string_view piece : pieces)
        if (!modifierNamed(piece))
            chord.append(piece).append("+");
    return chord.append(key);
}

bool KeyTranslator::endsWithWholeChord(std::string_view text)
{
    // Where a chord begins, a comma is its key; behind a "+" it is too.
    bool insideChord = false;
    bool afterPlus = false;
    for (const char unit : text) {
        const bool isSeparator = unit == ',' && insideChord && !afterPlus;
        insideChord = !isSeparator;
        afterPlus = unit == '+';
    }
    return insideChord && !afterPlus;
}

std::vector<std::string> KeyTranslator::sequenceSplit(std::string_view text)
{
    std::vector<std::string> chords;
    std::size_t start = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool isSeparator = text[index] == ',' && index > start && text[index - 1] != '+';
        if (isSeparator) {
            chords.push_back(canonicalChord(text.substr(start, index - start)));
            start = index + 1;
        }
    }
    if (start < text.size())
        chords.push_back(canonicalChord(text.substr(start)));
    return chords;
}

std::string KeyTranslator::joinedSequence(const std::vector<std::string>& chords)
{
    std::string sequence;
    for (const std::string& chord : chords) {
        if (&chord != &chords.front())
            sequence += ',';
        sequence += chord;
    }
    return sequence;
}

std::optional<MenuShortcut> KeyTranslator::menuShortcut(std::string_view text)
{
    const std::string lower = lowerCased(text);
    std::vector<std::string_view> pieces = piecesBetweenPlus(lower);
    if (pieces.empty())
        return std::nullopt;
    const std::optional<char16_t> key = menuCharacter(pieces.back());
    if (!key)
        return std::nullopt;
    pieces.pop_back();

    std::uint64_t mask = 0;
    for (const std::string_view piece : pieces) {
        const ModifierWord* modifier = modifierNamed(piece);
        if (!modifier)
            return std::nullopt;
        mask |= modifier->bit;
    }
    return MenuShortcut{std::u16string(1, *key), mask};
}

}  // namespace tavrel
