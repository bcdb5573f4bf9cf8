#include "config/cson/TavrelCSONBackend.h"

#include "config/cson/CSONParser.h"
#include "config/cson/JSONTreeReader.h"

#include <unicode/utf8.h>

#include <cstdint>
#include <cstring>
#include <exception>

namespace tavrel {
namespace {

constexpr const char* domain = "TavrelCSONBackend";
constexpr int parseFailed = 1;
constexpr int encodingFailed = 2;

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

}  // namespace

tl::expected<std::string, CSONError>
TavrelCSONBackend::normalizedJSONFromCSON(std::string_view text)
try {
    std::string json = CSONParser(text.substr(0, text.find('\0'))).parse();
    if (!isUTF8(json))
        return tl::unexpected(
            CSONError{domain, encodingFailed, "Unable to encode normalized JSON"});
    return json;
} catch (const std::exception& error) {
    return tl::unexpected(CSONError{domain, parseFailed, error.what()});
} catch (...) {
    return tl::unexpected(CSONError{domain, parseFailed, "CSON parse failed"});
}

tl::expected<CSONValue, CSONError> TavrelCSONBackend::parseCSON(std::string_view text)
{
    return normalizedJSONFromCSON(text).and_then(readJSONTree);
}

}  // namespace tavrel
