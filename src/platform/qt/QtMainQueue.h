#pragma once

#include "platform/MainQueue.h"

#include <QObject>

namespace tavrel {

/// The main queue over the desktop's event loop.
///
/// Made and destroyed on the thread of the event loop; what has not run by then is dropped. Nobody
/// may post any more while it goes.
class QtMainQueue final : public MainQueue {
public:
    void post(Work work) override;
    /// Exact to a millisecond, and never early. A delay that is negative or no number counts as 0,
    /// one of more than 24 days as 24 days.
    ScheduledWork postAfter(double delaySeconds, Work work) override;

private:
    QObject context_;  // The receiver of the work: what waits goes with it.
};

}  // namespace tavrel
