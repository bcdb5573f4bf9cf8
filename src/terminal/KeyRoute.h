#pragma once

#include "platform/CommandKey.h"
#include "platform/KeyEvent.h"
#include "terminal/KeyEncoder.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

/// Who is offered a press in the terminal, in this order: the key map with `command`, the shell
/// with `bytes`, the menus with `command`. What is absent is not offered.
struct KeyRoute {
    std::optional<KeyEvent> command;
    std::optional<std::string> bytes;

    bool operator==(const KeyRoute&) const = default;
};

/// The route of a press.
///
/// With `CommandKey::super` the command modifier is held by the command key alone, and such a press
/// never reaches the shell. With `CommandKey::ctrl` Ctrl has two meanings. Ctrl and a key that has
/// a control byte is that byte. Ctrl, Shift and a key is the chord with Shift where `isBound` knows
/// its canonical form, else the chord without it; a sign that is typed with Shift keeps its control
/// byte where neither is bound. Keys with a sequence of their own are offered as chords first and
/// then send their sequence.
KeyRoute keyRoute(const KeyEvent& event, CommandKey commandKey, CursorKeys cursorKeys,
                  const std::function<bool(std::string_view chord)>& isBound);

}  // namespace tavrel
