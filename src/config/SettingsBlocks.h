#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

// Surgery on the text of a settings file. The user wrote comments and layout into it, which must
// survive, so none of this goes through the reader of CSON. Texts are UTF-8, locations are bytes;
// searches are literal. Where the braces of a block cannot be matched, the text comes back as it
// is. Every operation costs time in proportion to the text.

/// Where the braces of a block stand.
struct BlockBraces {
    std::size_t open;
    std::size_t close;
};

/// The first "{" at or behind `start` and the brace that closes it. Braces in double-quoted strings
/// do not count, where a backslash hides the next character; those in comments do.
std::optional<BlockBraces> bracesBehind(std::string_view text, std::size_t start);

/// The text with `lines` as the last ones of the block that the first occurrence of `name` leads
/// to, each indented by four blanks.
std::string withLinesInBlock(const std::string& text, std::string_view name,
                             const std::vector<std::string>& lines);

/// The text without the block whose `name` begins a line behind two blanks, as far as it is found
/// behind a line feed. The white space behind the block goes with it up to an empty line.
std::string withoutBlock(const std::string& text, std::string_view name);

/// The text with `blocks`, which end without a line feed, before its section `keys`; else before
/// the brace that ends the text; else at its end.
std::string withBlocks(const std::string& text, std::string_view blocks);

}  // namespace tavrel
