#include "platform/PrivateFolder.h"

#include "platform/OpenFile.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tavrel {

namespace {

tl::expected<std::filesystem::path, FileError> makeFolder(const std::filesystem::path& parent)
{
    std::string outer = (parent / "tavrel-XXXXXX").string();
    if (!mkdtemp(outer.data()))
        return tl::unexpected(fileError(errno));
    std::filesystem::path inner = std::filesystem::path(outer) / "TavrelCode";
    if (mkdir(inner.c_str(), 0700) == 0)
        return inner;
    const int code = errno;
    rmdir(outer.c_str());
    return tl::unexpected(fileError(code));
}

bool isPlainName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

}  // namespace

tl::expected<PrivateFolder, FileError>
PrivateFolder::create(FileSystem& fileSystem, const std::filesystem::path& runtimeFolder,
                      const std::filesystem::path& temporaryFolder)
{
    if (runtimeFolder.is_absolute()) {
        if (const auto path = makeFolder(runtimeFolder))
            return PrivateFolder(fileSystem, *path);
    }
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::absolute(temporaryFolder, error);
    if (error)
        return tl::unexpected(fileError(error.value()));
    return makeFolder(parent).map(
        [&](const std::filesystem::path& path) { return PrivateFolder(fileSystem, path); });
}

PrivateFolder::PrivateFolder(FileSystem& fileSystem, std::filesystem::path path)
    : fileSystem_(fileSystem), path_(std::move(path)), process_(getpid())
{
}

PrivateFolder::PrivateFolder(PrivateFolder&& other) noexcept
    : fileSystem_(other.fileSystem_), path_(std::exchange(other.path_, {})),
      process_(other.process_)
{
}

PrivateFolder::~PrivateFolder()
{
    std::error_code ignored;
    if (!path_.empty() && process_ == getpid())
        std::filesystem::remove_all(path_.parent_path(), ignored);
}

tl::expected<std::filesystem::path, FileError> PrivateFolder::createFile(const std::string& name,
                                                                         std::string_view bytes)
{
    if (!isPlainName(name))
        return tl::unexpected(fileError(EINVAL));
    std::filesystem::path path = path_ / name;
    auto file = OpenFile::open(fileSystem_, path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
    if (!file)
        return tl::unexpected(file.error());
    const auto written = file->writeAll(bytes).and_then([&] { return file->close(); });
    if (!written) {
        fileSystem_.remove(path);
        return tl::unexpected(written.error());
    }
    return path;
}

}  // namespace tavrel
