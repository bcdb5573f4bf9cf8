#pragma once

#include "platform/FileError.h"
#include "terminal/ChildExitEvent.h"
#include "terminal/PTYLaunch.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <tl/expected.hpp>

namespace tavrel {

class PTYChannel;

/// One run of one program on a pseudo terminal.
///
/// Not started, running, ended: there is no way back, a second run is a second object. Its input
/// and output are the business of a thread of its own, "the queue" below, which moves both
/// directions at once, so neither can hold up the other. All functions belong to the main thread;
/// none of them waits for the program.
///
/// The queue outlives the object where it has to: it closes the terminal as soon as it is out of
/// the call that it is in, and stays until the child has ended, so that no child remains a zombie.
class PTYProcess {
public:
    /// Some output, valid for the length of the call. Called on the queue.
    using OutputCallback = std::function<void(std::string_view bytes)>;
    /// The program is gone. Called once, on the queue, or by `terminate` on its own thread.
    using TerminationCallback = std::function<void()>;

    /// The most bytes of one call of `onOutput`.
    static constexpr std::size_t maximumChunkBytes = 65'536;
    /// The most output that is out at `onOutput` without `didConsumeOutput`. The terminal is not
    /// read beyond it, which stops the program that writes.
    static constexpr std::size_t maximumWaitingBytes = std::size_t{1} << 20;

    explicit PTYProcess(ChildExitEvent::Means exitMeans = ChildExitEvent::Means::processDescriptor);
    /// Ends a running program as `terminate` does. No callback is under way afterwards.
    ~PTYProcess();
    PTYProcess(const PTYProcess&) = delete;
    PTYProcess& operator=(const PTYProcess&) = delete;

    /// Either may be empty, and be replaced at any time. Waits for a call that is under way, so
    /// that afterwards nothing of the old one is in use; a callback must not wait for the main
    /// thread.
    void setOnOutput(OutputCallback callback);
    void setOnTermination(TerminationCallback callback);

    /// Starts the program; nothing to do while it runs. The error is the system's. A program that
    /// cannot be executed is no error: it ends at once. Fails after the end.
    tl::expected<void, FileError> start(const PTYCommand& command);

    /// Sends bytes to the program's terminal, behind those sent before, as it takes them. Nothing
    /// happens unless the program runs; what its end leaves over is lost.
    void write(std::string_view bytes);
    /// How many bytes the terminal has not taken yet.
    std::size_t unwrittenBytes() const;

    /// `count` bytes of output have been dealt with and wait no longer. May be called on any
    /// thread, and from inside `onOutput`.
    void didConsumeOutput(std::size_t count);

    /// Tells the terminal its size, each limited to 1 to 65535.
    void setWindowSize(int columns, int rows);

    /// Sends SIGHUP, lets go of the program and calls `onTermination`. A program that ignores the
    /// signal goes on without its terminal. Nothing to do unless it runs.
    void terminate();

    bool isRunning() const;
    /// -1 unless the program runs.
    pid_t childPID() const;
    /// Whether another program than the one started has the terminal. False unless it runs.
    bool shellHasForegroundChild() const;
    /// The working directory of the program, where it runs and the system tells it.
    std::optional<std::filesystem::path> currentWorkingDirectory() const;

private:
    std::shared_ptr<PTYChannel> channel_;  // Shared with the queue.
};

}  // namespace tavrel
