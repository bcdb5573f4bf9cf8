#pragma once

#include "platform/MainQueue.h"

#include <utility>

namespace tavrel {

/// Room for one piece of delayed work of a kind: scheduling takes back the one that waits, and so
/// does the destructor, so that the work may refer to whoever owns the slot. Main thread only.
class ScheduledSlot {
public:
    ScheduledSlot() = default;
    ~ScheduledSlot() { cancel(); }
    ScheduledSlot(const ScheduledSlot&) = delete;
    ScheduledSlot& operator=(const ScheduledSlot&) = delete;

    void schedule(MainQueue& queue, double delaySeconds, MainQueue::Work work)
    {
        cancel();
        pending_ = queue.postAfter(delaySeconds, std::move(work));
    }
    void cancel() { pending_.cancel(); }
    bool isPending() const { return pending_.isPending(); }

private:
    ScheduledWork pending_;
};

}  // namespace tavrel
