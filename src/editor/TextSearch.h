#pragma once

#include "editor/TextSnapshot.h"
#include "platform/TextRange.h"

#include <functional>
#include <optional>
#include <string_view>

namespace tavrel {

/// The first place of `needle` that lies whole in `part`, compared unit by unit. An empty needle is
/// nowhere. Costs O(distance), with no copy of the text.
std::optional<TextRange> firstMatch(const TextSnapshot& text, std::u16string_view needle,
                                    TextRange part);

/// Calls `visit` with each place of `needle` in `part` from left to right, until it answers false.
/// The search goes on behind each place, so places do not overlap.
void forEachMatch(const TextSnapshot& text, std::u16string_view needle, TextRange part,
                  const std::function<bool(TextRange place)>& visit);

}  // namespace tavrel
