#include "terminal/TerminalOutputBuffer.h"

#include <utility>

namespace tavrel {

bool TerminalOutputBuffer::add(std::string_view bytes)
{
    const std::lock_guard lock(mutex_);
    const bool wasEmpty = pieces_.empty();
    while (!bytes.empty()) {
        if (pieces_.empty() || pieces_.back().size() == pieceBytes) {
            pieces_.push_back(std::move(spare_));
            spare_ = {};
        }
        std::string& piece = pieces_.back();
        const std::string_view part = bytes.substr(0, pieceBytes - piece.size());
        piece += part;
        bytes.remove_prefix(part.size());
    }
    return wasEmpty && !pieces_.empty();
}

std::string TerminalOutputBuffer::take(std::string spare)
{
    spare.clear();
    const std::lock_guard lock(mutex_);
    if (spare_.capacity() < spare.capacity())
        spare_ = std::move(spare);
    if (pieces_.empty())
        return {};
    std::string piece = std::move(pieces_.front());
    pieces_.pop_front();
    return piece;
}

bool TerminalOutputBuffer::isEmpty() const
{
    const std::lock_guard lock(mutex_);
    return pieces_.empty();
}

}  // namespace tavrel
