#include "config/ConfigText.h"

#include "platform/AtomicWrite.h"
#include "platform/FileReader.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cerrno>

namespace tavrel {
namespace {

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

char lowercasedAscii(char byte)
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

}  // namespace

tl::expected<std::string, FileError> readConfigText(FileSystem& fileSystem,
                                                    const std::filesystem::path& path)
{
    auto bytes = readFile(fileSystem, path, maximumConfigBytes);
    if (bytes && !isValidUtf8(*bytes))
        return tl::unexpected(FileError{EILSEQ, "Not valid UTF-8"});
    return bytes;
}

tl::expected<void, FileError>
writeConfigText(FileSystem& fileSystem, const std::filesystem::path& path, std::string_view text)
{
    return writeFileAtomically(fileSystem, path, byteSource(text)).map([](const FileStatus&) {});
}

std::string_view withoutByteOrderMark(std::string_view text)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.starts_with(mark) ? text.substr(mark.size()) : text;
}

std::string lowercasedUtf8(std::string_view text)
{
    if (!isAscii(text))
        return utf8FromUtf16(lowercased(utf16FromUtf8(text)));
    std::string result(text);
    std::ranges::transform(result, result.begin(), lowercasedAscii);
    return result;
}

std::string trimmedUtf8(std::string_view text, Trim trim)
{
    const std::u16string wide = utf16FromUtf8(text);
    return utf8FromUtf16(trim == Trim::newlines ? trimmedWhitespaceAndNewlines(wide)
                                                : trimmedWhitespace(wide));
}

}  // namespace tavrel
