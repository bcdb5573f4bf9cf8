#pragma once

#include "platform/FileSystem.h"

namespace tavrel {

/// The file system of the machine. Holds no state.
class PosixFileSystem final : public FileSystem {
public:
    Result<int> open(const Path& path, int flags, unsigned mode) override;
    Result<void> close(int descriptor) override;
    Result<std::size_t> read(int descriptor, std::span<char> buffer) override;
    Result<std::size_t> write(int descriptor, std::string_view bytes) override;
    Result<void> seek(int descriptor, std::uint64_t offset) override;
    Result<void> truncate(int descriptor, std::uint64_t size) override;
    Result<void> allocate(int descriptor, std::uint64_t size) override;
    Result<void> sync(int descriptor) override;

    Result<FileStatus> status(int descriptor) override;
    Result<FileStatus> status(const Path& path) override;
    Result<FileStatus> linkStatus(const Path& path) override;
    Result<Path> readLink(const Path& path) override;
    Result<void> checkWritable(const Path& path) override;

    Result<void> setMode(int descriptor, unsigned mode) override;
    Result<void> setOwner(int descriptor, unsigned owner, unsigned group) override;
    Result<void> setDate(int descriptor, FileDate date) override;
    Result<std::vector<std::string>> attributeNames(int descriptor) override;
    Result<std::string> attribute(int descriptor, const std::string& name) override;
    Result<void> setAttribute(int descriptor, const std::string& name,
                              std::string_view value) override;
    Result<void> removeAttribute(int descriptor, const std::string& name) override;

    Result<void> rename(const Path& from, const Path& to) override;
    Result<void> exchange(const Path& one, const Path& other) override;
    Result<void> makeFolder(const Path& path, unsigned mode) override;
    Result<void> remove(const Path& path) override;
};

}  // namespace tavrel
