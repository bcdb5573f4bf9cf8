#pragma once

#include "terminal/TerminalStyle.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tavrel {

/// What one code does to a pen: the bits of the pen that it leaves, and those that it sets.
struct RenditionChange {
    std::uint64_t kept;
    std::uint64_t set;

    TerminalStyle applied(TerminalStyle pen) const
    {
        return TerminalStyle::fromBits((pen.bits() & kept) | set);
    }
};

/// By code. What lies behind the last one does nothing, and so do 38 and 48 by themselves.
extern const std::array<RenditionChange, 108> renditionChanges;

/// Whether codes are all there are, or others follow.
enum class RenditionEnd { isThere, isOpen };

/// Walks over the codes of a graphic rendition (the final byte `m`) and changes `pen` by them.
/// Gives the number of codes done: all of them, or where the end is open all but those of an
/// extended colour whose meaning hangs on what follows, fewer than five.
std::size_t applyGraphicRendition(std::span<const std::int32_t> codes, RenditionEnd end,
                                  TerminalStyle& pen);

}  // namespace tavrel
