#pragma once

#include <cstdint>
#include <string_view>

namespace tavrel {

enum class CSONTokenKind : std::uint32_t {
    End = 0,
    LeftBrace = 1,
    RightBrace = 2,
    LeftBracket = 3,
    RightBracket = 4,
    Colon = 5,
    Comma = 6,
    Identifier = 7,
    String = 8,
    Number = 9,
    Boolean = 10,
    Null = 11,
};

/// One token of a CSON text. A value that borrows its text from the input.
struct CSONToken {
    CSONTokenKind kind = CSONTokenKind::End;
    /// A `String` without backslashes, line feeds, carriage returns and tabs: its text can stand in
    /// JSON as it was written.
    bool isPlain = true;
    /// The bytes of a word, a number or a string, as written; a string's without its quotes and
    /// before unescaping. Empty for the other kinds.
    std::string_view text;
    /// Where the first byte stands. Both count from 1, columns in bytes.
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

}  // namespace tavrel
