#pragma once

#include "terminal/PTYProcess.h"
#include "terminal/TerminalEmulator.h"
#include "terminal/TerminalOutputBuffer.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace tavrel {

/// A tab of a terminal panel: a screen, and the shell that writes on it. Main thread only.
struct TerminalSession {
    TerminalSession(int columns, int rows) : emulator(columns, rows) {}

    TerminalEmulator emulator;  // Survives the end of the shell.
    /// Replaced after each end of the shell; never null.
    std::unique_ptr<PTYProcess> process = std::make_unique<PTYProcess>();
    /// What `process` has said and `emulator` has not heard. Replaced with `process`.
    std::shared_ptr<TerminalOutputBuffer> output;
    std::function<void()> postFeed;  // Has the main queue feed a piece of `output`.
    /// Of the emulator's replies, since the terminal last took all that was written to it.
    std::size_t unreadReplyBytes = 0;
    bool started = false;  // A shell was started and has not ended.
    std::u16string name;   // The user's title; empty: the default one.
    /// Where the shell is to start; empty: the home folder.
    std::filesystem::path preferredWorkingDirectory;
};

}  // namespace tavrel
