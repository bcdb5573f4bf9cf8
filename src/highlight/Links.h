#pragma once

#include "platform/TextRange.h"

#include <string_view>
#include <vector>

namespace tavrel {

/// The addresses in a text that begin with "http://" or "https://", without the punctuation of the
/// sentence around them. In order. Costs O(length).
std::vector<TextRange> linkRanges(std::u16string_view text);

}  // namespace tavrel
