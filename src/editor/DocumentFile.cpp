#include "editor/DocumentFile.h"

#include "editor/TextDecoder.h"
#include "editor/TextEncoder.h"
#include "platform/AtomicWrite.h"
#include "platform/FileReader.h"
#include "platform/Unicode.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace tavrel {

namespace {

/// Encodes a text one stretch after another, so that saving makes no second copy of it.
class Utf8Pieces {
public:
    explicit Utf8Pieces(const TextSnapshot& text) : text_(text) {}

    /// The bytes of the next stretch; empty at the end. Valid until the next call.
    std::string_view next()
    {
        constexpr std::size_t stretchLength = 64 * 1024;
        std::size_t end = std::min(place_ + stretchLength, text_.length());
        const bool splitsPair = end < text_.length() && isHighSurrogate(text_.unitAt(end - 1)) &&
                                isLowSurrogate(text_.unitAt(end));
        if (splitsPair)
            ++end;
        bytes_.clear();
        forEachUtf8Chunk(text_.slice({place_, end - place_}), [this](std::string_view chunk) {
            bytes_ += chunk;
            return true;
        });
        place_ = end;
        return bytes_;
    }

private:
    const TextSnapshot& text_;
    std::size_t place_ = 0;
    std::string bytes_;
};

std::uint64_t utf8Length(const TextSnapshot& text)
{
    std::uint64_t length = 0;
    forEachUtf8Chunk(text, [&length](std::string_view chunk) {
        length += chunk.size();
        return true;
    });
    return length;
}

}  // namespace

LoadResult readDocument(FileSystem& fileSystem, const std::filesystem::path& path)
{
    constexpr std::size_t pieceSize = 256 * 1024;  // Stays in the second-level cache.
    tl::expected<FileReader, FileError> file = FileReader::open(fileSystem, path);
    if (!file)
        return tl::unexpected(file.error());
    std::vector<char> piece(pieceSize);
    TextDecoder decoder;
    for (;;) {
        const tl::expected<std::size_t, FileError> count = file->read(piece);
        if (!count)
            return tl::unexpected(count.error());
        if (*count == 0)
            break;
        decoder.feed({piece.data(), *count});
    }
    return LoadedText{decoder.finish(), file->status()};
}

tl::expected<FileStatus, FileError> writeDocument(FileSystem& fileSystem,
                                                  const std::filesystem::path& path,
                                                  const TextSnapshot& text,
                                                  const std::filesystem::path& asideFolder)
{
    Utf8Pieces pieces(text);
    const ByteSource source{[&pieces] { return pieces.next(); }, utf8Length(text)};
    return writeFileAtomically(fileSystem, path, source, asideFolder);
}

}  // namespace tavrel
