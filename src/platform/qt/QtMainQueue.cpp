#include "platform/qt/QtMainQueue.h"

#include <QMetaObject>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

constexpr double longestDelaySeconds = 24 * 3600;

}  // namespace

void QtMainQueue::post(Work work)
{
    QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
}

ScheduledWork QtMainQueue::postAfter(double delaySeconds, Work work)
{
    const double seconds =
        delaySeconds > 0 ? std::min(delaySeconds, longestDelaySeconds) : 0.0;  // NaN counts as 0.
    const auto pending = std::make_shared<bool>(true);
    QTimer::singleShot(static_cast<int>(std::ceil(seconds * 1000)), Qt::PreciseTimer, &context_,
                       [pending, work = std::move(work)] {
                           if (!*pending)
                               return;
                           *pending = false;
                           work();
                       });
    return ScheduledWork(pending);
}

}  // namespace tavrel
