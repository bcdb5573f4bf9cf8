#include "platform/FolderReader.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace tavrel {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

FileKind kindOfMode(mode_t mode)
{
    if (S_ISREG(mode))
        return FileKind::regular;
    if (S_ISDIR(mode))
        return FileKind::folder;
    return S_ISLNK(mode) ? FileKind::symbolicLink : FileKind::other;
}

/// Most file systems say the kind with the name; the others have to be asked for each.
FileKind kindOf(const dirent& entry, int folder)
{
    switch (entry.d_type) {
    case DT_REG:
        return FileKind::regular;
    case DT_DIR:
        return FileKind::folder;
    case DT_LNK:
        return FileKind::symbolicLink;
    case DT_UNKNOWN: {
        struct stat status {};
        return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0
                   ? kindOfMode(status.st_mode)
                   : FileKind::other;
    }
    default:
        return FileKind::other;
    }
}

}  // namespace

tl::expected<std::vector<FolderEntry>, FileError> readFolder(const std::string& path)
{
    if (path.find('\0') != std::string::npos)
        return tl::unexpected(fileError(EINVAL));
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return tl::unexpected(fileError(errno));
    const std::unique_ptr<DIR, CloseFolder> folder(::fdopendir(descriptor));
    if (!folder) {
        const int code = errno;
        ::close(descriptor);
        return tl::unexpected(fileError(code));
    }
    std::vector<FolderEntry> entries;
    errno = 0;
    while (const dirent* entry = ::readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            entries.push_back({std::string(name), kindOf(*entry, descriptor)});
        errno = 0;
    }
    if (errno != 0)
        return tl::unexpected(fileError(errno));
    return entries;
}

}  // namespace tavrel
