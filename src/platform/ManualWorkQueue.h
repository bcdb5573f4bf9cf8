#pragma once

#include "platform/WorkQueue.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace tavrel {

/// A work queue that a test cranks by hand, on the thread of the test.
class ManualWorkQueue final : public WorkQueue {
public:
    void post(Work work) override { waiting_.push_back(std::move(work)); }

    bool isIdle() const { return waiting_.empty(); }
    std::size_t waitingCount() const { return waiting_.size(); }
    /// Runs the piece that has waited longest; false where there is none.
    bool runOne()
    {
        if (waiting_.empty())
            return false;
        const Work work = std::move(waiting_.front());
        waiting_.pop_front();
        work();
        return true;
    }

private:
    std::deque<Work> waiting_;
};

}  // namespace tavrel
