#include "platform/ThreadPool.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tavrel {

ThreadPool::ThreadPool(std::size_t maximumThreads)
    : maximumThreads_(std::max<std::size_t>(maximumThreads, 1))
{
}

ThreadPool::~ThreadPool()
{
    std::deque<Work> dropped;
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
        dropped.swap(waiting_);
    }
    dropped.clear();  // Without the lock: a piece may own anything.
    changed_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void ThreadPool::post(Work work)
{
    {
        const std::lock_guard lock(mutex_);
        if (closing_)
            return;
        waiting_.push_back(std::move(work));
        startThreadIfNeeded();
    }
    changed_.notify_one();
}

std::size_t ThreadPool::threadCount() const
{
    const std::lock_guard lock(mutex_);
    return threads_.size();
}

void ThreadPool::startThreadIfNeeded()
{
    if (waiting_.size() <= idleThreads_ || threads_.size() == maximumThreads_)
        return;
    try {
        threads_.emplace_back([this] { runThread(); });
    } catch (const std::system_error&) {
        // The system has no thread for us now: those that there are do the work, and the next
        // piece tries again.
    }
}

void ThreadPool::runThread()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idleThreads_;
        changed_.wait(lock, [this] { return closing_ || !waiting_.empty(); });
        --idleThreads_;
        if (closing_)
            return;
        Work work = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        work();
        work = nullptr;  // What it holds goes before the lock is taken, too.
        lock.lock();
    }
}

}  // namespace tavrel
