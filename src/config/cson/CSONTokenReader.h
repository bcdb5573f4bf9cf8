#pragma once

#include "config/cson/CSONToken.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tavrel {

/// Cuts CSON text into tokens. Borrows the text, which must outlive the reader and its tokens.
class CSONTokenReader {
public:
    explicit CSONTokenReader(std::string_view input) : input_(input) {}

    /// Makes `token` the next one, behind whitespace and comments; `End` at the end of the input
    /// and from then on. Throws `ParserError` on a byte that starts no token and on an unterminated
    /// string.
    void next(CSONToken& token);

private:
    void skipBetweenTokens();
    void skipLineComment();
    void skipBlockComment();
    void readString(CSONToken& token);
    void readNumber(CSONToken& token);
    void readWord(CSONToken& token);
    std::string_view takeRun(std::uint8_t byteClass);
    /// The byte at `position` is a line feed that has been read.
    void countLine(std::size_t position);
    std::uint64_t column() const { return position_ - lineStart_ + 1; }
    [[noreturn]] void failAtUnexpectedCharacter() const;

    std::string_view input_;
    std::size_t position_ = 0;   // The next byte to read.
    std::uint64_t line_ = 1;     // The line of that byte, from 1.
    std::size_t lineStart_ = 0;  // Where that line starts.
};

}  // namespace tavrel
