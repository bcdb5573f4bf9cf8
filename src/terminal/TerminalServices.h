#pragma once

#include "platform/Environment.h"

#include <filesystem>
#include <string>

namespace tavrel {

class MainQueue;
class PreferencesStore;

/// What a terminal panel works with. It borrows the references, which must outlive it.
struct TerminalServices {
    MainQueue& mainQueue;
    const PreferencesStore& preferences;
    Environment environment;           // The application's own; shells get it with additions.
    std::filesystem::path homeFolder;  // Where shells start unless told otherwise.
    std::string loginShell = {};       // The user's, as the system has it; may be empty.
    /// The folder with our own description of the terminal; empty: the system's is used.
    std::filesystem::path terminfoFolder = {};
};

}  // namespace tavrel
