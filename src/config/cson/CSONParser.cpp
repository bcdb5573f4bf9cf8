#include "config/cson/CSONParser.h"

#include "config/cson/ParserError.h"

#include <algorithm>
#include <utility>

namespace tavrel {

CSONParser::CSONParser(std::string_view input) : reader_(input)
{
    // Structure comes from the same bytes in both notations; what JSON adds are mostly the quotes
    // and commas that stand where the source had whitespace.
    json_.reserve(input.size() + input.size() / 4 + 16);
    advance();
}

std::string CSONParser::parse()
{
    Next next = Next::value;
    for (;;) {
        if (next == Next::value)
            next = parseValue();
        else if (frames_.empty())
            break;
        else
            next = (frames_.back() & object) != 0 ? parseMember() : parseElement();
    }
    if (current_.kind != CSONTokenKind::End)
        fail("Expected end of input", current_);
    return std::move(json_);
}

CSONParser::Next CSONParser::parseValue()
{
    switch (current_.kind) {
    case CSONTokenKind::LeftBrace:
        open(object, '{');
        break;
    case CSONTokenKind::LeftBracket:
        open(0, '[');
        break;
    case CSONTokenKind::Identifier:
    case CSONTokenKind::String:
        writeQuoted(current_);
        break;
    case CSONTokenKind::Number:
    case CSONTokenKind::Boolean:
        json_.append(current_.text);
        break;
    case CSONTokenKind::Null:
        json_.append("null");
        break;
    default:
        fail("Expected value", current_);
    }
    advance();
    return Next::memberOrElement;
}

CSONParser::Next CSONParser::parseElement()
{
    switch (current_.kind) {
    case CSONTokenKind::Comma:
        advance();
        return Next::memberOrElement;
    case CSONTokenKind::End:
    case CSONTokenKind::RightBracket:
        close(CSONTokenKind::RightBracket, "Expected ']'", ']');
        return Next::memberOrElement;
    default:
        writeSeparator();
        return Next::value;
    }
}

CSONParser::Next CSONParser::parseMember()
{
    switch (current_.kind) {
    case CSONTokenKind::Comma:
        advance();
        return Next::memberOrElement;
    case CSONTokenKind::End:
    case CSONTokenKind::RightBrace:
        close(CSONTokenKind::RightBrace, "Expected '}'", '}');
        return Next::memberOrElement;
    case CSONTokenKind::Identifier:
    case CSONTokenKind::String:
        return parseKeyOrShorthand();
    default:
        if ((frames_.back() & shorthandUsed) != 0)
            fail("Unexpected object value", current_);
        frames_.back() |= shorthandUsed;
        writeSeparator();
        json_.append("\"#\":");
        return Next::value;
    }
}

CSONParser::Next CSONParser::parseKeyOrShorthand()
{
    const CSONToken word = current_;
    advance();
    if (current_.kind == CSONTokenKind::Colon) {
        advance();
        writeSeparator();
        writeQuoted(word);
        json_.push_back(':');
        return Next::value;
    }
    if ((frames_.back() & shorthandUsed) != 0)
        fail("Only one shorthand command is allowed", word);
    frames_.back() |= shorthandUsed;
    writeSeparator();
    json_.append("\"#\":");
    writeQuoted(word);
    return Next::memberOrElement;
}

void CSONParser::open(Frame frame, char bracket)
{
    frames_.push_back(frame);
    json_.push_back(bracket);
}

// `current_` is the bracket, or the end of the input in its place.
void CSONParser::close(CSONTokenKind bracket, const char* message, char written)
{
    if (current_.kind != bracket)
        fail(message, current_);
    advance();
    frames_.pop_back();
    json_.push_back(written);
}

void CSONParser::writeSeparator()
{
    if ((frames_.back() & hasMembers) != 0)
        json_.push_back(',');
    frames_.back() |= hasMembers;
}

void CSONParser::writeQuoted(const CSONToken& token)
{
    json_.push_back('"');
    if (token.isPlain)
        json_.append(token.text);
    else
        writeUnescaped(token.text);
    json_.push_back('"');
}

// Takes the escapes of the source away and puts those of JSON in. Only five characters have one:
// the other control characters reach the JSON text raw.
void CSONParser::writeUnescaped(std::string_view text)
{
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t stop = std::min(text.find_first_of("\\\n\r\t", position), text.size());
        json_.append(text.substr(position, stop - position));
        if (stop == text.size())
            return;
        position = stop + 1;
        if (text[stop] != '\\') {
            writeByte(text[stop]);
            continue;
        }
        // The token reader lets no string end behind a lone backslash.
        constexpr std::string_view letters = "bfnrt";
        constexpr std::string_view meanings = "\b\f\n\r\t";
        const std::size_t letter = letters.find(text[position]);
        writeByte(letter == std::string_view::npos ? text[position] : meanings[letter]);
        ++position;
    }
}

void CSONParser::writeByte(char byte)
{
    constexpr std::string_view escaped = "\"\\\n\r\t";
    constexpr std::string_view letters = "\"\\nrt";
    const std::size_t index = escaped.find(byte);
    if (index == std::string_view::npos) {
        json_.push_back(byte);
    } else {
        json_.push_back('\\');
        json_.push_back(letters[index]);
    }
}

void CSONParser::fail(const char* message, const CSONToken& at)
{
    throw ParserError(message, at.line, at.column);
}

}  // namespace tavrel
