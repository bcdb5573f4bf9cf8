#pragma once

#include <chrono>
#include <cstdint>

namespace tavrel {

/// When a file was last modified, in whole nanoseconds since 1970. Only to be compared with other
/// dates of the same file: a newer file may well have an older date.
using FileDate = std::chrono::sys_time<std::chrono::nanoseconds>;

/// Which file a name stands for: two names of one file have equal identities.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    auto operator<=>(const FileIdentity&) const = default;
};

enum class FileKind { regular, folder, symbolicLink, other };

/// What the file system knows about a file without reading it.
struct FileStatus {
    FileKind kind = FileKind::regular;
    std::uint64_t size = 0;  // Bytes. 0 for the files that the kernel makes up as they are read.
    FileDate date{};
    FileIdentity identity;
    unsigned mode = 0;  // Permission bits, set-user, set-group and sticky bit; no type bits.
    std::uint64_t linkCount = 1;
    unsigned owner = 0;
    unsigned group = 0;
};

}  // namespace tavrel
