#pragma once

#include <functional>
#include <memory>

namespace tavrel {

/// A piece of work that may still be taken back. Copies stand for the same piece of work.
///
/// Cancelling is allowed at any time, also after the work has run, and also from inside it. Only
/// the main thread may cancel or ask.
class ScheduledWork {
public:
    ScheduledWork() = default;
    explicit ScheduledWork(std::shared_ptr<bool> pending) : pending_(std::move(pending)) {}

    /// The work will not run any more, unless it has begun already.
    void cancel()
    {
        if (pending_)
            *pending_ = false;
        pending_.reset();
    }
    bool isPending() const { return pending_ && *pending_; }

private:
    std::shared_ptr<bool> pending_;  // Shared with the queue, which clears it when the work begins.
};

/// The event loop of the main thread, as the engines see it.
///
/// In the program it is the desktop's event loop; in tests `ManualMainQueue`, cranked by hand.
class MainQueue {
public:
    using Work = std::function<void()>;
    virtual ~MainQueue() = default;

    /// Runs `work` on the main thread, behind what was posted before. May be called on any thread.
    virtual void post(Work work) = 0;

    /// Runs `work` on the main thread once `delaySeconds` have passed, never inside this call.
    /// Main thread only.
    virtual ScheduledWork postAfter(double delaySeconds, Work work) = 0;
};

}  // namespace tavrel
