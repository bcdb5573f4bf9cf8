#include "config/cson/CSONStrings.h"

#include <unicode/utf8.h>

#include <cstdint>
#include <cstring>

namespace tavrel {
namespace {

// Where the next byte of 0x80 or above stands, or the end.
std::ptrdiff_t skipASCII(std::string_view text, std::ptrdiff_t position)
{
    const auto size = static_cast<std::ptrdiff_t>(text.size());
    constexpr std::ptrdiff_t wordSize = sizeof(std::uint64_t);
    while (size - position >= wordSize) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + position, wordSize);
        if ((word & 0x8080808080808080U) != 0)
            break;
        position += wordSize;
    }
    while (position < size && static_cast<unsigned char>(text[position]) < 0x80)
        ++position;
    return position;
}

}  // namespace

std::string unescapedText(const CSONToken& token)
{
    if (token.isPlain)
        return std::string(token.text);
    std::string out;
    out.reserve(token.text.size());
    unescape(
        token.text, [&](std::string_view run) { out.append(run); },
        [&](char byte) { out.push_back(byte); });
    return out;
}

bool isUTF8(std::string_view text)
{
    const auto size = static_cast<std::ptrdiff_t>(text.size());
    std::ptrdiff_t position = skipASCII(text, 0);
    while (position < size) {
        UChar32 character = 0;
        U8_NEXT(text.data(), position, size, character);
        if (character < 0)
            return false;
        if (character < 0x80)
            position = skipASCII(text, position);
    }
    return true;
}

}  // namespace tavrel
