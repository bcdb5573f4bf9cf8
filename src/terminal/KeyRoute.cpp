#include "terminal/KeyRoute.h"

#include "editor/dispatch/KeyTranslator.h"

namespace tavrel {
namespace {

KeyEvent withModifiers(KeyEvent event, std::uint64_t added, std::uint64_t removed)
{
    event.modifierFlags = (event.modifierFlags & ~removed) | added;
    return event;
}

bool isLetterByte(char byte)
{
    return byte >= 1 && byte <= 26;
}

}  // namespace

KeyRoute keyRoute(const KeyEvent& event, CommandKey commandKey, CursorKeys cursorKeys,
                  const std::function<bool(std::string_view chord)>& isBound)
{
    if (!(event.modifierFlags & commandModifier))
        return {event, encodedKey(event, cursorKeys)};
    if (commandKey == CommandKey::super)
        return {event, std::nullopt};

    const KeyEvent control = withModifiers(event, controlModifier, commandModifier);
    if (isSequenceKey(event))
        return {event, encodedKey(control, cursorKeys)};
    const std::optional<char> byte = controlByte(event);
    const auto bytes = [&]() -> std::optional<std::string> {
        if (byte)
            return std::string(1, *byte);
        return std::nullopt;
    };
    constexpr std::uint64_t others = shiftModifier | optionModifier | controlModifier;
    if (!(event.modifierFlags & others))
        return byte ? KeyRoute{std::nullopt, bytes()} : KeyRoute{event, std::nullopt};

    const auto isBoundPress = [&](const KeyEvent& press) {
        const auto chord = KeyTranslator::chordForEvent(press);
        return chord && isBound && isBound(*chord);
    };
    if (isBoundPress(event))
        return {event, std::nullopt};
    if (!(event.modifierFlags & shiftModifier))
        return {event, bytes()};
    const KeyEvent unshifted = withModifiers(event, 0, shiftModifier);
    if (byte && !isLetterByte(*byte) && !isBoundPress(unshifted))
        return {std::nullopt, bytes()};
    return {unshifted, std::nullopt};
}

}  // namespace tavrel
