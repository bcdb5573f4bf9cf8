#pragma once

#include "platform/CommandKey.h"
#include "platform/KeyEvent.h"

class QKeyEvent;

namespace tavrel {

/// The press as the engines see it.
///
/// Places come from the hardware scan code, and from the toolkit's key where an event has none or
/// an unknown one. A key with a name of its own (an arrow, Return) is the key that the layout makes
/// of it, so exchanged keys work, and the keypad moves the cursor while it is not locked. A Latin
/// letter is the place of that letter, so bindings follow it on every Latin layout; where a layout
/// types another script, a press with a modifier of `KeyModifier` other than shift means the Latin
/// letter printed on that place of an American keyboard.
///
/// AltGr is no modifier: what it types is a character of no place. A dead key and a compose key
/// are no chord; a dead key under a modifier other than shift still has its place.
KeyEvent keyEventFromQt(const QKeyEvent& event, CommandKey commandKey);

/// Whether the key is a modifier or a lock and nothing else.
bool isLoneModifier(const QKeyEvent& event);

}  // namespace tavrel
