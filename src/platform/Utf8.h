#pragma once

#include <string>
#include <string_view>

namespace tavrel {

/// The UTF-16 form of `bytes`. Each maximal part of an invalid sequence becomes one U+FFFD, as
/// Unicode recommends; a byte-order mark is kept. Costs O(length), little for ASCII.
std::u16string utf16FromUtf8(std::string_view bytes);

/// The UTF-8 form of `text`. A lone surrogate becomes U+FFFD.
std::string utf8FromUtf16(std::u16string_view text);

/// Whether `bytes` are valid UTF-8 from end to end.
bool isValidUtf8(std::string_view bytes);

}  // namespace tavrel
