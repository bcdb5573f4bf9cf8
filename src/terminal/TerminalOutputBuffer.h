#pragma once

#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>

namespace tavrel {

/// Output on its way from the queue of a process to the main thread: what comes while the main
/// thread is busy lies together when it looks again.
///
/// Safe for two threads, one of which adds and the other takes. Whoever fills it sees to a limit.
class TerminalOutputBuffer {
public:
    /// The most bytes that `take` gives.
    static constexpr std::size_t pieceBytes = 65'536;

    /// Answers whether nothing was there before, so that somebody has to be told.
    bool add(std::string_view bytes);

    /// The oldest bytes, out of the buffer; empty when there are none. A string that was taken
    /// before may be given back as `spare`, for its memory.
    std::string take(std::string spare = {});
    bool isEmpty() const;

private:
    mutable std::mutex mutex_;  // Guards what stands below.
    std::deque<std::string> pieces_;
    std::string spare_;  // Empty, with room.
};

}  // namespace tavrel
