#include "config/cson/CSONTreeWriter.h"

#include "config/cson/CSONStrings.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

namespace tavrel {
namespace {

// Whether JSON takes the text between quotes: the normalised text holds escapes for line feed,
// carriage return and tab alone.
bool isTextOfJSON(std::string_view text)
{
    bool hasControl = false;
    bool hasHighByte = false;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        hasControl |= byte < 0x20 && byte != '\n' && byte != '\r' && byte != '\t';
        hasHighByte |= byte >= 0x80;
    }
    return !hasControl && (!hasHighByte || isUTF8(text));
}

const char* skipDigits(const char* position, const char* end)
{
    return std::find_if(position, end, [](char byte) { return byte < '0' || byte > '9'; });
}

// The end of the whole number that JSON reads at `position`, null where there is none.
const char* endOfInteger(const char* position, const char* end)
{
    if (position != end && *position == '-')
        ++position;
    const char* const digits = skipDigits(position, end);
    const bool hasLeadingZero = digits - position > 1 && *position == '0';
    return digits == position || hasLeadingZero ? nullptr : digits;
}

// The end of the fraction and the exponent at `position`, null where one has no digits.
const char* endOfFraction(const char* position, const char* end)
{
    if (position != end && *position == '.') {
        const char* const digits = skipDigits(position + 1, end);
        if (digits == position + 1)
            return nullptr;
        position = digits;
    }
    if (position != end && (*position == 'e' || *position == 'E')) {
        ++position;
        if (position != end && (*position == '+' || *position == '-'))
            ++position;
        const char* const digits = skipDigits(position, end);
        if (digits == position)
            return nullptr;
        position = digits;
    }
    return position;
}

template<class Number>
std::optional<CSONValue> converted(std::string_view written)
{
    Number number{};
    const char* const end = written.data() + written.size();
    const auto [stop, error] = std::from_chars(written.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return CSONValue(number);
}

// The number as JSON reads it; nothing where it is malformed or out of every range.
std::optional<CSONValue> numberOfJSON(std::string_view written)
{
    const char* const end = written.data() + written.size();
    const char* const integerEnd = endOfInteger(written.data(), end);
    if (!integerEnd || endOfFraction(integerEnd, end) != end)
        return std::nullopt;
    std::optional<CSONValue> integer;
    if (integerEnd == end)
        integer = written.front() == '-' ? converted<std::int64_t>(written)
                                         : converted<std::uint64_t>(written);
    return integer ? integer : converted<double>(written);
}

}  // namespace

void CSONTreeWriter::closeMap()
{
    if (!isInDoubt_)
        builder_.closeMap();
}

void CSONTreeWriter::closeArray()
{
    if (!isInDoubt_)
        builder_.closeArray();
}

void CSONTreeWriter::key(const CSONToken& word)
{
    std::string name = checkedText(word);
    if (!isInDoubt_)
        builder_.addName(std::move(name));
}

void CSONTreeWriter::string(const CSONToken& word)
{
    std::string text = checkedText(word);
    if (!isInDoubt_)
        builder_.add(CSONValue(std::move(text)));
}

void CSONTreeWriter::number(std::string_view written)
{
    std::optional<CSONValue> value = numberOfJSON(written);
    if (value)
        add(std::move(*value));
    else
        isInDoubt_ = true;
}

void CSONTreeWriter::open()
{
    if (!isInDoubt_)
        isInDoubt_ = !builder_.open();
}

void CSONTreeWriter::add(CSONValue&& value)
{
    if (!isInDoubt_)
        builder_.add(std::move(value));
}

std::string CSONTreeWriter::checkedText(const CSONToken& word)
{
    if (isInDoubt_)
        return {};
    std::string text = unescapedText(word);
    isInDoubt_ = !isTextOfJSON(text);
    return text;
}

}  // namespace tavrel
