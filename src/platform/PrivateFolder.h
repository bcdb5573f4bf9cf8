#pragma once

#include "platform/FileError.h"

#include <tl/expected.hpp>

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace tavrel {

class FileSystem;

/// The process's own folder for temporary files, which nobody else can look into.
///
/// Removed with all its contents by the destructor, in the process that made it. Creating files is
/// allowed on any thread.
class PrivateFolder {
public:
    /// Makes a folder of mode 0700 under a name that nobody can guess, in `runtimeFolder` where
    /// that is an absolute path that works, else in `temporaryFolder`. `fileSystem` must outlive
    /// the object.
    static tl::expected<PrivateFolder, FileError>
    create(FileSystem& fileSystem, const std::filesystem::path& runtimeFolder,
           const std::filesystem::path& temporaryFolder);

    PrivateFolder(PrivateFolder&& other) noexcept;
    PrivateFolder& operator=(PrivateFolder&&) = delete;
    ~PrivateFolder();

    /// Absolute; the last component is "TavrelCode".
    const std::filesystem::path& path() const { return path_; }

    /// Makes a file of mode 0600. `EEXIST` when there is one of that name, `EINVAL` when `name` is
    /// not a plain file name. Nothing is left behind after a failure.
    tl::expected<std::filesystem::path, FileError> createFile(const std::string& name,
                                                              std::string_view bytes);

private:
    PrivateFolder(FileSystem& fileSystem, std::filesystem::path path);

    FileSystem& fileSystem_;
    std::filesystem::path path_;  // Empty once moved from.
    pid_t process_;               // A child made by fork must not remove its parent's files.
};

}  // namespace tavrel
