#pragma once

#include <string>
#include <string_view>

namespace tavrel {

/// Whether the program in the terminal asked to be told where pasted text begins and ends.
enum class PasteMode {
    plain,
    bracketed,
};

/// The bytes that pasting `text` sends: each end of line is one carriage return, and in bracketed
/// mode the text stands between the marks of its beginning and end. A mark of the end inside the
/// text is left out there, so that no pasted text can end the paste early and be taken for typing;
/// nothing else is changed. Costs O(length).
std::string pastedBytes(std::u16string_view text, PasteMode mode);

}  // namespace tavrel
