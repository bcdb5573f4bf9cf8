#include "platform/Folders.h"

#include "platform/FileSystem.h"

#include <cerrno>
#include <vector>

namespace tavrel {

tl::expected<void, FileError> makeFolders(FileSystem& fileSystem, const std::filesystem::path& path)
{
    // Upwards to the first folder that is there, then down again.
    std::vector<std::filesystem::path> missing;
    for (std::filesystem::path folder = path;; folder = folder.parent_path()) {
        const auto status = fileSystem.status(folder);
        if (status && status->kind == FileKind::folder)
            break;
        if (status)
            return tl::unexpected(fileError(ENOTDIR));
        if (status.error() != ENOENT || !folder.has_relative_path())
            return tl::unexpected(fileError(status.error()));
        missing.push_back(folder);
        if (!folder.has_parent_path())
            break;
    }
    for (auto folder = missing.rbegin(); folder != missing.rend(); ++folder) {
        constexpr unsigned mode = 0777;  // Less what the process's mask takes away.
        const auto made = fileSystem.makeFolder(*folder, mode);
        // Somebody else may have been faster.
        if (!made && (made.error() != EEXIST || !isFolder(fileSystem, *folder)))
            return tl::unexpected(fileError(made.error()));
    }
    return {};
}

bool isFolder(FileSystem& fileSystem, const std::filesystem::path& path)
{
    const auto status = fileSystem.status(path);
    return status && status->kind == FileKind::folder;
}

}  // namespace tavrel
