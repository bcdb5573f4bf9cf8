#include "platform/InPlaceWrite.h"

#include "platform/OpenFile.h"
#include "platform/TemporaryFile.h"

#include <fcntl.h>

namespace tavrel {

namespace {

using Outcome = tl::expected<void, FileError>;

/// The bytes of a file, copied to another one that goes with this object.
class AsideCopy {
public:
    /// Beside the file if possible, because the copy then outlives a power failure, else in
    /// `asideFolder`.
    static tl::expected<AsideCopy, FileError> make(OpenFile& original,
                                                   const std::filesystem::path& path,
                                                   const std::filesystem::path& asideFolder)
    {
        const std::filesystem::path folder =
            path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
        auto copy = makeIn(folder, original, path);
        if (copy || asideFolder.empty())
            return copy;
        return makeIn(asideFolder, original, path);
    }

    Outcome putBack(OpenFile& original)
    {
        return original.seek(0)
            .and_then([&] { return copy_.file().seek(0); })
            .and_then([&] { return copyBytes(copy_.file(), original); })
            .and_then([&](std::uint64_t) { return original.truncate(size_); })
            .and_then([&] { return original.sync(); });
    }

    /// Leaves the copy where it is, and answers where that is.
    std::filesystem::path keep()
    {
        std::filesystem::path path = copy_.path();
        copy_.keep();
        return path;
    }

private:
    AsideCopy(TemporaryFile copy, std::uint64_t size) : copy_(std::move(copy)), size_(size) {}

    static tl::expected<AsideCopy, FileError> makeIn(const std::filesystem::path& folder,
                                                     OpenFile& original,
                                                     const std::filesystem::path& path)
    {
        auto copy =
            TemporaryFile::create(original.fileSystem(), folder, path.filename().string(), 0600);
        if (!copy)
            return tl::unexpected(copy.error());
        const auto size =
            original.seek(0).and_then([&] { return copyBytes(original, copy->file()); });
        if (!size)
            return tl::unexpected(size.error());
        if (const Outcome synced = copy->file().sync(); !synced)
            return tl::unexpected(synced.error());
        return AsideCopy(std::move(*copy), *size);
    }

    TemporaryFile copy_;
    std::uint64_t size_;
};

tl::expected<FileStatus, FileError> overwrite(OpenFile& file, const NewContents& contents)
{
    return file.seek(0)
        .and_then([&] { return contents.write(file); })
        .and_then([&](std::uint64_t size) { return file.truncate(size); })
        .and_then([&] { return file.sync(); })
        .and_then([&] { return file.status(); });
}

/// The file with its old bytes is the old file: nobody should take it for a changed one.
void restoreDate(OpenFile& file, FileDate date)
{
    file.fileSystem().setDate(file.descriptor(), date);
}

}  // namespace

tl::expected<FileStatus, FileError> writeFileInPlace(FileSystem& fileSystem,
                                                     const std::filesystem::path& path,
                                                     const NewContents& contents,
                                                     const std::filesystem::path& asideFolder)
{
    // O_NONBLOCK: a pipe that has taken the name meanwhile must not make us wait for its reader.
    auto file = OpenFile::open(fileSystem, path, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
    if (!file)
        return tl::unexpected(file.error());
    const auto before = file->status();
    if (!before)
        return tl::unexpected(before.error());
    if (before->kind != FileKind::regular)
        return tl::unexpected(notARegularFileError());

    // The copy first: on a disk that is nearly full it must not get what the new bytes need.
    auto aside = AsideCopy::make(*file, path, asideFolder);
    if (!aside)
        return tl::unexpected(aside.error());
    if (const Outcome room = file->allocate(contents.byteCount.value_or(0)); !room) {
        file->truncate(before->size);  // Gives back the part that was set aside behind the end.
        restoreDate(*file, before->date);
        return tl::unexpected(room.error());
    }

    const auto after = overwrite(*file, contents);
    if (after)
        return *after;  // All is on the disk: closing has nothing left to report.
    FileError error = after.error();
    if (const Outcome restored = aside->putBack(*file); restored)
        restoreDate(*file, before->date);
    else
        error.message += "; the old contents are kept in " + aside->keep().string();
    return tl::unexpected(error);
}

}  // namespace tavrel
