#include "platform/OpenFile.h"

#include <cerrno>
#include <utility>
#include <vector>

namespace tavrel {

namespace {

/// The result of `call`, made again as long as a signal interrupts it.
template<typename Call>
auto uninterrupted(Call call)
{
    auto result = call();
    while (!result && result.error() == EINTR)
        result = call();
    return std::move(result).map_error(fileError);
}

}  // namespace

OpenFile::Result<OpenFile> OpenFile::open(FileSystem& fileSystem, const std::filesystem::path& path,
                                          int flags, unsigned mode)
{
    // The system would see the path end at the NUL, and open another file.
    if (path.native().find('\0') != std::string::npos)
        return tl::unexpected(fileError(EINVAL));
    return uninterrupted([&] { return fileSystem.open(path, flags, mode); })
        .map([&](int descriptor) { return OpenFile(fileSystem, descriptor); });
}

OpenFile::OpenFile(OpenFile&& other) noexcept
    : fileSystem_(other.fileSystem_), descriptor_(std::exchange(other.descriptor_, -1))
{
}

OpenFile& OpenFile::operator=(OpenFile&& other) noexcept
{
    std::swap(fileSystem_, other.fileSystem_);
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

OpenFile::~OpenFile()
{
    if (descriptor_ >= 0)
        fileSystem_->close(descriptor_);
}

OpenFile::Result<FileStatus> OpenFile::status() const
{
    return fileSystem_->status(descriptor_).map_error(fileError);
}

OpenFile::Result<std::size_t> OpenFile::read(std::span<char> buffer)
{
    return uninterrupted([&] { return fileSystem_->read(descriptor_, buffer); });
}

OpenFile::Result<void> OpenFile::writeAll(std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = uninterrupted([&] { return fileSystem_->write(descriptor_, bytes); });
        if (!written)
            return tl::unexpected(written.error());
        // A regular file takes at least one byte or fails; this keeps a broken one from hanging us.
        if (*written == 0)
            return tl::unexpected(fileError(EIO));
        bytes.remove_prefix(*written);
    }
    return {};
}

OpenFile::Result<void> OpenFile::seek(std::uint64_t offset)
{
    return fileSystem_->seek(descriptor_, offset).map_error(fileError);
}

OpenFile::Result<void> OpenFile::truncate(std::uint64_t size)
{
    return uninterrupted([&] { return fileSystem_->truncate(descriptor_, size); });
}

OpenFile::Result<void> OpenFile::allocate(std::uint64_t size)
{
    if (size == 0)
        return {};
    const auto allocated = uninterrupted([&] { return fileSystem_->allocate(descriptor_, size); });
    if (!allocated && allocated.error().code != EOPNOTSUPP && allocated.error().code != ENOSYS)
        return allocated;
    return {};
}

OpenFile::Result<void> OpenFile::sync()
{
    return uninterrupted([&] { return fileSystem_->sync(descriptor_); });
}

OpenFile::Result<void> OpenFile::close()
{
    const auto closed = fileSystem_->close(std::exchange(descriptor_, -1));
    // Linux has given the descriptor back even when it answers EINTR; closing again could hit a
    // file that another thread has opened meanwhile.
    if (!closed && closed.error() != EINTR)
        return tl::unexpected(fileError(closed.error()));
    return {};
}

tl::expected<std::uint64_t, FileError> copyBytes(OpenFile& from, OpenFile& to)
{
    constexpr std::size_t pieceSize = 256 * 1024;
    std::vector<char> buffer(pieceSize);
    std::uint64_t total = 0;
    for (;;) {
        const auto count = from.read(buffer);
        if (!count)
            return tl::unexpected(count.error());
        if (*count == 0)
            return total;
        if (const auto written = to.writeAll({buffer.data(), *count}); !written)
            return tl::unexpected(written.error());
        total += *count;
    }
}

}  // namespace tavrel
