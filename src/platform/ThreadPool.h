#pragma once

#include "platform/WorkQueue.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace tavrel {

/// The global queue: runs up to a number of pieces of work at once, each on a thread of its own.
///
/// No thread is started before there is work for it; started threads stay until the pool goes. The
/// destructor drops what has not begun and waits for what is running. It must run on none of the
/// pool's own threads.
class ThreadPool final : public WorkQueue {
public:
    /// At least one thread.
    explicit ThreadPool(std::size_t maximumThreads);
    ~ThreadPool() override;

    void post(Work work) override;

    /// How many have been started so far.
    std::size_t threadCount() const;

private:
    void runThread();
    /// Starts one more thread if all are busy and there may be more. `mutex_` is held.
    void startThreadIfNeeded();

    const std::size_t maximumThreads_;
    mutable std::mutex mutex_;  // Guards what stands below.
    std::condition_variable changed_;
    std::deque<Work> waiting_;
    std::vector<std::thread> threads_;
    std::size_t idleThreads_ = 0;
    bool closing_ = false;
};

}  // namespace tavrel
