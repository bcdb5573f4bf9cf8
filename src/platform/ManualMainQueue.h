#pragma once

#include "platform/Clock.h"
#include "platform/MainQueue.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace tavrel {

/// A main queue that a test cranks by hand, over a clock that stands still in between.
///
/// `post` may be called on any thread; everything else belongs to the thread of the test, which is
/// the main thread here. The clock must outlive the queue.
class ManualMainQueue final : public MainQueue {
public:
    explicit ManualMainQueue(SimulatedClock& clock) : clock_(clock) {}

    void post(Work work) override;
    /// A delay that is negative or no number counts as 0.
    ScheduledWork postAfter(double delaySeconds, Work work) override;

    /// Runs what is posted or due now, and what that posts in turn, until nothing is left.
    void run();

    /// Moves the clock on by `seconds`, stopping at every time at which something is due: delayed
    /// work runs in the order of its times (equal ones in the order of posting) and sees its own
    /// time on the clock.
    void advance(double seconds);

    /// Runs what is posted and waits for more from other threads until `done()` says so. Answers
    /// false when it does not within `limit` of real time.
    bool runUntil(const std::function<bool()>& done,
                  std::chrono::milliseconds limit = std::chrono::seconds(30));

private:
    struct Delayed {
        std::shared_ptr<bool> pending;
        Work work;
    };
    using Due = std::pair<TimePoint, std::uint64_t>;  // The number keeps the order of posting.

    void runPosted();
    /// Runs the first delayed work that is due, if there is any.
    bool runOneDue();

    SimulatedClock& clock_;
    std::map<Due, Delayed> delayed_;
    std::uint64_t nextNumber_ = 0;
    std::mutex mutex_;  // Guards what stands below.
    std::condition_variable arrived_;
    std::deque<Work> posted_;
};

}  // namespace tavrel
