#pragma once

#include "editor/TextEdit.h"

#include <optional>

namespace tavrel {

class TextSnapshot;

/// One edit that leads from `before` to `after`: what is alike at both ends is left out. Absent
/// where the texts are the same.
///
/// Stretches with U+FFFD count as different, since each may stand for other bytes of a file. Costs
/// O(length), at the speed of comparing memory.
std::optional<TextEdit> differingStretch(const TextSnapshot& before, const TextSnapshot& after);

}  // namespace tavrel
