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

    struct Piece {
        std::string bytes;
        bool hasMore = false;  // There is another piece already.
    };
    /// The oldest bytes, out of the buffer; empty when there are none.
    Piece take();
    /// Gives a piece back for its memory.
    void recycle(std::string bytes);

private:
    mutable std::mutex mutex_;  // Guards what stands below.
    std::deque<std::string> pieces_;
    std::string spare_;  // Empty, with room.
};

}  // namespace tavrel
