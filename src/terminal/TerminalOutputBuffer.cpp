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

TerminalOutputBuffer::Piece TerminalOutputBuffer::take()
{
    const std::lock_guard lock(mutex_);
    if (pieces_.empty())
        return {};
    Piece piece{std::move(pieces_.front())};
    pieces_.pop_front();
    piece.hasMore = !pieces_.empty();
    return piece;
}

void TerminalOutputBuffer::recycle(std::string bytes)
{
    bytes.clear();
    const std::lock_guard lock(mutex_);
    spare_.swap(bytes);
}

}  // namespace tavrel
