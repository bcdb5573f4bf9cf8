#pragma once

#include "platform/Environment.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

namespace tavrel {

/// A program to run, and how much it may take.
struct ChildProcess {
    std::string program;                 // An absolute path; nothing is searched for.
    std::vector<std::string> arguments;  // Without the program's own name. No shell sees them.
    Environment environment;             // All of it: nothing is inherited.
    std::string workingFolder = "/";     // Absolute.
    std::size_t maximumOutputBytes = std::size_t{64} << 20;
    std::chrono::milliseconds timeLimit = std::chrono::seconds(10);
};

/// What a program that ended by itself left behind.
struct ChildProcessResult {
    int exitStatus = 0;  // What it exited with; 128 and the signal's number where one ended it.
    std::string output;  // All that it wrote to its standard output.
};

struct ChildProcessError {
    enum class Reason {
        cannotLaunch,    // Not an absolute path, no such program or folder, no more processes.
        timeLimit,       // It, or a program that it left behind with its output, ran too long.
        outputTooLarge,  // It wrote more than was allowed.
        lost,            // Reading or waiting failed; its exit status is not known.
    };
    Reason reason = Reason::cannotLaunch;
    int code = 0;  // A value of <cerrno> where the system gave one.
};

/// Runs a program to its end and collects its standard output. Blocks: not for the main thread.
///
/// The program reads nothing (/dev/null), its standard error goes nowhere, it has no other open
/// files of ours, no blocked or ignored signals, and a process group of its own, which is killed as
/// a whole when a limit is passed. May be called on any thread, by several at once.
tl::expected<ChildProcessResult, ChildProcessError> run(const ChildProcess& child);

}  // namespace tavrel
