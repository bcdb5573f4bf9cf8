#pragma once

#include "platform/CommandKey.h"

#include <QKeySequence>

#include <string_view>

namespace tavrel {

/// A canonical chord as a menu of the desktop shows it and answers to it: "cmd+shift+s" is
/// Ctrl+Shift+S, or Meta+Shift+S where Super is the command key. The key is one character or "f1"
/// to "f19"; for any other text the sequence is empty.
QKeySequence keySequence(std::string_view chord, CommandKey commandKey);

}  // namespace tavrel
