#pragma once

#include "platform/FileError.h"
#include "platform/FileStatus.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

namespace tavrel {

class FileSystem;
class OpenFile;

/// The new contents of a file that keeps its inode.
struct NewContents {
    /// Writes all bytes to where the file stands, and answers how many they were.
    std::function<tl::expected<std::uint64_t, FileError>(OpenFile& file)> write;
    std::optional<std::uint64_t> byteCount;  // Where it is known beforehand.
};

/// Writes over the existing regular file at `path`, which is no symbolic link. The old bytes are
/// kept aside meanwhile, beside the file or in `asideFolder`, and put back if anything fails; when
/// even that fails, the message names the file that holds them.
tl::expected<FileStatus, FileError> writeFileInPlace(FileSystem& fileSystem,
                                                     const std::filesystem::path& path,
                                                     const NewContents& contents,
                                                     const std::filesystem::path& asideFolder);

}  // namespace tavrel
