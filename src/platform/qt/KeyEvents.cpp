#include "platform/qt/KeyEvents.h"

#include "platform/qt/KeyPlaces.h"

#include <QChar>
#include <QKeyEvent>
#include <QString>
#include <algorithm>
#include <array>

namespace tavrel {
namespace {

/// The modifiers under which a key is a chord and types no text.
constexpr std::uint64_t chordModifiers = controlModifier | optionModifier | commandModifier;

/// The bit of native modifier states that keyboard maps give to AltGr: the fifth free modifier.
constexpr quint32 nativeAltGr = 0x80;

constexpr std::array loneModifierKeys{
    Qt::Key_Shift,    Qt::Key_Control, Qt::Key_Meta,       Qt::Key_Alt,     Qt::Key_AltGr,
    Qt::Key_Super_L,  Qt::Key_Super_R, Qt::Key_Hyper_L,    Qt::Key_Hyper_R, Qt::Key_Mode_switch,
    Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock,
};

Qt::Key keyOf(const QKeyEvent& event)
{
    return static_cast<Qt::Key>(event.key());
}

bool isDeadKey(Qt::Key key)
{
    return key >= Qt::Key_Dead_Grave && key <= Qt::Key_Dead_Longsolidusoverlay;
}

/// Keys of the toolkit are characters below its named keys, which begin with Escape.
bool isCharacterKey(Qt::Key key)
{
    return key >= Qt::Key_Space && key < Qt::Key_Escape;
}

bool isPrintable(const QString& text)
{
    return !text.isEmpty() && text.front().category() != QChar::Other_Control;
}

const KeyPlace* placeOfEvent(const QKeyEvent& event)
{
    const KeyPlace* place = placeOfScanCode(event.nativeScanCode());
    return place ? place : placeOfKey(keyOf(event), event.modifiers());
}

/// Some systems report AltGr as Ctrl and Alt together. There it is told by a sign that the key
/// does not have on an American keyboard. Where native modifiers are reported this is not so.
bool isAltGrAsCtrlAlt(const QKeyEvent& event)
{
    constexpr Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
    const QString text = event.text();
    if (event.nativeModifiers() != 0 || (event.modifiers() & both) != both || !isPrintable(text) ||
        text.front().isLetterOrNumber() || text.front().isSpace())
        return false;
    const KeyPlace* place = placeOfEvent(event);
    return !place || place->isLetter() || (place->isDigit() && !place->isOnKeypad);
}

bool isAltGr(const QKeyEvent& event)
{
    return event.modifiers().testFlag(Qt::GroupSwitchModifier) ||
           (event.nativeModifiers() & nativeAltGr) != 0;
}

std::uint64_t flagsOf(Qt::KeyboardModifiers modifiers, CommandKey commandKey)
{
    const bool ctrlIsCommand = commandKey == CommandKey::ctrl;
    std::uint64_t flags = 0;
    if (modifiers.testFlag(Qt::ShiftModifier))
        flags |= shiftModifier;
    if (modifiers.testFlag(Qt::AltModifier))
        flags |= optionModifier;
    if (modifiers.testFlag(Qt::ControlModifier))
        flags |= ctrlIsCommand ? commandModifier : controlModifier;
    if (modifiers.testFlag(Qt::MetaModifier))
        flags |= ctrlIsCommand ? controlModifier : commandModifier;
    return flags;
}

QString inCase(const QString& text, Qt::KeyboardModifiers modifiers)
{
    return modifiers.testFlag(Qt::ShiftModifier) ? text.toUpper() : text.toLower();
}

/// The text of the key by the layout. Under Ctrl the event's own text may be a control character;
/// then the toolkit's key tells the character, letters in upper case.
QString layoutText(const QKeyEvent& event)
{
    if (isPrintable(event.text()))
        return event.text();
    if (!isCharacterKey(keyOf(event)))
        return {};
    const auto character = static_cast<char32_t>(event.key());
    return inCase(QString::fromUcs4(&character, 1), event.modifiers());
}

/// Whether the text is a letter that no binding names: one of another script than Latin.
bool isForeignLetter(const QString& text)
{
    const QList<uint> characters = text.toUcs4();
    return characters.size() == 1 &&
           (QChar::isLetter(characters[0]) || QChar::isMark(characters[0])) &&
           QChar::script(characters[0]) != QChar::Script_Latin;
}

bool isAsciiLetter(const QString& text)
{
    return text.size() == 1 && text[0] < QChar(0x80) && text[0].isLetter();
}

KeyEvent eventOfNamedKey(const NamedKey& named, std::uint64_t flags)
{
    KeyEvent result{named.keyCode, flags, {}, {named.character}};
    if (named.typesCharacter && !(flags & (controlModifier | commandModifier)))
        result.characters = result.charactersIgnoringModifiers;
    return result;
}

KeyEvent eventOfPlace(const KeyPlace* place, std::uint64_t flags)
{
    return {place ? place->keyCode : -1, flags, {}, {}};
}

KeyEvent eventOfCharacterKey(const QKeyEvent& event, std::uint64_t flags)
{
    QString text = layoutText(event);
    const KeyPlace* place = placeOfEvent(event);
    if ((flags & chordModifiers) && place && place->isLetter() && isForeignLetter(text))
        text = inCase(QChar(place->key), event.modifiers());
    // A letter that the layout has where others have a comma is that letter in every chord.
    if (isAsciiLetter(text) && !(place && place->isLetter()))
        place = placeOfKey(static_cast<Qt::Key>(text[0].toUpper().unicode()));

    KeyEvent result = eventOfPlace(place, flags);
    result.charactersIgnoringModifiers = text.toStdU16String();
    if (!(flags & chordModifiers))
        result.characters = event.text().toStdU16String();
    else if ((flags & controlModifier) && !isPrintable(event.text()))
        result.characters = event.text().toStdU16String();
    return result;
}

/// What AltGr types is a character without a place.
KeyEvent eventOfAltGr(const QKeyEvent& event, std::uint64_t flags)
{
    const std::u16string text = layoutText(event).toStdU16String();
    return {-1, flags, (flags & chordModifiers) ? std::u16string() : text, text};
}

}  // namespace

KeyEvent keyEventFromQt(const QKeyEvent& event, CommandKey commandKey)
{
    const Qt::Key key = keyOf(event);
    const std::uint64_t flags = flagsOf(event.modifiers(), commandKey);
    if (const std::optional<NamedKey> named = namedKey(key))
        return eventOfNamedKey(*named, flags);
    if (isLoneModifier(event))
        return eventOfPlace(placeOfKey(key), flags);
    if (isDeadKey(key))
        return eventOfPlace((flags & chordModifiers) ? placeOfEvent(event) : nullptr, flags);
    if (!isCharacterKey(key) && !isPrintable(event.text()))
        return eventOfPlace(nullptr, flags);
    if (isAltGrAsCtrlAlt(event))
        return eventOfAltGr(event, flags & shiftModifier);
    if (isAltGr(event))
        return eventOfAltGr(event, flags);
    return eventOfCharacterKey(event, flags);
}

bool isLoneModifier(const QKeyEvent& event)
{
    return std::ranges::find(loneModifierKeys, keyOf(event)) != loneModifierKeys.end();
}

}  // namespace tavrel
