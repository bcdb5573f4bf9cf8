#pragma once

#include "platform/FileError.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

namespace tavrel {

/// An open file or folder, closed by its destructor.
///
/// Interrupted calls are made again, and short writes are completed. May be used on any thread,
/// but on one at a time.
class OpenFile {
public:
    template<typename T>
    using Result = tl::expected<T, FileError>;

    /// `flags` and `mode` as for open(2). A path with a NUL in it is `EINVAL`.
    static Result<OpenFile> open(FileSystem& fileSystem, const std::filesystem::path& path,
                                 int flags, unsigned mode = 0);

    OpenFile(OpenFile&& other) noexcept;
    OpenFile& operator=(OpenFile&& other) noexcept;
    ~OpenFile();

    FileSystem& fileSystem() const { return *fileSystem_; }
    /// For the calls of `FileSystem` that need no second try.
    int descriptor() const { return descriptor_; }
    Result<FileStatus> status() const;

    /// At least one byte, unless the end is reached or `buffer` is empty: then 0.
    Result<std::size_t> read(std::span<char> buffer);
    Result<void> writeAll(std::string_view bytes);
    Result<void> seek(std::uint64_t offset);
    Result<void> truncate(std::uint64_t size);
    /// Sets room aside for `size` bytes; does nothing where the file system knows no such thing.
    Result<void> allocate(std::uint64_t size);
    Result<void> sync();
    /// Some file systems report a failed write only now. Nothing else may be called afterwards.
    Result<void> close();

private:
    OpenFile(FileSystem& fileSystem, int descriptor)
        : fileSystem_(&fileSystem), descriptor_(descriptor)
    {
    }

    FileSystem* fileSystem_;
    int descriptor_;  // -1 once closed or moved from.
};

/// Writes what `from` holds from its position on to where `to` stands, and answers the byte count.
tl::expected<std::uint64_t, FileError> copyBytes(OpenFile& from, OpenFile& to);

}  // namespace tavrel
