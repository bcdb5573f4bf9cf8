#include "platform/qt/QtMainQueue.h"

#include <QMetaObject>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <utility>

namespace tavrel {

namespace {

std::chrono::milliseconds milliseconds(double seconds)
{
    constexpr double most = 24.0 * 24 * 60 * 60;  // A timer counts milliseconds in 31 bits.
    if (!(seconds > 0))
        return {};
    return std::chrono::milliseconds(
        static_cast<std::int64_t>(std::ceil(std::min(seconds, most) * 1000)));
}

}  // namespace

void QtMainQueue::post(Work work)
{
    QMetaObject::invokeMethod(
        &context_, [work = std::move(work)] { work(); }, Qt::QueuedConnection);
}

ScheduledWork QtMainQueue::postAfter(double delaySeconds, Work work)
{
    auto pending = std::make_shared<bool>(true);
    QTimer::singleShot(milliseconds(delaySeconds), Qt::PreciseTimer, &context_,
                       [pending, work = std::move(work)] {
                           if (std::exchange(*pending, false))
                               work();
                       });
    return ScheduledWork(std::move(pending));
}

}  // namespace tavrel
