#pragma once

#include <filesystem>
#include <vector>

namespace tavrel {

/// What a folder watch tells. Called on the main thread.
class FolderWatchDelegate {
public:
    virtual ~FolderWatchDelegate() = default;

    /// An entry of `folder` was made, removed, renamed or written, or the folder itself has gone.
    /// Several changes may come as one call.
    virtual void folderDidChange(const std::filesystem::path& folder) = 0;

    /// The system has no watches left: some of the folders are not watched. Told once.
    virtual void folderWatchDidRunOut() = 0;
};

/// Tells when something changes in any of a set of folders; what lies deeper is not looked at.
/// Main thread only.
class FolderWatch {
public:
    virtual ~FolderWatch() = default;

    /// The folders to watch from now on, in place of those before: the ones most wanted first, in
    /// case watches run out. Absolute paths; what is no folder, or no longer one, is left out.
    /// Costs a system call for each folder that comes or goes.
    virtual void setFolders(const std::vector<std::filesystem::path>& folders) = 0;
};

}  // namespace tavrel
