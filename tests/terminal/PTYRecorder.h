#pragma once

#include "terminal/PTYProcess.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tavrel {

/// How long a test waits for what must come.
constexpr std::chrono::seconds testPatience{30};

/// Asks `done` again and again until it says yes; false when it does not in time.
inline bool waitUntil(const std::function<bool()>& done)
{
    const auto deadline = std::chrono::steady_clock::now() + testPatience;
    while (!done()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// Runs a program on a pseudo terminal and keeps what it says.
class PTYRecorder {
public:
    enum class Consumption { atOnce, never };

    /// What the queue has reported so far.
    struct Record {
        std::string output;
        std::size_t largestChunk = 0;
        int terminations = 0;
        std::string outputAtTermination;
        std::thread::id outputThread;
        std::thread::id terminationThread;
    };

    explicit PTYRecorder(Consumption consumption = Consumption::atOnce,
                         ChildExitEvent::Means means = ChildExitEvent::Means::processDescriptor)
        : process_(std::make_unique<PTYProcess>(means))
    {
        shared_->process = process_.get();
        process_->setOnOutput([shared = shared_, consumption](std::string_view bytes) {
            const std::lock_guard lock(shared->mutex);
            Record& record = shared->record;
            record.output += bytes;
            record.largestChunk = std::max(record.largestChunk, bytes.size());
            record.outputThread = std::this_thread::get_id();
            if (consumption == Consumption::atOnce && shared->process)
                shared->process->didConsumeOutput(bytes.size());
            shared->changed.notify_all();
        });
        process_->setOnTermination([shared = shared_] {
            const std::lock_guard lock(shared->mutex);
            ++shared->record.terminations;
            shared->record.terminationThread = std::this_thread::get_id();
            shared->record.outputAtTermination = shared->record.output;
            shared->changed.notify_all();
        });
    }
    ~PTYRecorder() { destroyProcess(); }

    PTYProcess& process() { return *process_; }
    void destroyProcess()
    {
        {
            const std::lock_guard lock(shared_->mutex);
            shared_->process = nullptr;
        }
        process_.reset();
    }

    /// Runs `script` with /bin/sh, in an environment of just a search path.
    tl::expected<void, FileError> startShell(const std::string& script,
                                             const std::string& folder = "/", int columns = 80,
                                             int rows = 24)
    {
        PTYCommand command{"/bin/sh", {"-c", script}, {}, folder, columns, rows};
        command.environment.set("PATH", "/usr/bin:/bin");
        return process_->start(command);
    }

    /// Each answers false when it does not come to that in time.
    bool waitForOutput(std::string_view text)
    {
        return waitFor(
            [&](const Record& record) { return record.output.find(text) != std::string::npos; });
    }
    bool waitForEnd()
    {
        return waitFor([](const Record& record) { return record.terminations > 0; });
    }
    bool waitFor(const std::function<bool(const Record&)>& done)
    {
        std::unique_lock lock(shared_->mutex);
        return shared_->changed.wait_for(lock, testPatience, [&] { return done(shared_->record); });
    }

    Record record() const
    {
        const std::lock_guard lock(shared_->mutex);
        return shared_->record;
    }
    std::string output() const { return record().output; }

private:
    struct Shared {
        std::mutex mutex;
        std::condition_variable changed;
        Record record;
        PTYProcess* process = nullptr;  // Null once it goes.
    };

    std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
    std::unique_ptr<PTYProcess> process_;
};

}  // namespace tavrel
