#pragma once

#include "platform/FileError.h"
#include "platform/FileStatus.h"
#include "platform/OpenFile.h"

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>

namespace tavrel {

class FileSystem;

/// A regular file that is read from its start to its end, piece by piece.
///
/// The file may grow, shrink or be replaced meanwhile: reading goes on to wherever its end then is,
/// so the sum of the pieces may differ from `status().size`. May be used on any thread, but on one
/// at a time.
class FileReader {
public:
    /// Follows symbolic links. Never waits: a folder gives `EISDIR` ("Is a directory"), a device,
    /// pipe or socket "Not a regular file".
    static tl::expected<FileReader, FileError> open(FileSystem& fileSystem,
                                                    const std::filesystem::path& path);

    /// As it was when the file was opened.
    const FileStatus& status() const { return status_; }

    /// Fills the beginning of `buffer` with the next bytes and says how many; 0 at the end.
    tl::expected<std::size_t, FileError> read(std::span<char> buffer) { return file_.read(buffer); }

private:
    FileReader(OpenFile file, const FileStatus& status) : file_(std::move(file)), status_(status) {}

    OpenFile file_;
    FileStatus status_;
};

/// Reads a whole file; fails with `EFBIG` when it is larger than `maximumBytes`.
tl::expected<std::string, FileError>
readFile(FileSystem& fileSystem, const std::filesystem::path& path, std::size_t maximumBytes);

/// The same from the machine's own file system.
tl::expected<std::string, FileError> readFile(const std::filesystem::path& path,
                                              std::size_t maximumBytes);

}  // namespace tavrel
