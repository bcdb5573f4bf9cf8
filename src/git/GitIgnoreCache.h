#pragma once

#include "git/GitIgnoreFile.h"
#include "platform/FileStatus.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

namespace tavrel {

class FileSystem;

/// The parsed ignore files of all folders that were asked for. One serves the whole program: it
/// may be asked by several threads at once.
///
/// A look-up costs one call for the file's status; the file is read and parsed anew only when its
/// date, size or identity has changed. Folders are absolute paths in standard form. A file that is
/// missing, no regular file (a link to one is none), not readable, not UTF-8 or larger than
/// `maximumBytes` counts as absent.
class GitIgnoreCache {
public:
    static constexpr std::uint64_t maximumBytes = 512 * 1024;
    static constexpr std::size_t maximumDepth = 129;

    /// Borrows `fileSystem`.
    explicit GitIgnoreCache(FileSystem& fileSystem) : fileSystem_(fileSystem) {}

    /// The ignore file in `folder` itself, or null.
    std::shared_ptr<const GitIgnoreFile> file(const std::string& folder);

    /// The ignore files that apply to what lies in `folder`: its own and those above it, up to the
    /// root of the repository or else of the file system, at most `maximumDepth` folders.
    GitIgnoreChain files(const std::string& folder);

    /// Those of them that lie above `folder`: none when it is the root of a repository.
    GitIgnoreChain filesAbove(const std::string& folder);

private:
    struct Entry {
        FileDate date;
        std::uint64_t size = 0;
        FileIdentity identity;
        std::shared_ptr<const GitIgnoreFile> file;  // Null for a file that counts as absent.
    };

    bool isRepositoryRoot(const std::string& folder);
    std::shared_ptr<const GitIgnoreFile> parse(const std::string& folder, const std::string& path);

    FileSystem& fileSystem_;
    std::mutex lock_;
    std::unordered_map<std::string, Entry> parsedByPath_;  // Guarded by `lock_`.
};

}  // namespace tavrel
