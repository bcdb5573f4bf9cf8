#pragma once

#include "platform/FileError.h"
#include "platform/FileStatus.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

namespace tavrel {

class FileSystem;

/// Bytes that come in pieces, so that a large text is saved without a second copy of it.
struct ByteSource {
    /// The next piece; an empty one is the end. A piece is valid until the next call. Called on the
    /// thread that writes, and not once more after the end.
    std::function<std::string_view()> next;
    /// The sum of the pieces where it is known: a disk without room for them is then noticed before
    /// the first byte is written.
    std::optional<std::uint64_t> byteCount;
};

/// All of `bytes`, which must outlive the source.
ByteSource byteSource(std::string_view bytes);

/// Puts the bytes of `source` in place of what the file at `path` holds, or makes that file, and
/// answers its new status.
///
/// The new bytes go to a temporary file in the same folder and are on the disk before it takes the
/// name. Mode, owner, group, access control lists and extended attributes stay as they are; a new
/// file gets what the process's mask and the folder give it. Symbolic links are followed, and stay:
/// their target is replaced or made.
///
/// Where a replacement would lose something (other hard links, another user's ownership), or is
/// not possible (a folder that cannot be written, a file that something is mounted on), the file is
/// written in place. Its old bytes are kept aside meanwhile, beside it or in `asideFolder`, which
/// only this process should be able to read, and are put back if anything fails.
///
/// After a failure the file holds what it held, or is still absent, with two exceptions. When
/// putting the old bytes back fails as well, the message names the file that still holds them. And
/// where the file system cannot swap two names, a failure of the last step, syncing the folder,
/// comes too late: the file then holds all of the new bytes.
///
/// Fails with the system's reason; with `EISDIR` for a folder, "Not a regular file" for a device,
/// pipe or socket, `ELOOP` for a ring of links, and `EACCES` for a file that is protected against
/// writing, even where its folder would let it be replaced. May be called on any thread.
tl::expected<FileStatus, FileError>
writeFileAtomically(FileSystem& fileSystem, const std::filesystem::path& path,
                    const ByteSource& source, const std::filesystem::path& asideFolder = {});

}  // namespace tavrel
