#include "platform/TemporaryFile.h"

#include <cerrno>
#include <fcntl.h>
#include <random>
#include <string_view>
#include <utility>

namespace tavrel {

namespace {

constexpr std::size_t longestName = 255;  // Bytes, on every file system of Linux.
constexpr std::string_view suffixMark = ".XXXXXX";

/// The part of `name` that leaves room for the dot before it and the suffix behind it. Whole UTF-8
/// characters, because some file systems take nothing else.
std::string shortened(const std::string& name)
{
    std::size_t length = std::min(name.size(), longestName - 1 - suffixMark.size());
    while (length > 0 && length < name.size() && (name[length] & 0xC0) == 0x80)
        --length;
    return name.substr(0, length);
}

}  // namespace

std::string randomSuffix()
{
    static constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device source;
    std::uniform_int_distribution<std::size_t> index(0, letters.size() - 1);
    std::string suffix;
    for (std::size_t i = 1; i < suffixMark.size(); ++i)
        suffix += letters[index(source)];
    return suffix;
}

tl::expected<TemporaryFile, FileError> TemporaryFile::create(FileSystem& fileSystem,
                                                             const std::filesystem::path& folder,
                                                             const std::string& name, unsigned mode)
{
    constexpr int mostTries = 100;
    const std::string start = "." + shortened(name) + ".";
    FileError error = fileError(EEXIST);
    for (int i = 0; i < mostTries && error.code == EEXIST; ++i) {
        std::filesystem::path path = folder / (start + randomSuffix());
        auto file = OpenFile::open(fileSystem, path, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
        if (file)
            return TemporaryFile(std::move(*file), std::move(path));
        error = file.error();
    }
    return tl::unexpected(error);
}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : file_(std::move(other.file_)), path_(std::exchange(other.path_, {}))
{
}

TemporaryFile::~TemporaryFile()
{
    if (!path_.empty())
        file_.fileSystem().remove(path_);
}

}  // namespace tavrel
