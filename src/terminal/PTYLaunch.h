#pragma once

#include "platform/Environment.h"
#include "terminal/FileDescriptor.h"

#include <csignal>
#include <string>
#include <sys/types.h>
#include <tl/expected.hpp>
#include <vector>

namespace tavrel {

/// A program to run on a pseudo terminal.
struct PTYCommand {
    std::string executable;              // A path; nothing is searched for.
    std::vector<std::string> arguments;  // Without the program's own name.
    Environment environment;             // All of it: nothing is inherited.
    std::string currentDirectory;        // Where it cannot be entered, the parent's stays.
    int columns = 80;                    // Limited to 1 to 65535, as `rows` is.
    int rows = 24;
};

/// A pseudo terminal. Both sides are closed in children that this process makes.
struct PTYPair {
    FileDescriptor master;  // Never blocks.
    FileDescriptor slave;   // Not open where the system refused it.
    std::string slaveName;
};

/// Opens a pseudo terminal of the given size; the error is a value of <cerrno>.
tl::expected<PTYPair, int> openPTY(int columns, int rows);

/// Tells the terminal behind `master` its size, each number limited to 1 to 65535. The system sends
/// SIGWINCH to the programs in it where the size has changed.
void setPTYSize(int master, int columns, int rows);

/// Starts the program as the leader of a session of its own whose controlling terminal is
/// `slaveName`, with every signal at its default and no descriptor beyond the three standard ones.
/// The error is a value of <cerrno>. A program that cannot be run counts as started: its process
/// exits with 127.
tl::expected<pid_t, int> forkOntoPTY(const PTYCommand& command, const std::string& slaveName);

/// Keeps all signals from the calling thread, and from threads and processes that it makes, until
/// it is destroyed.
class SignalBlock {
public:
    SignalBlock();
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;
    ~SignalBlock();

private:
    sigset_t before_;
};

}  // namespace tavrel
