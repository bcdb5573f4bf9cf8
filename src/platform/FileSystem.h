#pragma once

#include "platform/FileStatus.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// The system calls that reading and saving files rest on, one function each, so that a test can
/// make any of them fail.
///
/// A failure is the value of <cerrno>. Nothing is retried here: a call may be interrupted (`EINTR`)
/// and may read or write fewer bytes than asked for. Descriptors are closed by whoever opened
/// them. May be used on any thread.
class FileSystem {
public:
    template<typename T>
    using Result = tl::expected<T, int>;
    using Path = std::filesystem::path;

    virtual ~FileSystem() = default;

    /// `flags` as for open(2); the descriptor is closed in child processes, whatever they say.
    virtual Result<int> open(const Path& path, int flags, unsigned mode) = 0;
    virtual Result<void> close(int descriptor) = 0;
    virtual Result<std::size_t> read(int descriptor, std::span<char> buffer) = 0;
    virtual Result<std::size_t> write(int descriptor, std::string_view bytes) = 0;
    /// The next read or write happens `offset` bytes from the start.
    virtual Result<void> seek(int descriptor, std::uint64_t offset) = 0;
    virtual Result<void> truncate(int descriptor, std::uint64_t size) = 0;
    /// Sets room aside for `size` bytes; the size of the file stays as it is.
    virtual Result<void> allocate(int descriptor, std::uint64_t size) = 0;
    /// Waits until the contents, or the entries of a folder, are on the disk.
    virtual Result<void> sync(int descriptor) = 0;

    virtual Result<FileStatus> status(int descriptor) = 0;
    /// Of what the path leads to, through symbolic links.
    virtual Result<FileStatus> status(const Path& path) = 0;
    /// Of the path itself, which may be a symbolic link.
    virtual Result<FileStatus> linkStatus(const Path& path) = 0;
    virtual Result<Path> readLink(const Path& path) = 0;
    /// Fails where this process may not write the existing file at `path`.
    virtual Result<void> checkWritable(const Path& path) = 0;

    virtual Result<void> setMode(int descriptor, unsigned mode) = 0;
    virtual Result<void> setOwner(int descriptor, unsigned owner, unsigned group) = 0;
    /// The date of the last modification.
    virtual Result<void> setDate(int descriptor, FileDate date) = 0;
    /// The names of the extended attributes, access control lists among them.
    virtual Result<std::vector<std::string>> attributeNames(int descriptor) = 0;
    virtual Result<std::string> attribute(int descriptor, const std::string& name) = 0;
    virtual Result<void> setAttribute(int descriptor, const std::string& name,
                                      std::string_view value) = 0;
    virtual Result<void> removeAttribute(int descriptor, const std::string& name) = 0;

    /// Replaces `to` where it exists, in one step.
    virtual Result<void> rename(const Path& from, const Path& to) = 0;
    /// Swaps two existing names in one step. `EINVAL` or `ENOSYS` where the file system cannot.
    virtual Result<void> exchange(const Path& one, const Path& other) = 0;
    /// Makes one folder; `EEXIST` where the name is taken, by a folder too.
    virtual Result<void> makeFolder(const Path& path, unsigned mode) = 0;
    /// Removes the name of a file.
    virtual Result<void> remove(const Path& path) = 0;
};

}  // namespace tavrel
