#include "probe/ProbeJson.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <array>
#include <charconv>

namespace tavrel::probe {
namespace {

constexpr char16_t lead = 0xFDD0;
constexpr std::string_view leadUtf8 = "\xEF\xB7\x90";
constexpr std::string_view hexDigits = "0123456789abcdef";
constexpr std::size_t unitDigits = 4;

void appendUnit(std::string& out, char16_t unit)
{
    for (int shift = 12; shift >= 0; shift -= 4)
        out.push_back(hexDigits[(unit >> shift) & 0xF]);
}

// The code unit whose digits stand at `position`, or -1.
int unitAt(std::string_view text, std::size_t position)
{
    if (position + unitDigits > text.size())
        return -1;
    const char* first = text.data() + position;
    int unit = 0;
    const auto [end, error] = std::from_chars(first, first + unitDigits, unit, 16);
    return error == std::errc() && end == first + unitDigits && *first != '-' ? unit : -1;
}

void appendUtf8(std::string& out, UChar32 character)
{
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(bytes.data(), length, character);
    out.append(bytes.data(), static_cast<std::size_t>(length));
}

// The character of UTF-8 at `position`, which moves behind it; U+FFFD for bytes that are none.
UChar32 nextCharacter(std::string_view bytes, std::size_t& position)
{
    auto end = static_cast<std::ptrdiff_t>(position);
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(bytes.data(), end, static_cast<std::ptrdiff_t>(bytes.size()), character);
    position = static_cast<std::size_t>(end);
    return character;
}

// The unit that an escape stands for whose lead has just been read, or -1 where the lead is bare.
int escapedUnit(std::string_view text, std::size_t& position)
{
    const int unit = unitAt(text, position);
    if (unit >= 0)
        position += unitDigits;
    return unit;
}

// Rewrites the escapes of one line, and watches its depth on the way.
class LineRewriter {
public:
    explicit LineRewriter(std::string_view line) : line_(line) {}

    std::string rewritten()
    {
        out_.reserve(line_.size());
        while (position_ < line_.size()) {
            const char byte = line_[position_];
            if (byte == '"')
                inString_ = !inString_;
            if (inString_ && byte == '\\') {
                rewriteEscape();
            } else if (inString_ && line_.substr(position_, leadUtf8.size()) == leadUtf8) {
                out_.append(leadUtf8);
                appendUnit(out_, lead);
                position_ += leadUtf8.size();
            } else {
                if (!inString_)
                    watchDepth(byte);
                out_.push_back(byte);
                ++position_;
            }
        }
        return std::move(out_);
    }
    bool isTooDeep() const { return isTooDeep_; }

private:
    void rewriteEscape()
    {
        const int unit = escapeAt(position_);
        constexpr std::size_t escapeLength = 2 + unitDigits;
        if (unit < 0) {
            copy(2);
        } else if (U16_IS_LEAD(unit) && U16_IS_TRAIL(escapeAt(position_ + escapeLength))) {
            copy(2 * escapeLength);
        } else if (U16_IS_SURROGATE(unit) || unit == lead) {
            out_.append(leadUtf8);
            appendUnit(out_, static_cast<char16_t>(unit));
            position_ += escapeLength;
        } else {
            copy(escapeLength);
        }
    }
    // The unit of a \uXXXX at `position`, or -1.
    int escapeAt(std::size_t position) const
    {
        return line_.substr(std::min(position, line_.size()), 2) == "\\u"
                   ? unitAt(line_, position + 2)
                   : -1;
    }
    void copy(std::size_t count)
    {
        out_.append(line_.substr(position_, count));
        position_ = std::min(position_ + count, line_.size());
    }
    void watchDepth(char byte)
    {
        if (byte == '{' || byte == '[')
            isTooDeep_ = ++depth_ > maximumDepth || isTooDeep_;
        else if ((byte == '}' || byte == ']') && depth_ > 0)
            --depth_;
    }

    std::string_view line_;
    std::size_t position_ = 0;
    bool inString_ = false;
    std::size_t depth_ = 0;
    bool isTooDeep_ = false;
    std::string out_;
};

void writeEscape(std::string& out, unsigned char byte)
{
    constexpr std::string_view escaped = "\"\\\b\f\n\r\t";
    constexpr std::string_view letters = "\"\\bfnrt";
    const std::size_t index = escaped.find(static_cast<char>(byte));
    if (index != std::string_view::npos) {
        out.push_back('\\');
        out.push_back(letters[index]);
    } else {
        out.append("\\u");
        appendUnit(out, byte);
    }
}

void writeString(std::string& out, std::string_view text)
{
    out.push_back('"');
    for (std::size_t position = 0; position < text.size();) {
        const auto byte = static_cast<unsigned char>(text[position]);
        if (byte < 0x80) {
            ++position;
            if (byte < 0x20 || byte == '"' || byte == '\\')
                writeEscape(out, byte);
            else
                out.push_back(static_cast<char>(byte));
            continue;
        }
        const UChar32 character = nextCharacter(text, position);
        const int unit = character == lead ? escapedUnit(text, position) : -1;
        if (unit >= 0) {
            out.append("\\u");
            appendUnit(out, static_cast<char16_t>(unit));
        } else {
            appendUtf8(out, character);
        }
    }
    out.push_back('"');
}

// A container that is being written, and its next child.
struct OpenContainer {
    const Json* container;
    Json::const_iterator next;
};

[[noreturn]] void wrongShape(std::string_view name, const char* shape)
{
    throw RequestError("'" + std::string(name) + "' must be " + shape);
}

}  // namespace

tl::expected<Json, std::string> readLine(std::string_view line)
{
    LineRewriter rewriter(line);
    const std::string rewritten = rewriter.rewritten();
    if (rewriter.isTooDeep())
        return tl::unexpected("unreadable request: nested deeper than " +
                              std::to_string(maximumDepth) + " levels");
    try {
        return Json::parse(rewritten);
    } catch (const Json::exception& error) {
        return tl::unexpected("unreadable request: " + std::string(error.what()));
    }
}

// The library's own writer recurses, and a value tree may be as deep as the engine lets it.
std::string writeLine(const Json& value)
{
    std::string out;
    std::vector<OpenContainer> open;
    const auto write = [&](const Json& child) {
        if (child.is_structured()) {
            out.push_back(child.is_object() ? '{' : '[');
            open.push_back({&child, child.cbegin()});
        } else if (child.is_string()) {
            writeString(out, child.get_ref<const std::string&>());
        } else {
            out.append(child.dump());
        }
    };
    write(value);
    while (!open.empty()) {
        const Json& container = *open.back().container;
        const Json::const_iterator next = open.back().next;
        if (next == container.cend()) {
            out.push_back(container.is_object() ? '}' : ']');
            open.pop_back();
            continue;
        }
        ++open.back().next;
        if (next != container.cbegin())
            out.push_back(',');
        if (container.is_object()) {
            writeString(out, next.key());
            out.push_back(':');
        }
        write(*next);
    }
    return out;
}

std::u16string textFromJson(const Json& string)
{
    if (!string.is_string())
        throw RequestError("a text must be a string");
    const std::string& text = string.get_ref<const std::string&>();
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const UChar32 character = nextCharacter(text, position);
        const int unit = character == lead ? escapedUnit(text, position) : -1;
        if (unit >= 0) {
            units.push_back(static_cast<char16_t>(unit));
        } else if (character > 0xFFFF) {
            units.push_back(U16_LEAD(character));
            units.push_back(U16_TRAIL(character));
        } else {
            units.push_back(static_cast<char16_t>(character));
        }
    }
    return units;
}

Json jsonFromText(std::u16string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        UChar32 character = 0;
        U16_NEXT(text.data(), position, text.size(), character);
        if (U_IS_SURROGATE(character) || character == lead) {
            out.append(leadUtf8);
            appendUnit(out, static_cast<char16_t>(character));
        } else {
            appendUtf8(out, character);
        }
    }
    return out;
}

std::string utf8FromJson(const Json& string)
{
    if (!string.is_string())
        throw RequestError("a text must be a string");
    const std::string& text = string.get_ref<const std::string&>();
    if (text.find(leadUtf8) == std::string::npos)
        return text;
    std::string out;
    for (std::size_t position = 0; position < text.size();) {
        const UChar32 character = nextCharacter(text, position);
        const int unit = character == lead ? escapedUnit(text, position) : -1;
        const UChar32 meant = unit >= 0 ? unit : character;
        appendUtf8(out, U_IS_SURROGATE(meant) ? 0xFFFD : meant);
    }
    return out;
}

Json jsonFromUtf8(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size());
    for (std::size_t position = 0; position < bytes.size();) {
        const UChar32 character = nextCharacter(bytes, position);
        appendUtf8(out, character);
        if (character == lead)
            appendUnit(out, lead);
    }
    return out;
}

std::string bytesFromHex(const Json& string)
{
    if (!string.is_string())
        throw RequestError("hex must be a string");
    const std::string& digits = string.get_ref<const std::string&>();
    if (digits.size() % 2 != 0)
        throw RequestError("hex must have an even number of digits");
    std::string bytes;
    bytes.reserve(digits.size() / 2);
    for (std::size_t position = 0; position < digits.size(); position += 2) {
        const char* first = digits.data() + position;
        unsigned char byte = 0;
        const auto [end, error] = std::from_chars(first, first + 2, byte, 16);
        if (error != std::errc() || end != first + 2)
            throw RequestError("hex must hold hexadecimal digits only");
        bytes.push_back(static_cast<char>(byte));
    }
    return bytes;
}

Json hexFromBytes(std::string_view bytes)
{
    std::string out;
    out.reserve(2 * bytes.size());
    for (const char byte : bytes) {
        out.push_back(hexDigits[static_cast<unsigned char>(byte) >> 4]);
        out.push_back(hexDigits[static_cast<unsigned char>(byte) & 0xF]);
    }
    return out;
}

TextRange rangeFromJson(const Json& range)
{
    if (!range.is_array() || range.size() != 2 || !range[0].is_number_unsigned() ||
        !range[1].is_number_unsigned())
        throw RequestError("a range must be [location, length]");
    return {range[0].get<std::size_t>(), range[1].get<std::size_t>()};
}

Json jsonFromRange(TextRange range)
{
    return Json::array({range.location, range.length});
}

const Json* member(const Json& object, std::string_view name)
{
    if (!object.is_object())
        return nullptr;
    const auto found = object.find(name);
    return found == object.end() || found->is_null() ? nullptr : &*found;
}

const Json& requiredMember(const Json& object, std::string_view name)
{
    const Json* found = member(object, name);
    if (!found)
        throw RequestError("'" + std::string(name) + "' is missing");
    return *found;
}

std::u16string textMember(const Json& object, std::string_view name)
{
    const Json& value = requiredMember(object, name);
    if (!value.is_string())
        wrongShape(name, "a string");
    return textFromJson(value);
}

std::string utf8Member(const Json& object, std::string_view name)
{
    const Json& value = requiredMember(object, name);
    if (!value.is_string())
        wrongShape(name, "a string");
    return utf8FromJson(value);
}

std::int64_t integerMember(const Json& object, std::string_view name)
{
    const Json& value = requiredMember(object, name);
    if (!value.is_number_integer())
        wrongShape(name, "a whole number");
    return value.get<std::int64_t>();
}

std::int64_t integerMember(const Json& object, std::string_view name, std::int64_t absent)
{
    return member(object, name) ? integerMember(object, name) : absent;
}

double numberMember(const Json& object, std::string_view name, double absent)
{
    const Json* value = member(object, name);
    if (value && !value->is_number())
        wrongShape(name, "a number");
    return value ? value->get<double>() : absent;
}

bool booleanMember(const Json& object, std::string_view name, bool absent)
{
    const Json* value = member(object, name);
    if (value && !value->is_boolean())
        wrongShape(name, "true or false");
    return value ? value->get<bool>() : absent;
}

std::string bytesMember(const Json& object, const std::string& name)
{
    const Json* hex = member(object, name + "Hex");
    if (!hex)
        return utf8Member(object, name);
    if (member(object, name))
        throw RequestError("'" + name + "' and '" + name + "Hex' exclude each other");
    return bytesFromHex(*hex);
}

}  // namespace tavrel::probe
