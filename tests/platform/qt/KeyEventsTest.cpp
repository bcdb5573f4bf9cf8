#include "platform/qt/KeyEvents.h"

#include "editor/dispatch/KeyTranslator.h"
#include "platform/qt/KeyPlaces.h"

#include <QKeyEvent>
#include <gtest/gtest.h>
#include <map>
#include <set>

// Presses as the toolkit reports them on X11 and Wayland: a key, modifiers, the scan code of the
// place, the native modifiers, and the text.

namespace tavrel {
namespace {

constexpr quint32 nativeShift = 0x1;
constexpr quint32 nativeControl = 0x4;
constexpr quint32 nativeAlt = 0x8;
constexpr quint32 nativeAltGr = 0x80;

struct Press {
    int key;
    QString text;
    int evdevCode = -8;  // None: the scan code is 0.
    Qt::KeyboardModifiers modifiers = {};
    quint32 nativeModifiers = 0;
};

KeyEvent eventOf(const Press& press, CommandKey commandKey = CommandKey::ctrl)
{
    const QKeyEvent event(QEvent::KeyPress, press.key, press.modifiers,
                          static_cast<quint32>(press.evdevCode + 8), 0, press.nativeModifiers,
                          press.text);
    return keyEventFromQt(event, commandKey);
}

std::optional<std::string> chordOf(const Press& press, CommandKey commandKey = CommandKey::ctrl)
{
    return KeyTranslator::chordForEvent(eventOf(press, commandKey));
}

TEST(KeyEvents, ReadsAmericanLettersByTheirText)
{
    const KeyEvent event = eventOf({Qt::Key_A, u"a"_qs, 30});
    EXPECT_EQ(event, (KeyEvent{0, 0, u"a", u"a"}));
    EXPECT_EQ(eventOf({Qt::Key_A, u"A"_qs, 30, Qt::ShiftModifier, nativeShift}),
              (KeyEvent{0, shiftModifier, u"A", u"A"}));
}

TEST(KeyEvents, ControlCharactersAreTheirLetters)
{
    const Press press{Qt::Key_C, u"\x03"_qs, 46, Qt::ControlModifier, nativeControl};
    EXPECT_EQ(eventOf(press), (KeyEvent{8, commandModifier, u"", u"c"}));
    EXPECT_EQ(eventOf(press, CommandKey::super), (KeyEvent{8, controlModifier, u"\x03", u"c"}));
    EXPECT_EQ(chordOf(press), "cmd+c");
    EXPECT_EQ(chordOf(press, CommandKey::super), "ctrl+c");
}

TEST(KeyEvents, ModifiersFollowTheCommandKey)
{
    const auto chord = [](Qt::KeyboardModifiers modifiers, CommandKey commandKey) {
        return *chordOf({Qt::Key_K, {}, 37, modifiers, nativeControl}, commandKey);
    };
    EXPECT_EQ(chord(Qt::ControlModifier, CommandKey::ctrl), "cmd+k");
    EXPECT_EQ(chord(Qt::MetaModifier, CommandKey::ctrl), "ctrl+k");
    EXPECT_EQ(chord(Qt::AltModifier, CommandKey::ctrl), "opt+k");
    EXPECT_EQ(chord(Qt::ControlModifier, CommandKey::super), "ctrl+k");
    EXPECT_EQ(chord(Qt::MetaModifier, CommandKey::super), "cmd+k");
    EXPECT_EQ(chord(Qt::AltModifier, CommandKey::super), "opt+k");
    const Qt::KeyboardModifiers all =
        Qt::ControlModifier | Qt::MetaModifier | Qt::AltModifier | Qt::ShiftModifier;
    EXPECT_EQ(chord(all, CommandKey::ctrl), "ctrl+opt+cmd+shift+k");
}

TEST(KeyEvents, DigitsAndPunctuationGoByTheirPlace)
{
    EXPECT_EQ(chordOf({Qt::Key_Exclam, u"!"_qs, 2, Qt::ShiftModifier, nativeShift}), "shift+1");
    EXPECT_EQ(chordOf({Qt::Key_Plus, u"+"_qs, 13, Qt::ShiftModifier, nativeShift}), "shift+=");
    EXPECT_EQ(chordOf({Qt::Key_BraceRight, {}, 27, Qt::ShiftModifier | Qt::ControlModifier, 5}),
              "cmd+shift+]");
    EXPECT_EQ(chordOf({Qt::Key_Slash, u"/"_qs, 53, Qt::ControlModifier, nativeControl}), "cmd+/");
    EXPECT_EQ(chordOf({Qt::Key_Space, QString(QChar(0)), 57, Qt::ControlModifier, nativeControl}),
              "cmd+space");
}

TEST(KeyEvents, EveryNamedPlaceOfTheAmericanKeyboardIsItsChord)
{
    const std::map<int, std::string> chords{
        {1, "escape"},     {2, "1"},      {3, "2"},       {4, "3"},          {5, "4"},
        {6, "5"},          {7, "6"},      {8, "7"},       {9, "8"},          {10, "9"},
        {11, "0"},         {12, "-"},     {13, "="},      {14, "backspace"}, {15, "tab"},
        {26, "["},         {27, "]"},     {28, "return"}, {39, ";"},         {40, "'"},
        {41, "`"},         {43, "\\"},    {51, ","},      {52, "."},         {53, "/"},
        {57, "space"},     {59, "f1"},    {60, "f2"},     {61, "f3"},        {62, "f4"},
        {63, "f5"},        {64, "f6"},    {65, "f7"},     {66, "f8"},        {67, "f9"},
        {68, "f10"},       {87, "f11"},   {88, "f12"},    {102, "home"},     {103, "up"},
        {104, "pageup"},   {105, "left"}, {106, "right"}, {107, "end"},      {108, "down"},
        {109, "pagedown"}, {183, "f13"},  {184, "f14"},   {185, "f15"},      {186, "f16"},
        {187, "f17"},      {188, "f18"},  {189, "f19"},
    };
    for (const auto& [evdevCode, chord] : chords) {
        const KeyPlace* place = placeOfScanCode(static_cast<unsigned>(evdevCode + 8));
        ASSERT_NE(place, nullptr) << evdevCode;
        EXPECT_EQ(place->evdevCode, evdevCode);
        EXPECT_EQ(chordOf({place->key, {}, evdevCode}), chord);
        EXPECT_EQ(chordOf({place->key, {}}), chord) << "without a scan code";
    }
}

TEST(KeyEvents, LettersHaveTheirPlaces)
{
    std::set<int> keyCodes;
    for (int key = Qt::Key_A; key <= Qt::Key_Z; ++key) {
        const KeyPlace* place = placeOfKey(static_cast<Qt::Key>(key));
        ASSERT_NE(place, nullptr);
        EXPECT_TRUE(place->isLetter());
        EXPECT_TRUE(keyCodes.insert(place->keyCode).second) << key;
        EXPECT_EQ(chordOf({key, {}, place->evdevCode}),
                  std::string(1, static_cast<char>(key - Qt::Key_A + 'a')));
    }
}

TEST(KeyEvents, NoTwoPlacesShareACode)
{
    std::set<int> keyCodes;
    std::set<int> evdevCodes;
    for (unsigned scanCode = 0; scanCode < 1'000; ++scanCode) {
        if (const KeyPlace* place = placeOfScanCode(scanCode)) {
            EXPECT_TRUE(keyCodes.insert(place->keyCode).second) << place->evdevCode;
            EXPECT_TRUE(evdevCodes.insert(place->evdevCode).second) << place->evdevCode;
        }
    }
    EXPECT_GT(keyCodes.size(), 100U);
}

TEST(KeyEvents, ScanCodesOfNoKeyHaveNoPlace)
{
    for (const unsigned scanCode : {0U, 1U, 7U, 8U, 300U, 0x10000U, 0xFFFFFFFFU})
        EXPECT_EQ(placeOfScanCode(scanCode), nullptr) << scanCode;
}

TEST(KeyEvents, WithoutAScanCodeTheKeyTellsThePlace)
{
    EXPECT_EQ(chordOf({Qt::Key_BracketLeft, {}, -8, Qt::ControlModifier}), "cmd+[");
    EXPECT_EQ(chordOf({Qt::Key_BraceLeft, u"{"_qs, -8, Qt::ShiftModifier}), "shift+[");
    EXPECT_EQ(chordOf({Qt::Key_QuoteDbl, {}, -8, Qt::ControlModifier | Qt::ShiftModifier}),
              "cmd+shift+'");
    EXPECT_EQ(chordOf({Qt::Key_S, {}, -8, Qt::ControlModifier}), "cmd+s");
    EXPECT_EQ(chordOf({Qt::Key_ParenLeft, u"("_qs}), "(");
}

TEST(KeyEvents, AnUnknownScanCodeLeavesThePlaceToTheKey)
{
    EXPECT_EQ(chordOf({Qt::Key_BracketLeft, {}, 240, Qt::ControlModifier, nativeControl}), "cmd+[");
}

TEST(KeyEvents, NamedKeysCarryTheirCharacters)
{
    const auto event = [](Qt::Key key) { return eventOf({key, {}}); };
    EXPECT_EQ(event(Qt::Key_Up), (KeyEvent{126, 0, u"", u"\xF700"}));
    EXPECT_EQ(event(Qt::Key_Down), (KeyEvent{125, 0, u"", u"\xF701"}));
    EXPECT_EQ(event(Qt::Key_Left), (KeyEvent{123, 0, u"", u"\xF702"}));
    EXPECT_EQ(event(Qt::Key_Right), (KeyEvent{124, 0, u"", u"\xF703"}));
    EXPECT_EQ(event(Qt::Key_F1), (KeyEvent{122, 0, u"", u"\xF704"}));
    EXPECT_EQ(event(Qt::Key_F19), (KeyEvent{80, 0, u"", u"\xF716"}));
    EXPECT_EQ(event(Qt::Key_Delete), (KeyEvent{117, 0, u"", u"\xF728"}));
    EXPECT_EQ(event(Qt::Key_Home), (KeyEvent{115, 0, u"", u"\xF729"}));
    EXPECT_EQ(event(Qt::Key_End), (KeyEvent{119, 0, u"", u"\xF72B"}));
    EXPECT_EQ(event(Qt::Key_PageUp), (KeyEvent{116, 0, u"", u"\xF72C"}));
    EXPECT_EQ(event(Qt::Key_PageDown), (KeyEvent{121, 0, u"", u"\xF72D"}));
    EXPECT_EQ(event(Qt::Key_Backspace), (KeyEvent{51, 0, u"\x7F", u"\x7F"}));
    EXPECT_EQ(event(Qt::Key_Return), (KeyEvent{36, 0, u"\r", u"\r"}));
    EXPECT_EQ(event(Qt::Key_Tab), (KeyEvent{48, 0, u"\t", u"\t"}));
    EXPECT_EQ(event(Qt::Key_Escape), (KeyEvent{53, 0, u"\x1B", u"\x1B"}));
    EXPECT_EQ(eventOf({Qt::Key_Enter, u"\r"_qs, 96, Qt::KeypadModifier}),
              (KeyEvent{76, 0, u"\r", u"\r"}));
}

TEST(KeyEvents, ShiftedTabIsTab)
{
    EXPECT_EQ(chordOf({Qt::Key_Backtab, {}, 15, Qt::ShiftModifier, nativeShift}), "shift+tab");
    EXPECT_EQ(chordOf({Qt::Key_Backtab, {}, -8, Qt::ShiftModifier}), "shift+tab");
}

TEST(KeyEvents, ForwardDeleteIsItsCharacter)
{
    EXPECT_EQ(chordOf({Qt::Key_Delete, u"\x7F"_qs, 111}), "\uF728");
}

TEST(KeyEvents, ExchangedKeysAreWhatTheLayoutMakesOfThem)
{
    constexpr int capsLock = 58;
    constexpr int escape = 1;
    EXPECT_EQ(chordOf({Qt::Key_Escape, u"\x1B"_qs, capsLock}), "escape");
    EXPECT_EQ(chordOf({Qt::Key_Backspace, u"\b"_qs, capsLock}), "backspace");
    EXPECT_EQ(chordOf({Qt::Key_CapsLock, {}, escape}), std::nullopt);
}

TEST(KeyEvents, TheKeypadTypesOrMoves)
{
    const auto chord = [](int key, const char16_t* text, int evdevCode) {
        return *chordOf({key, QString::fromUtf16(text), evdevCode, Qt::KeypadModifier});
    };
    EXPECT_EQ(chord(Qt::Key_7, u"7", 71), "7");
    EXPECT_EQ(chord(Qt::Key_Plus, u"+", 78), "+");
    EXPECT_EQ(chord(Qt::Key_Slash, u"/", 98), "/");
    EXPECT_EQ(chord(Qt::Key_Comma, u",", 83), ",");
    EXPECT_EQ(chord(Qt::Key_Home, u"", 71), "home");
    EXPECT_EQ(chord(Qt::Key_Left, u"", 75), "left");
    EXPECT_EQ(chord(Qt::Key_PageDown, u"", 81), "pagedown");
    EXPECT_EQ(eventOf({Qt::Key_5, u"5"_qs, 76, Qt::KeypadModifier}).keyCode, 87);
    EXPECT_EQ(eventOf({Qt::Key_5, u"5"_qs, -8, Qt::KeypadModifier}).keyCode, 87);
}

TEST(KeyEvents, GermanPunctuationKeysKeepTheirPlaces)
{
    constexpr int placeOfUmlautU = 26;
    EXPECT_EQ(chordOf({Qt::Key_Udiaeresis, u"\u00FC"_qs, placeOfUmlautU, Qt::ControlModifier, 4}),
              "cmd+[");
    EXPECT_EQ(chordOf({Qt::Key_Plus, u"+"_qs, 27, Qt::ControlModifier, nativeControl}), "cmd+]");
    EXPECT_EQ(chordOf({Qt::Key_Minus, u"-"_qs, 53, Qt::ControlModifier, nativeControl}), "cmd+/");
    EXPECT_EQ(chordOf({Qt::Key_Z, {}, 21, Qt::ControlModifier, nativeControl}), "cmd+z");
    EXPECT_EQ(chordOf({Qt::Key_Y, {}, 44, Qt::ControlModifier, nativeControl}), "cmd+y");
    EXPECT_EQ(chordOf({Qt::Key_Less, u"<"_qs, 86, Qt::ControlModifier, nativeControl}), "cmd+<");
    EXPECT_EQ(eventOf({Qt::Key_Less, u"<"_qs, 86}).keyCode, 10);
}

TEST(KeyEvents, AltGrIsNoModifier)
{
    const KeyEvent at = eventOf({Qt::Key_At, u"@"_qs, 16, {}, nativeAltGr});
    EXPECT_EQ(at, (KeyEvent{-1, 0, u"@", u"@"}));
    // On the place of 8, which the chord must not name.
    EXPECT_EQ(eventOf({Qt::Key_BracketLeft, u"["_qs, 9, {}, nativeAltGr}),
              (KeyEvent{-1, 0, u"[", u"["}));
    EXPECT_EQ(eventOf({Qt::Key_BraceLeft, u"{"_qs, 8, Qt::GroupSwitchModifier}),
              (KeyEvent{-1, 0, u"{", u"{"}));
    EXPECT_EQ(chordOf({Qt::Key_BracketLeft, {}, 9, Qt::ControlModifier, 0x84}), "cmd+[");
}

TEST(KeyEvents, AltGrAsControlAndAltIsNoModifier)
{
    constexpr Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
    EXPECT_EQ(eventOf({Qt::Key_At, u"@"_qs, 16, both}), (KeyEvent{-1, 0, u"@", u"@"}));
    EXPECT_EQ(eventOf({Qt::Key_BracketLeft, u"["_qs, 9, both}), (KeyEvent{-1, 0, u"[", u"["}));
    EXPECT_EQ(chordOf({Qt::Key_Q, u"q"_qs, 16, both}), "opt+cmd+q");
    EXPECT_EQ(chordOf({Qt::Key_1, u"1"_qs, 2, both, nativeControl | nativeAlt}), "opt+cmd+1");
    // A French 1 is "&" without AltGr; the native modifiers say that both keys are down.
    EXPECT_EQ(chordOf({Qt::Key_Ampersand, u"&"_qs, 2, both, nativeControl | nativeAlt}),
              "opt+cmd+1");
}

TEST(KeyEvents, LettersMoveWithALatinLayout)
{
    // Dvorak has S on the place of the semicolon, and a semicolon on the place of Z.
    EXPECT_EQ(chordOf({Qt::Key_S, {}, 39, Qt::ControlModifier, nativeControl}), "cmd+s");
    EXPECT_EQ(chordOf({Qt::Key_V, {}, 52, Qt::ControlModifier, nativeControl}), "cmd+v");
    EXPECT_EQ(chordOf({Qt::Key_Semicolon, u";"_qs, 44, Qt::ControlModifier, nativeControl}),
              "cmd+;");
    // French M, where the American keyboard has a semicolon.
    EXPECT_EQ(chordOf({Qt::Key_M, {}, 39, Qt::ControlModifier, nativeControl}), "cmd+m");
}

TEST(KeyEvents, ACyrillicLetterTypesItselfAndIsLatinInChords)
{
    const QString letter(QChar(0x0444));
    EXPECT_EQ(eventOf({0x0424, letter, 30}), (KeyEvent{0, 0, u"\u0444", u"\u0444"}));
    EXPECT_EQ(chordOf({0x0424, letter, 30, Qt::ShiftModifier, nativeShift}), "shift+\u0444");
    EXPECT_EQ(chordOf({0x0424, letter, 30, Qt::ControlModifier, nativeControl}), "cmd+a");
    EXPECT_EQ(chordOf({0x0424, {}, 30, Qt::ControlModifier, nativeControl}), "cmd+a");
    EXPECT_EQ(chordOf({Qt::Key_A, u"\x01"_qs, 30, Qt::ControlModifier, nativeControl}), "cmd+a");
    EXPECT_EQ(chordOf({0x0424, letter, 30, Qt::AltModifier, nativeAlt}), "opt+a");
    EXPECT_EQ(chordOf({0x0424, letter, 30, Qt::MetaModifier | Qt::ShiftModifier, 0x41}),
              "ctrl+shift+a");
}

TEST(KeyEvents, ACyrillicLetterOnAPunctuationKeyIsThatKey)
{
    EXPECT_EQ(chordOf({0x0425, QString(QChar(0x0445)), 26, Qt::ControlModifier, nativeControl}),
              "cmd+[");
    EXPECT_EQ(chordOf({0x0411, QString(QChar(0x0431)), 51, Qt::ControlModifier, nativeControl}),
              "cmd+,");
}

TEST(KeyEvents, AGreekLetterIsLatinInChords)
{
    EXPECT_EQ(chordOf({0x03A3, QString(QChar(0x03C3)), 31, Qt::ControlModifier, nativeControl}),
              "cmd+s");
}

TEST(KeyEvents, AnAccentedLatinLetterStays)
{
    EXPECT_EQ(chordOf({Qt::Key_Aring, QString(QChar(0xE5)), 30, Qt::ControlModifier, 4}),
              "cmd+\u00E5");
}

TEST(KeyEvents, DeadAndComposeKeysAreNoChord)
{
    EXPECT_EQ(chordOf({Qt::Key_Dead_Acute, {}, 13}), std::nullopt);
    EXPECT_EQ(chordOf({Qt::Key_Dead_Circumflex, {}, 41, Qt::ShiftModifier}), std::nullopt);
    EXPECT_EQ(chordOf({Qt::Key_Dead_Tilde, {}, 27, {}, nativeAltGr}), std::nullopt);
    EXPECT_EQ(chordOf({Qt::Key_Multi_key, {}, 127}), std::nullopt);
    EXPECT_EQ(chordOf({Qt::Key_Multi_key, {}, 97}), std::nullopt);
}

TEST(KeyEvents, ADeadKeyUnderAModifierIsItsPlace)
{
    EXPECT_EQ(chordOf({Qt::Key_Dead_Acute, {}, 13, Qt::ControlModifier, nativeControl}), "cmd+=");
}

TEST(KeyEvents, OptionTypesNothing)
{
    EXPECT_EQ(eventOf({Qt::Key_B, u"b"_qs, 48, Qt::AltModifier, nativeAlt}),
              (KeyEvent{11, optionModifier, u"", u"b"}));
}

TEST(KeyEvents, LoneModifiersAreNoChord)
{
    for (const Qt::Key key :
         {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Meta, Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Super_L,
          Qt::Key_Super_R, Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock,
          Qt::Key_Mode_switch, Qt::Key_Hyper_L, Qt::Key_Hyper_R}) {
        const QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        EXPECT_TRUE(isLoneModifier(event)) << key;
        EXPECT_EQ(KeyTranslator::chordForEvent(keyEventFromQt(event, CommandKey::ctrl)),
                  std::nullopt);
    }
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_F10, Qt::Key_Tab, Qt::Key_Menu, Qt::Key_Space})
        EXPECT_FALSE(isLoneModifier(QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier))) << key;
}

TEST(KeyEvents, KeysWithoutATextAreNoChord)
{
    EXPECT_EQ(chordOf({Qt::Key_VolumeUp, {}, 115}), std::nullopt);
    EXPECT_EQ(chordOf({Qt::Key_Print, {}, 99}), std::nullopt);
    EXPECT_EQ(chordOf({Qt::Key_unknown, {}, 200}), std::nullopt);
    EXPECT_EQ(chordOf({0, {}, -8}), std::nullopt);
}

TEST(KeyEvents, ATextWithoutAKeyIsItsOwnChord)
{
    EXPECT_EQ(eventOf({0, QString::fromUcs4(U"\U0001F600")}),
              (KeyEvent{-1, 0, u"\U0001F600", u"\U0001F600"}));
}

}  // namespace
}  // namespace tavrel
