#pragma once

#include "config/cson/CSONOutput.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tavrel {

/// Writes what the parser finds as compact JSON text.
class JSONWriter final : public CSONOutput {
public:
    /// `sourceLength` is the length of the CSON text in bytes, the measure for the first buffer.
    explicit JSONWriter(std::size_t sourceLength);

    /// The text, once the parser is done. The writer is used up.
    std::string text();

    void openMap() override { writeBracket('{'); }
    void closeMap() override { *room(1) = '}'; }
    void openArray() override { writeBracket('['); }
    void closeArray() override { *room(1) = ']'; }
    void key(const CSONToken& word) override;
    void string(const CSONToken& word) override;
    void number(std::string_view written) override;
    void boolean(bool value) override { number(value ? "true" : "false"); }
    void null() override { number("null"); }

private:
    /// The place for `count` more bytes, which count as written.
    char* room(std::size_t count);
    void writeBracket(char bracket);
    void writeSeparator();
    void writeQuoted(const CSONToken& word);
    void writeUnescaped(std::string_view text);
    void writeByte(char byte);

    std::string json_;  // A buffer: `length_` bytes are written.
    std::size_t length_ = 0;
};

}  // namespace tavrel
