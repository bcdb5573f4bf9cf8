#include "config/cson/CSONParser.h"

#include "config/cson/ParserError.h"

namespace tavrel {
namespace {

// The name of the member that stands for the value without a key.
constexpr CSONToken shorthandKey{CSONTokenKind::String, true, "#", 1, 1};

}  // namespace

CSONParser::CSONParser(std::string_view input, CSONOutput& output) : reader_(input), output_(output)
{
    advance();
}

void CSONParser::parse()
{
    Next next = parseValue();
    while (next == Next::value || !frames_.empty()) {
        if (next == Next::value)
            next = parseValue();
        else
            next = frames_.back() == Frame::array ? parseElement() : parseMember();
    }
    expect(CSONTokenKind::End, "Expected end of input");
}

CSONParser::Next CSONParser::parseValue()
{
    switch (current_.kind) {
    case CSONTokenKind::LeftBrace:
        frames_.push_back(Frame::object);
        output_.openMap();
        break;
    case CSONTokenKind::LeftBracket:
        frames_.push_back(Frame::array);
        output_.openArray();
        break;
    case CSONTokenKind::Identifier:
    case CSONTokenKind::String:
        output_.string(current_);
        break;
    case CSONTokenKind::Number:
        output_.number(current_.text);
        break;
    case CSONTokenKind::Boolean:
        output_.boolean(current_.text == "true");
        break;
    case CSONTokenKind::Null:
        output_.null();
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
        expect(CSONTokenKind::RightBracket, "Expected ']'");
        advance();
        frames_.pop_back();
        output_.closeArray();
        return Next::memberOrElement;
    default:
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
        expect(CSONTokenKind::RightBrace, "Expected '}'");
        advance();
        frames_.pop_back();
        output_.closeMap();
        return Next::memberOrElement;
    case CSONTokenKind::Identifier:
    case CSONTokenKind::String:
        return parseKeyOrShorthand();
    default:
        if (frames_.back() == Frame::objectWithShorthand)
            fail("Unexpected object value", current_);
        frames_.back() = Frame::objectWithShorthand;
        output_.key(shorthandKey);
        return Next::value;
    }
}

CSONParser::Next CSONParser::parseKeyOrShorthand()
{
    const CSONToken word = current_;
    advance();
    if (current_.kind == CSONTokenKind::Colon) {
        advance();
        output_.key(word);
        return Next::value;
    }
    if (frames_.back() == Frame::objectWithShorthand)
        fail("Only one shorthand command is allowed", word);
    frames_.back() = Frame::objectWithShorthand;
    output_.key(shorthandKey);
    output_.string(word);
    return Next::memberOrElement;
}

void CSONParser::expect(CSONTokenKind kind, const char* message)
{
    if (current_.kind != kind)
        fail(message, current_);
}

void CSONParser::fail(const char* message, const CSONToken& at)
{
    throw ParserError(message, at.line, at.column);
}

}  // namespace tavrel
