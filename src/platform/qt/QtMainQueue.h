#pragma once

#include "platform/MainQueue.h"

#include <QObject>

namespace tavrel {

/// The main thread's event loop as a queue. To be made on the main thread, once the toolkit's
/// application object exists; what is still waiting when it goes is dropped.
class QtMainQueue final : public MainQueue {
public:
    QtMainQueue() = default;
    QtMainQueue(const QtMainQueue&) = delete;
    QtMainQueue& operator=(const QtMainQueue&) = delete;

    void post(Work work) override;
    ScheduledWork postAfter(double delaySeconds, Work work) override;

private:
    QObject context_;  // Lives on the main thread; what was posted to it dies with it.
};

}  // namespace tavrel
