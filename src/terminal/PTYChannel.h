#pragma once

#include "terminal/PTYProcess.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace tavrel {

/// What a `PTYProcess` shares with its queue: the descriptors, the child, the bytes on their way.
///
/// Safe for any thread. The mutex is never held while calling out or waiting. A descriptor is
/// closed by the queue alone, when no call of its own uses it, so no byte can reach whatever gets
/// its number next. The child is collected under the mutex or by the queue once `childPID_` is -1,
/// so `childPID_` never is a number that the system may have given away again.
class PTYChannel : public std::enable_shared_from_this<PTYChannel> {
public:
    explicit PTYChannel(ChildExitEvent::Means exitMeans) : exitMeans_(exitMeans) {}

    void setOnOutput(PTYProcess::OutputCallback callback);
    void setOnTermination(PTYProcess::TerminationCallback callback);
    /// Waits until the queue is inside no callback; returns at once on the queue itself.
    void waitForCallback();
    /// The error is a value of <cerrno>.
    tl::expected<void, int> start(const PTYCommand& command);
    void write(std::string_view bytes);
    std::size_t unwrittenBytes() const;
    void didConsumeOutput(std::size_t count);
    void setWindowSize(int columns, int rows);
    void terminate();

    bool isRunning() const;
    pid_t childPID() const;
    bool shellHasForegroundChild() const;
    std::optional<std::filesystem::path> currentWorkingDirectory() const;

private:
    enum class State { notStarted, starting, running, ended };
    enum class ReadOutcome { nothing, some, failed };
    /// What is left to do, outside the mutex, of a run that has ended.
    struct Farewell {
        PTYProcess::TerminationCallback onTermination;
        std::shared_ptr<const PTYProcess::OutputCallback> onOutput;
    };

    tl::expected<void, int> launch(const PTYCommand& command);

    // The queue: everything up to the mutex.
    void runQueue();
    void moveBytes(const ChildExitEvent& exitSource);
    ReadOutcome readOutput();
    void deliver(std::string_view bytes);
    void didCallBack();
    void writeInput();
    void dropInput();
    void closePTY();
    void collectChild();
    /// False once the run has ended. Otherwise takes the input that waits, and says whether there
    /// is room for more output.
    bool prepareTurn(bool& hasRoom);

    /// The teardown, as far as it belongs under the mutex; absent when there is nothing to tear
    /// down. `hangUp` sends SIGHUP first.
    std::optional<Farewell> endRun(bool hangUp);
    void wakeQueue() const;

    const ChildExitEvent::Means exitMeans_;

    // The queue alone uses these once the child runs.
    std::deque<std::string> outgoing_;  // Its first piece lacks `outgoingOffset_` bytes.
    std::size_t outgoingOffset_ = 0;
    std::vector<char> readBuffer_;

    FileDescriptor wakeEvent_;  // Stays the same once the child runs.

    mutable std::mutex mutex_;  // Guards what stands below.
    State state_ = State::notStarted;
    std::shared_ptr<const PTYProcess::OutputCallback> onOutput_;  // Null for none.
    PTYProcess::TerminationCallback onTermination_;
    std::thread::id callingThread_;  // The queue's, while it is inside a callback.
    std::condition_variable didCallBack_;
    PTYPair pty_;  // Only the queue moves it away, and reads its number without the mutex.
    pid_t childPID_ = -1;
    pid_t uncollectedPID_ = -1;  // The child, until it has been waited for.
    std::deque<std::string> pendingInput_;
    std::size_t unwrittenBytes_ = 0;  // Of `pendingInput_` and `outgoing_` together.
    std::size_t waitingBytes_ = 0;    // Output that has not been consumed.
    bool waitsForRoom_ = false;       // The queue wants to be woken once there is room.
};

}  // namespace tavrel
