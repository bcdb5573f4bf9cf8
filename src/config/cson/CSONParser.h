#pragma once

#include "config/cson/CSONOutput.h"
#include "config/cson/CSONToken.h"
#include "config/cson/CSONTokenReader.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tavrel {

/// Hands the one value that a CSON text holds to an output, in one pass over the tokens and always
/// one token ahead.
///
/// Made once per text and dropped when `parse` is done. Containers that are open stand on a stack
/// of one byte each, so the depth of nesting is limited by memory alone. Throws `ParserError`.
class CSONParser {
public:
    /// Borrows both, which must outlive the parser, and reads the first token.
    CSONParser(std::string_view input, CSONOutput& output);

    /// Costs O(bytes).
    void parse();

private:
    // What is open, innermost last: an array, or an object with or without its shorthand.
    enum class Frame : std::uint8_t { array, object, objectWithShorthand };
    // What stands next in the input.
    enum class Next { value, memberOrElement };

    Next parseValue();
    Next parseElement();
    Next parseMember();
    Next parseKeyOrShorthand();
    void advance() { reader_.next(current_); }
    void expect(CSONTokenKind kind, const char* message);
    [[noreturn]] static void fail(const char* message, const CSONToken& at);

    CSONTokenReader reader_;
    CSONOutput& output_;
    CSONToken current_;
    std::vector<Frame> frames_;
};

}  // namespace tavrel
