#include "editor/SnapshotSource.h"

#include <algorithm>

namespace tavrel {
namespace {

/// Units before the one that is asked for. Scanners look back by a few at most.
constexpr std::size_t lookBack = 64;

}  // namespace

TextWindow SnapshotSource::windowAt(std::size_t location, std::span<char16_t> scratch) const
{
    const std::size_t start = location - std::min({location, lookBack, scratch.size() / 2});
    char16_t* end = scratch.data();
    text_.forEachPiece({start, scratch.size()}, [&](const TextPiece& piece) {
        end = piece.narrow ? std::copy_n(piece.narrow, piece.length, end)
                           : std::copy_n(piece.wide, piece.length, end);
        return true;
    });
    return {scratch.data(), start, static_cast<std::size_t>(end - scratch.data())};
}

}  // namespace tavrel
