#pragma once

#include "platform/TextRange.h"

#include <cstddef>
#include <optional>

namespace tavrel {

class TextSnapshot;

/// The address at `offset`, by the same rules by which addresses are coloured. Looks at no more
/// than what stands around the offset without a blank, and at most 64 Ki units to either side.
std::optional<TextRange> linkAtOffset(const TextSnapshot& text, std::size_t offset);

}  // namespace tavrel
