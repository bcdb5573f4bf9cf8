// Any bytes: decoded by two chunkings they give one text, which gives back the bytes.

#include "editor/TextCursor.h"
#include "editor/TextDecoder.h"
#include "editor/TextEncoder.h"

#include <cstdlib>

using namespace tavrel;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    // The first two bytes choose the size of the blocks and of the chunks.
    const std::size_t blockSize = data[0] < 128 ? data[0] + std::size_t(1) : 4096;
    const std::size_t chunk = data[1] % 16 + std::size_t(1);
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);

    const TextSnapshot text = decodedText(bytes, blockSize);
    require(encodedText(text) == bytes);
    TextDecoder decoder;
    for (std::size_t done = 0; done < bytes.size(); done += chunk)
        decoder.feed(bytes.substr(done, chunk));
    const TextSnapshot other = decoder.finish();
    require(other == text);
    require(encodedText(other) == bytes);

    require(text.lineCount() >= 1 && text.lineCount() >= text.lfLineCount());
    std::size_t start = 0;
    for (std::size_t line = 0; line < text.lineCount(); ++line) {
        require(text.lineStart(line) == start && other.lineStart(line) == start);
        require(text.lineIndexAt(start) == line);
        const TextRange range = text.lineRange({start, 0});
        require(range.location == start);
        const std::size_t contentEnd = text.lineContentEnd(start);
        require(contentEnd >= start && contentEnd <= range.end() && range.end() - contentEnd <= 2);
        require((contentEnd == range.end()) == (line + 1 == text.lineCount()));
        start = range.end();
    }
    require(start == text.length());
    for (std::size_t line = 0; line < text.lfLineCount(); ++line)
        require(text.lfLineIndexAt(text.lfLineStart(line)) == line);

    TextCursor cursor(text);
    std::u16string units;
    while (!cursor.isAtEnd())
        units.push_back(cursor.next());
    require(text == units);
    return 0;
}
