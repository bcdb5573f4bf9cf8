#pragma once

#include "config/cson/CSONToken.h"
#include "config/cson/CSONTokenReader.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// Turns CSON text into compact JSON text in one pass over its tokens, always one token ahead.
///
/// Made once per text and dropped when `parse` is done. Containers that are open stand on a stack
/// of one byte each, so the depth of nesting is limited by memory alone. Throws `ParserError`.
class CSONParser {
public:
    /// Borrows `input`, which must outlive the parser, and reads the first token.
    explicit CSONParser(std::string_view input);

    /// The JSON text of the one value that the input holds. Costs O(bytes).
    std::string parse();

private:
    // What is open, innermost last: an array is 0, an object `object`, with the two marks below.
    using Frame = std::uint8_t;
    static constexpr Frame object = 1;
    static constexpr Frame shorthandUsed = 2;
    static constexpr Frame hasMembers = 4;

    // What stands next in the input.
    enum class Next { value, memberOrElement };

    Next parseValue();
    Next parseElement();
    Next parseMember();
    Next parseKeyOrShorthand();
    void advance() { current_ = reader_.next(); }
    void open(Frame frame, char bracket);
    void close(CSONTokenKind bracket, const char* message, char written);
    void writeSeparator();
    void writeQuoted(const CSONToken& token);
    void writeUnescaped(std::string_view text);
    void writeByte(char byte);
    [[noreturn]] static void fail(const char* message, const CSONToken& at);

    CSONTokenReader reader_;
    CSONToken current_;
    std::vector<Frame> frames_;
    std::string json_;
};

}  // namespace tavrel
