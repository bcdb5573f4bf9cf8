#include "platform/SerialQueue.h"

#include <cassert>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace tavrel {

struct SerialQueue::State {
    explicit State(WorkQueue& target) : queue(target) {}

    WorkQueue& queue;
    std::mutex mutex;  // Guards what stands below.
    std::condition_variable finished;
    std::deque<Work> waiting;
    bool isScheduled = false;  // One call of runOne waits in the other queue, or is running.
    bool isRunning = false;
    bool isClosed = false;
    std::thread::id runner;  // While running.
};

SerialQueue::SerialQueue(WorkQueue& queue, std::string label)
    : label_(std::move(label)), state_(std::make_shared<State>(queue))
{
}

SerialQueue::~SerialQueue()
{
    std::deque<Work> dropped;
    {
        const std::lock_guard lock(state_->mutex);
        assert(!state_->isRunning || state_->runner != std::this_thread::get_id());
        state_->isClosed = true;
        dropped.swap(state_->waiting);
    }
    dropped.clear();  // Without the lock: a piece may own anything.
    std::unique_lock lock(state_->mutex);
    state_->finished.wait(lock, [this] { return !state_->isRunning; });
}

void SerialQueue::post(Work work)
{
    {
        const std::lock_guard lock(state_->mutex);
        state_->waiting.push_back(std::move(work));
        if (std::exchange(state_->isScheduled, true))
            return;
    }
    state_->queue.post([state = state_] { runOne(state); });
}

void SerialQueue::runOne(const std::shared_ptr<State>& state)
{
    Work work;
    {
        const std::lock_guard lock(state->mutex);
        if (state->isClosed || state->waiting.empty()) {
            state->isScheduled = false;
            return;
        }
        work = std::move(state->waiting.front());
        state->waiting.pop_front();
        state->isRunning = true;
        state->runner = std::this_thread::get_id();
    }
    work();
    work = nullptr;  // What it holds goes before anyone who waits for the piece is told.
    bool isMore = false;
    {
        const std::lock_guard lock(state->mutex);
        state->isRunning = false;
        isMore = !state->isClosed && !state->waiting.empty();
        state->isScheduled = isMore;
        state->finished.notify_all();
    }
    // The serial queue may be gone by now, but not the other queue: it waits for this call.
    if (isMore)
        state->queue.post([state] { runOne(state); });
}

}  // namespace tavrel
