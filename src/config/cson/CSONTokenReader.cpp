#include "config/cson/CSONTokenReader.h"

#include "config/cson/ParserError.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <array>

namespace tavrel {
namespace {

// What a byte may be part of.
enum ByteClass : std::uint8_t {
    spaceByte = 1,        // Whitespace between tokens, as `isspace` has it in the C locale.
    wordStartByte = 2,    // The first byte of a word.
    wordByte = 4,         // A later byte of a word.
    numberStartByte = 8,  // The first byte of a number.
    numberByte = 16,      // A later byte of a number.
    stringStopByte = 32,  // A byte of a string that its reader has to look at.
};

constexpr void addClass(std::array<std::uint8_t, 256>& table, std::string_view bytes,
                        std::uint8_t byteClass)
{
    for (const char byte : bytes)
        table[static_cast<unsigned char>(byte)] |= byteClass;
}

constexpr std::array<std::uint8_t, 256> byteClasses = [] {
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr std::string_view digits = "0123456789";
    std::array<std::uint8_t, 256> table{};
    addClass(table, " \t\n\v\f\r", spaceByte);
    addClass(table, letters, wordStartByte | wordByte);
    addClass(table, "_$", wordStartByte | wordByte);
    addClass(table, digits, wordByte | numberStartByte | numberByte);
    addClass(table, "-./", wordByte);
    addClass(table, "-", numberStartByte);
    addClass(table, "+-.eE", numberByte);
    addClass(table, "\"\\\n\r\t", stringStopByte);
    return table;
}();

bool isOf(char byte, std::uint8_t byteClass)
{
    return (byteClasses[static_cast<unsigned char>(byte)] & byteClass) != 0;
}

CSONTokenKind kindOfPunctuation(char byte)
{
    switch (byte) {
    case '{':
        return CSONTokenKind::LeftBrace;
    case '}':
        return CSONTokenKind::RightBrace;
    case '[':
        return CSONTokenKind::LeftBracket;
    case ']':
        return CSONTokenKind::RightBracket;
    case ':':
        return CSONTokenKind::Colon;
    case ',':
        return CSONTokenKind::Comma;
    default:
        return CSONTokenKind::End;  // No punctuation.
    }
}

CSONTokenKind kindOfWord(std::string_view word)
{
    if (word.size() != 4 && word.size() != 5)
        return CSONTokenKind::Identifier;
    if (word == "true" || word == "false")
        return CSONTokenKind::Boolean;
    if (word == "null" || word == "none")
        return CSONTokenKind::Null;
    return CSONTokenKind::Identifier;
}

// The character that starts at `position`, or U+FFFD where the bytes there are not UTF-8: a message
// is shown to a person, so it never holds half a character.
std::string characterAt(std::string_view text, std::size_t position)
{
    std::ptrdiff_t end = static_cast<std::ptrdiff_t>(position);
    UChar32 character = 0;
    U8_NEXT(text.data(), end, static_cast<std::ptrdiff_t>(text.size()), character);
    if (character < 0)
        return "\uFFFD";
    return std::string(text.substr(position, static_cast<std::size_t>(end) - position));
}

}  // namespace

void CSONTokenReader::next(CSONToken& token)
{
    skipBetweenTokens();
    token.line = line_;
    token.column = column();
    token.isPlain = true;
    token.text = {};
    if (position_ == input_.size()) {
        token.kind = CSONTokenKind::End;
        return;
    }
    const char byte = input_[position_];
    if (isOf(byte, wordStartByte)) {
        readWord(token);
    } else if (byte == '"') {
        readString(token);
    } else if (isOf(byte, numberStartByte)) {
        readNumber(token);
    } else {
        token.kind = kindOfPunctuation(byte);
        if (token.kind == CSONTokenKind::End)
            failAtUnexpectedCharacter();
        ++position_;
    }
}

void CSONTokenReader::skipBetweenTokens()
{
    while (position_ < input_.size()) {
        const char byte = input_[position_];
        if (isOf(byte, spaceByte)) {
            ++position_;
            if (byte == '\n')
                countLine(position_ - 1);
            continue;
        }
        if (byte != '#' && byte != '/')
            return;
        const char after = position_ + 1 < input_.size() ? input_[position_ + 1] : '\0';
        if (byte == '#' || after == '/')
            skipLineComment();
        else if (after == '*')
            skipBlockComment();
        else
            return;
    }
}

// The line feed is left for the loop of the caller, which counts the line.
void CSONTokenReader::skipLineComment()
{
    position_ = std::min(input_.find('\n', position_), input_.size());
}

// A comment that the input ends in is closed by that end.
void CSONTokenReader::skipBlockComment()
{
    const std::size_t close = input_.find("*/", position_ + 2);
    const std::size_t end = close == std::string_view::npos ? input_.size() : close + 2;
    for (std::size_t feed = input_.find('\n', position_); feed < end;
         feed = input_.find('\n', feed + 1))
        countLine(feed);
    position_ = end;
}

void CSONTokenReader::readString(CSONToken& token)
{
    token.kind = CSONTokenKind::String;
    const std::size_t start = ++position_;
    const std::size_t size = input_.size();
    for (;;) {
        std::size_t stop = position_;
        while (stop < size && !isOf(input_[stop], stringStopByte))
            ++stop;
        position_ = stop;
        if (position_ == size)
            throw ParserError("Unterminated string", line_, column());
        const char byte = input_[position_];
        if (byte == '"')
            break;
        token.isPlain = false;
        // A backslash takes the byte after it, whatever that is.
        if (byte == '\\' && position_ + 1 < size)
            ++position_;
        if (input_[position_] == '\n')
            countLine(position_);
        ++position_;
    }
    token.text = std::string_view(input_.data() + start, position_ - start);
    ++position_;
}

void CSONTokenReader::readNumber(CSONToken& token)
{
    token.kind = CSONTokenKind::Number;
    token.text = takeRun(numberByte);
}

void CSONTokenReader::readWord(CSONToken& token)
{
    token.text = takeRun(wordByte);
    token.kind = kindOfWord(token.text);
}

// The byte at `position_`, whatever it is, and those of `byteClass` behind it.
std::string_view CSONTokenReader::takeRun(std::uint8_t byteClass)
{
    std::size_t end = position_ + 1;
    while (end < input_.size() && isOf(input_[end], byteClass))
        ++end;
    const std::string_view run(input_.data() + position_, end - position_);
    position_ = end;
    return run;
}

void CSONTokenReader::countLine(std::size_t position)
{
    ++line_;
    lineStart_ = position + 1;
}

void CSONTokenReader::failAtUnexpectedCharacter() const
{
    throw ParserError("Unexpected character '" + characterAt(input_, position_) + "'", line_,
                      column());
}

}  // namespace tavrel
