#pragma once

#include "platform/KeyEvent.h"

#include <string_view>

namespace tavrel::probe {

/// The press of one chord, its words in any order: their bits, and the key word as its text.
KeyEvent eventWithChord(std::u16string_view chord);

}  // namespace tavrel::probe
