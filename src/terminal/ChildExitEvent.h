#pragma once

#include "terminal/FileDescriptor.h"

#include <memory>
#include <sys/types.h>

namespace tavrel {

/// The end of a child process as a descriptor to poll. Collecting the child stays with its owner.
class ChildExitEvent {
public:
    /// How the end becomes known. `waitingThread` is for systems without process descriptors, and
    /// is what `processDescriptor` falls back to there.
    enum class Means { processDescriptor, waitingThread };

    /// `child` must be a child of this process that has not been collected. Without the resources
    /// for it, `descriptor()` is negative.
    ChildExitEvent(pid_t child, Means means);

    /// Readable from the end of the child on.
    int descriptor() const { return descriptor_ ? descriptor_->number() : -1; }

private:
    void startWaitingThread(pid_t child);

    std::shared_ptr<FileDescriptor> descriptor_;  // Shared with the waiting thread.
};

}  // namespace tavrel
