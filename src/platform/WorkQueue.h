#pragma once

#include <functional>

namespace tavrel {

/// Somewhere to run work off the main thread. May be posted to from any thread.
///
/// A serial queue runs one piece at a time in the order of posting; the global queue runs several
/// at once. Work that has not begun when the queue goes is dropped; the destructor of a queue waits
/// for the piece that is running.
class WorkQueue {
public:
    using Work = std::function<void()>;
    virtual ~WorkQueue() = default;
    virtual void post(Work work) = 0;
};

}  // namespace tavrel
