#include "platform/ManualMainQueue.h"

#include <algorithm>

namespace tavrel {

namespace {

std::chrono::nanoseconds nanoseconds(double seconds)
{
    constexpr double most = 1e9;  // 30 years: the sum with any time of the clock still fits.
    if (!(seconds > 0))
        return {};
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::duration<double>(std::min(seconds, most)));
}

}  // namespace

void ManualMainQueue::post(Work work)
{
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(work));
    arrived_.notify_one();
}

ScheduledWork ManualMainQueue::postAfter(double delaySeconds, Work work)
{
    auto pending = std::make_shared<bool>(true);
    delayed_[{clock_.now() + nanoseconds(delaySeconds), nextNumber_++}] = {pending,
                                                                           std::move(work)};
    return ScheduledWork(std::move(pending));
}

void ManualMainQueue::run()
{
    do
        runPosted();
    while (runOneDue());
}

void ManualMainQueue::advance(double seconds)
{
    const TimePoint end = clock_.now() + nanoseconds(seconds);
    for (run(); !delayed_.empty(); run()) {
        const TimePoint next = delayed_.begin()->first.first;
        if (next > end)
            break;
        clock_.advance(std::max(next - clock_.now(), TimePoint::duration::zero()));
    }
    clock_.advance(std::max(end - clock_.now(), TimePoint::duration::zero()));
}

bool ManualMainQueue::runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    for (;;) {
        run();
        if (done())
            return true;
        std::unique_lock lock(mutex_);
        if (!arrived_.wait_until(lock, end, [this] { return !posted_.empty(); }))
            return false;
    }
}

void ManualMainQueue::runPosted()
{
    for (;;) {
        Work work;
        {
            const std::lock_guard lock(mutex_);
            if (posted_.empty())
                return;
            work = std::move(posted_.front());
            posted_.pop_front();
        }
        work();
    }
}

bool ManualMainQueue::runOneDue()
{
    while (!delayed_.empty() && delayed_.begin()->first.first <= clock_.now()) {
        const Delayed next = std::move(delayed_.extract(delayed_.begin()).mapped());
        if (!*next.pending)
            continue;
        *next.pending = false;
        next.work();
        return true;
    }
    return false;
}

}  // namespace tavrel
