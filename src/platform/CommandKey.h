#pragma once

namespace tavrel {

/// Which key of a PC keyboard counts as the command modifier.
enum class CommandKey {
    ctrl,   // Ctrl is command, Super is control.
    super,  // Super is command and Ctrl is control, as on keyboards with a command key.
};

}  // namespace tavrel
