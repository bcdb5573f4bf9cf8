#pragma once

#include "editor/TextSnapshot.h"

#include <functional>
#include <string>
#include <string_view>

namespace tavrel {

/// Calls `visit` with the UTF-8 form of `text`, in pieces of at most 64 KiB and in order, until it
/// answers false; answers false then. A piece is valid for the length of the call.
///
/// A U+FFFD that stands for raw bytes is written as those, a lone surrogate as U+FFFD.
bool forEachUtf8Chunk(const TextSnapshot& text,
                      const std::function<bool(std::string_view bytes)>& visit);

/// All of it in one string.
std::string encodedText(const TextSnapshot& text);

}  // namespace tavrel
