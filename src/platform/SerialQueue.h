#pragma once

#include "platform/WorkQueue.h"

#include <memory>
#include <string>

namespace tavrel {

/// Runs work one piece at a time, in the order of posting, on whichever threads `queue` has.
///
/// Takes one place of `queue` at a time and gives it back after each piece, so that many serial
/// queues share few threads fairly. `queue` must outlive it. The destructor drops what has not
/// begun, waits for the piece that is running, and must not be called by that piece.
class SerialQueue final : public WorkQueue {
public:
    SerialQueue(WorkQueue& queue, std::string label);
    ~SerialQueue() override;

    void post(Work work) override;

    /// What the queue is for, as a person who debugs the program wants to read it.
    const std::string& label() const { return label_; }

private:
    struct State;
    static void runOne(const std::shared_ptr<State>& state);

    std::string label_;
    std::shared_ptr<State> state_;  // Shared with the pieces that wait in the other queue.
};

}  // namespace tavrel
