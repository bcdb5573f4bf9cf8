#pragma once

#include "terminal/TerminalStyle.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace tavrel {

/// Whether codes are all there are, or others follow.
enum class RenditionEnd { isThere, isOpen };

/// Walks over the codes of a graphic rendition (the final byte `m`) and changes `pen` by them.
/// Gives the number of codes done: all of them, or where the end is open all but those of an
/// extended colour whose meaning hangs on what follows, fewer than five.
std::size_t applyGraphicRendition(std::span<const std::int32_t> codes, RenditionEnd end,
                                  TerminalStyle& pen);

}  // namespace tavrel
