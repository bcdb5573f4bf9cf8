#include "platform/PosixFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tavrel {

namespace {

tl::expected<void, int> outcome(int result)
{
    if (result < 0)
        return tl::unexpected(errno);
    return {};
}

template<typename Number>
tl::expected<std::size_t, int> byteCount(Number result)
{
    if (result < 0)
        return tl::unexpected(errno);
    return static_cast<std::size_t>(result);
}

/// A file system may hold any 64-bit seconds; those that do not fit are moved to the nearest date.
FileDate fileDate(const timespec& time)
{
    constexpr std::int64_t most =
        std::chrono::floor<std::chrono::seconds>(std::chrono::nanoseconds::max()).count() - 1;
    const std::int64_t seconds = std::clamp<std::int64_t>(time.tv_sec, -most, most);
    return FileDate(std::chrono::seconds(seconds) + std::chrono::nanoseconds(time.tv_nsec));
}

FileKind fileKind(mode_t mode)
{
    if (S_ISREG(mode))
        return FileKind::regular;
    if (S_ISDIR(mode))
        return FileKind::folder;
    return S_ISLNK(mode) ? FileKind::symbolicLink : FileKind::other;
}

tl::expected<FileStatus, int> fileStatus(int result, const struct stat& status)
{
    if (result < 0)
        return tl::unexpected(errno);
    return FileStatus{
        .kind = fileKind(status.st_mode),
        .size = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0)),
        .date = fileDate(status.st_mtim),
        .identity = {status.st_dev, status.st_ino},
        .mode = status.st_mode & 07777U,
        .linkCount = status.st_nlink,
        .owner = status.st_uid,
        .group = status.st_gid,
    };
}

/// Calls `read(buffer)` with ever larger buffers until the answer fits: its size may change between
/// asking for it and fetching it.
template<typename Read>
tl::expected<std::string, int> readGrowing(Read read)
{
    constexpr std::size_t most = 1 << 20;  // Linux gives at most 64 KiB.
    for (std::size_t size = 256; size <= most; size *= 4) {
        std::string buffer(size, '\0');
        const auto length = read(buffer);
        if (length >= 0 && static_cast<std::size_t>(length) < size) {
            buffer.resize(static_cast<std::size_t>(length));
            return buffer;
        }
        if (length < 0 && errno != ERANGE)
            return tl::unexpected(errno);
    }
    return tl::unexpected(E2BIG);
}

off_t offsetOf(std::uint64_t bytes)
{
    constexpr std::uint64_t most = std::numeric_limits<off_t>::max();
    return static_cast<off_t>(std::min(bytes, most));
}

}  // namespace

FileSystem::Result<int> PosixFileSystem::open(const Path& path, int flags, unsigned mode)
{
    const int descriptor = ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
    if (descriptor < 0)
        return tl::unexpected(errno);
    return descriptor;
}

FileSystem::Result<void> PosixFileSystem::close(int descriptor)
{
    return outcome(::close(descriptor));
}

FileSystem::Result<std::size_t> PosixFileSystem::read(int descriptor, std::span<char> buffer)
{
    return byteCount(::read(descriptor, buffer.data(), buffer.size()));
}

FileSystem::Result<std::size_t> PosixFileSystem::write(int descriptor, std::string_view bytes)
{
    return byteCount(::write(descriptor, bytes.data(), bytes.size()));
}

FileSystem::Result<void> PosixFileSystem::seek(int descriptor, std::uint64_t offset)
{
    if (::lseek(descriptor, offsetOf(offset), SEEK_SET) < 0)
        return tl::unexpected(errno);
    return {};
}

FileSystem::Result<void> PosixFileSystem::truncate(int descriptor, std::uint64_t size)
{
    return outcome(::ftruncate(descriptor, offsetOf(size)));
}

FileSystem::Result<void> PosixFileSystem::allocate(int descriptor, std::uint64_t size)
{
    // The call of Linux itself: the portable one writes zeros where the file system has no such
    // operation, and a writer wants to hear that instead.
    return outcome(::fallocate(descriptor, FALLOC_FL_KEEP_SIZE, 0, offsetOf(size)));
}

FileSystem::Result<void> PosixFileSystem::sync(int descriptor)
{
    return outcome(::fsync(descriptor));
}

FileSystem::Result<FileStatus> PosixFileSystem::status(int descriptor)
{
    struct stat status;
    return fileStatus(::fstat(descriptor, &status), status);
}

FileSystem::Result<FileStatus> PosixFileSystem::status(const Path& path)
{
    struct stat status;
    return fileStatus(::stat(path.c_str(), &status), status);
}

FileSystem::Result<FileStatus> PosixFileSystem::linkStatus(const Path& path)
{
    struct stat status;
    return fileStatus(::lstat(path.c_str(), &status), status);
}

FileSystem::Result<FileSystem::Path> PosixFileSystem::readLink(const Path& path)
{
    return readGrowing([&](std::string& buffer) {
               return ::readlink(path.c_str(), buffer.data(), buffer.size());
           })
        .map([](std::string target) { return Path(std::move(target)); });
}

FileSystem::Result<void> PosixFileSystem::checkWritable(const Path& path)
{
    return outcome(::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS));
}

FileSystem::Result<void> PosixFileSystem::setMode(int descriptor, unsigned mode)
{
    return outcome(::fchmod(descriptor, mode));
}

FileSystem::Result<void> PosixFileSystem::setOwner(int descriptor, unsigned owner, unsigned group)
{
    return outcome(::fchown(descriptor, owner, group));
}

FileSystem::Result<void> PosixFileSystem::setDate(int descriptor, FileDate date)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(date);
    const timespec times[] = {
        {0, UTIME_OMIT},
        {static_cast<time_t>(seconds.time_since_epoch().count()), (date - seconds).count()},
    };
    return outcome(::futimens(descriptor, times));
}

FileSystem::Result<std::vector<std::string>> PosixFileSystem::attributeNames(int descriptor)
{
    const Result<std::string> list = readGrowing([&](std::string& buffer) {
        return ::flistxattr(descriptor, buffer.data(), buffer.size());
    });
    if (!list)
        return tl::unexpected(list.error());
    std::vector<std::string> names;
    for (std::size_t start = 0; start < list->size();) {
        const std::size_t end = std::min(list->find('\0', start), list->size());
        names.push_back(list->substr(start, end - start));
        start = end + 1;
    }
    return names;
}

FileSystem::Result<std::string> PosixFileSystem::attribute(int descriptor, const std::string& name)
{
    return readGrowing([&](std::string& buffer) {
        return ::fgetxattr(descriptor, name.c_str(), buffer.data(), buffer.size());
    });
}

FileSystem::Result<void> PosixFileSystem::setAttribute(int descriptor, const std::string& name,
                                                       std::string_view value)
{
    return outcome(::fsetxattr(descriptor, name.c_str(), value.data(), value.size(), 0));
}

FileSystem::Result<void> PosixFileSystem::removeAttribute(int descriptor, const std::string& name)
{
    return outcome(::fremovexattr(descriptor, name.c_str()));
}

FileSystem::Result<void> PosixFileSystem::rename(const Path& from, const Path& to)
{
    return outcome(::rename(from.c_str(), to.c_str()));
}

FileSystem::Result<void> PosixFileSystem::exchange(const Path& one, const Path& other)
{
    return outcome(::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE));
}

FileSystem::Result<void> PosixFileSystem::makeFolder(const Path& path, unsigned mode)
{
    return outcome(::mkdir(path.c_str(), mode));
}

FileSystem::Result<void> PosixFileSystem::remove(const Path& path)
{
    return outcome(::unlink(path.c_str()));
}

}  // namespace tavrel
