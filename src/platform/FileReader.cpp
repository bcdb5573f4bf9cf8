#include "platform/FileReader.h"

#include "platform/PosixFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>

namespace tavrel {

namespace {

tl::expected<void, FileError> checkRegular(const FileStatus& status)
{
    if (status.kind == FileKind::folder)
        return tl::unexpected(fileError(EISDIR));
    if (status.kind != FileKind::regular)
        return tl::unexpected(notARegularFileError());
    return {};
}

}  // namespace

tl::expected<FileReader, FileError> FileReader::open(FileSystem& fileSystem,
                                                     const std::filesystem::path& path)
{
    // Asked before opening, because opening alone can do something to a device, and once more
    // afterwards, because the name may have changed hands.
    if (const auto before = fileSystem.status(path)) {
        if (const auto regular = checkRegular(*before); !regular)
            return tl::unexpected(regular.error());
    }
    // O_NONBLOCK stays set: it changes nothing for files on a disk, and keeps the kernel's own
    // files that wait for news (/proc/kmsg) from waiting.
    auto file = OpenFile::open(fileSystem, path, O_RDONLY | O_NONBLOCK);
    if (!file)
        return tl::unexpected(file.error());
    const auto status = file->status();
    if (!status)
        return tl::unexpected(status.error());
    if (const auto regular = checkRegular(*status); !regular)
        return tl::unexpected(regular.error());
    return FileReader(std::move(*file), *status);
}

tl::expected<std::string, FileError>
readFile(FileSystem& fileSystem, const std::filesystem::path& path, std::size_t maximumBytes)
{
    auto reader = FileReader::open(fileSystem, path);
    if (!reader)
        return tl::unexpected(reader.error());
    if (reader->status().size > maximumBytes)
        return tl::unexpected(fileError(EFBIG));

    // The size is only a hint: the file may change, and the kernel's own files say 0. One byte more
    // than it, so that a file that keeps its size is read and found to be at its end in one buffer.
    constexpr std::size_t smallestBuffer = 4096;
    std::string bytes(std::max<std::size_t>(reader->status().size + 1, smallestBuffer), '\0');
    std::size_t length = 0;
    for (;;) {
        const auto count = reader->read(std::span(bytes).subspan(length));
        if (!count)
            return tl::unexpected(count.error());
        if (*count == 0)
            break;
        length += *count;
        if (length > maximumBytes)
            return tl::unexpected(fileError(EFBIG));
        if (length == bytes.size())
            bytes.resize(2 * length);
    }
    bytes.resize(length);
    return bytes;
}

tl::expected<std::string, FileError> readFile(const std::filesystem::path& path,
                                              std::size_t maximumBytes)
{
    PosixFileSystem fileSystem;
    return readFile(fileSystem, path, maximumBytes);
}

}  // namespace tavrel
