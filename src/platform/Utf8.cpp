#include "platform/Utf8.h"

#include <cstdint>
#include <cstring>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace tavrel {
namespace {

constexpr std::uint64_t highBits = 0x8080808080808080;

/// Where the run of ASCII that starts at `index` ends, rounded down to whole words of 8 bytes.
std::size_t skipAsciiWords(std::string_view bytes, std::size_t index)
{
    std::uint64_t word = 0;
    while (bytes.size() - index >= sizeof word) {
        std::memcpy(&word, bytes.data() + index, sizeof word);
        if ((word & highBits) != 0)
            break;
        index += sizeof word;
    }
    return index;
}

}  // namespace

std::u16string utf16FromUtf8(std::string_view bytes)
{
    std::u16string result(bytes.size(), u'\0');  // A byte never gives more than one unit.
    char16_t* out = result.data();
    std::size_t index = 0;
    while (index < bytes.size()) {
        const std::size_t asciiEnd = skipAsciiWords(bytes, index);
        while (index < asciiEnd)
            *out++ = static_cast<unsigned char>(bytes[index++]);
        if (index == bytes.size())
            break;
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(bytes.data(), index, bytes.size(), character);
        std::size_t length = 0;
        U16_APPEND_UNSAFE(out, length, character);
        out += length;
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    return result;
}

std::string utf8FromUtf16(std::u16string_view text)
{
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    std::size_t index = 0;
    while (index < text.size()) {
        if (text[index] < 0x80) {
            result.push_back(static_cast<char>(text[index++]));
            continue;
        }
        UChar32 character = 0;
        U16_NEXT_OR_FFFD(text.data(), index, text.size(), character);
        char buffer[U8_MAX_LENGTH];
        std::size_t length = 0;
        U8_APPEND_UNSAFE(buffer, length, character);
        result.append(buffer, length);
    }
    return result;
}

bool isValidUtf8(std::string_view bytes)
{
    std::size_t index = 0;
    while (index < bytes.size()) {
        index = skipAsciiWords(bytes, index);
        if (index == bytes.size())
            break;
        UChar32 character = 0;
        U8_NEXT(bytes.data(), index, bytes.size(), character);
        if (character < 0)
            return false;
    }
    return true;
}

}  // namespace tavrel
