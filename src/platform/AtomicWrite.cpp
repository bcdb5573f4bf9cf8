#include "platform/AtomicWrite.h"

#include "platform/InPlaceWrite.h"
#include "platform/OpenFile.h"
#include "platform/TemporaryFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <utility>
#include <vector>

namespace tavrel {

namespace {

using Outcome = tl::expected<void, FileError>;
using Path = std::filesystem::path;

/// Where the bytes are to go, behind all symbolic links.
struct Target {
    Path path;
    std::optional<FileStatus> status;  // Absent when there is no such file yet.
};

tl::expected<Target, FileError> resolved(FileSystem& fileSystem, Path path)
{
    constexpr int mostLinks = 40;  // As many as the kernel follows.
    for (int i = 0; i <= mostLinks; ++i) {
        if (path.native().find('\0') != std::string::npos)
            return tl::unexpected(fileError(EINVAL));
        const auto status = fileSystem.linkStatus(path);
        if (!status && status.error() != ENOENT)
            return tl::unexpected(fileError(status.error()));
        if (!status && path.empty())
            return tl::unexpected(fileError(ENOENT));
        if (!status && !path.has_filename())
            return tl::unexpected(fileError(EISDIR));
        if (!status)
            return Target{path, std::nullopt};
        if (status->kind != FileKind::symbolicLink)
            return Target{path, *status};
        const auto next = fileSystem.readLink(path);
        if (!next)
            return tl::unexpected(fileError(next.error()));
        path = path.parent_path() / *next;
    }
    return tl::unexpected(fileError(ELOOP));
}

Path folderOf(const Path& path)
{
    return path.has_parent_path() ? path.parent_path() : Path(".");
}

/// Attributes that tell what the old bytes were good for, not who may do what with the file.
bool belongsToBytes(const std::string& attribute)
{
    static constexpr std::array names{"security.capability", "security.ima", "security.evm"};
    return std::find(names.begin(), names.end(), attribute) != names.end();
}

/// Labels of the security module, which gives the new file its own where we may not.
bool isForgiven(const std::string& attribute, int code)
{
    return code == ENOTSUP || (attribute.starts_with("security.") && code != ENOSPC);
}

bool contains(const std::vector<std::string>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Gives `to` the extended attributes of `from`, and takes away those that it was born with: the
/// folder's default access control list must not let in anyone whom the old file kept out.
FileSystem::Result<void> copyAttributes(OpenFile& from, OpenFile& to)
{
    FileSystem& fileSystem = from.fileSystem();
    const auto names = fileSystem.attributeNames(from.descriptor());
    if (!names && names.error() == ENOTSUP)
        return {};
    if (!names)
        return tl::unexpected(names.error());
    const auto inborn = fileSystem.attributeNames(to.descriptor());
    if (!inborn)
        return tl::unexpected(inborn.error());

    for (const std::string& name : *inborn) {
        if (contains(*names, name))
            continue;
        const auto removed = fileSystem.removeAttribute(to.descriptor(), name);
        if (!removed && !isForgiven(name, removed.error()))
            return removed;
    }
    for (const std::string& name : *names) {
        if (belongsToBytes(name))
            continue;
        const auto value = fileSystem.attribute(from.descriptor(), name);
        if (!value && value.error() == ENODATA)
            continue;  // Gone since the names were listed.
        const auto copied = value.and_then([&](const std::string& bytes) {
            return fileSystem.setAttribute(to.descriptor(), name, bytes);
        });
        if (!copied && !isForgiven(name, copied.error()))
            return copied;
    }
    return {};
}

/// Makes the temporary file belong to the same people as the old one. Its mode comes last, with
/// the bytes inside: until then only its owner reads it.
Outcome takeOverOwnership(OpenFile& from, OpenFile& to, const FileStatus& old)
{
    const auto born = to.status();
    if (!born)
        return tl::unexpected(born.error());
    if (born->owner != old.owner || born->group != old.group) {
        const auto owned = to.fileSystem().setOwner(to.descriptor(), old.owner, old.group);
        if (!owned)
            return tl::unexpected(fileError(owned.error()));
    }
    return copyAttributes(from, to).map_error(fileError);
}

/// Writes the bytes of `source` to where `file` stands, and answers how many they were.
tl::expected<std::uint64_t, FileError> writeAll(OpenFile& file, const ByteSource& source)
{
    std::uint64_t size = 0;
    for (std::string_view piece = source.next(); !piece.empty(); piece = source.next()) {
        if (const Outcome written = file.writeAll(piece); !written)
            return tl::unexpected(written.error());
        size += piece.size();
    }
    return size;
}

/// Fills a temporary file and brings it to the disk under its temporary name.
tl::expected<FileStatus, FileError> fill(OpenFile& file, const ByteSource& source,
                                         std::optional<unsigned> mode)
{
    auto setMode = [&]() -> Outcome {
        if (!mode)
            return {};
        return file.fileSystem().setMode(file.descriptor(), *mode).map_error(fileError);
    };
    const auto status = file.allocate(source.byteCount.value_or(0))
                            .and_then([&] { return writeAll(file, source); })
                            .and_then([&](std::uint64_t size) { return file.truncate(size); })
                            .and_then(setMode)
                            .and_then([&] { return file.sync(); })
                            .and_then([&] { return file.status(); });
    if (!status)
        return status;
    return file.close().map([&] { return *status; });
}

/// A folder that we may not read, or whose file system knows no such thing, cannot be synced, and
/// need not be.
Outcome syncFolder(FileSystem& fileSystem, const Path& path)
{
    auto folder = OpenFile::open(fileSystem, path, O_RDONLY | O_DIRECTORY);
    if (!folder && folder.error().code == EACCES)
        return {};
    if (!folder)
        return tl::unexpected(folder.error());
    const Outcome synced = folder->sync();
    if (!synced && synced.error().code != EINVAL && synced.error().code != ENOTSUP)
        return synced;
    return {};
}

tl::expected<FileStatus, FileError> writeNewFile(FileSystem& fileSystem, const Path& path,
                                                 const ByteSource& source)
{
    // Born with the mode of every new file: the mask and the folder's default list apply.
    auto temporary =
        TemporaryFile::create(fileSystem, folderOf(path), path.filename().string(), 0666);
    if (!temporary)
        return tl::unexpected(temporary.error());
    const auto status = fill(temporary->file(), source, std::nullopt);
    if (!status)
        return status;
    if (const auto renamed = fileSystem.rename(temporary->path(), path); !renamed)
        return tl::unexpected(fileError(renamed.error()));
    temporary->keep();
    if (const Outcome synced = syncFolder(fileSystem, folderOf(path)); !synced) {
        fileSystem.remove(path);
        return tl::unexpected(synced.error());
    }
    return status;
}

/// A temporary file beside `path` that belongs to the same people as the file there, or nothing
/// where that cannot be had and the file must be written in place.
tl::expected<std::optional<TemporaryFile>, FileError>
replacementFor(FileSystem& fileSystem, const Path& path, const FileStatus& old)
{
    if (old.linkCount > 1)
        return std::nullopt;
    auto temporary =
        TemporaryFile::create(fileSystem, folderOf(path), path.filename().string(), 0600);
    if (!temporary) {
        const int code = temporary.error().code;
        if (code == EACCES || code == EPERM || code == EROFS)
            return std::nullopt;
        return tl::unexpected(temporary.error());
    }
    auto original = OpenFile::open(fileSystem, path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    if (!original || !takeOverOwnership(*original, temporary->file(), old))
        return std::nullopt;
    return std::optional<TemporaryFile>(std::move(*temporary));
}

enum class Placed {
    swapped,  // The old file has the temporary name now.
    renamed,  // The old file is gone.
};

/// Gives the new file the name of the old one.
FileSystem::Result<Placed> moveOver(const TemporaryFile& temporary, const Path& path,
                                    FileSystem& fileSystem)
{
    const auto swapped = fileSystem.exchange(temporary.path(), path);
    if (swapped)
        return Placed::swapped;
    const int code = swapped.error();
    if (code != EINVAL && code != ENOSYS && code != ENOENT)
        return tl::unexpected(code);
    return fileSystem.rename(temporary.path(), path).map([] { return Placed::renamed; });
}

/// A mount point, or a name in a folder where everybody may remove his own files only.
bool forbidsReplacing(int code)
{
    return code == EBUSY || code == EPERM || code == EACCES || code == EXDEV;
}

/// Writes what a file holds over another one.
tl::expected<FileStatus, FileError> copyInPlace(FileSystem& fileSystem, const Path& from,
                                                const FileStatus& status, const Path& to,
                                                const Path& asideFolder)
{
    auto bytes = OpenFile::open(fileSystem, from, O_RDONLY | O_NOFOLLOW);
    if (!bytes)
        return tl::unexpected(bytes.error());
    const NewContents contents{[&](OpenFile& file) { return copyBytes(*bytes, file); },
                               status.size};
    return writeFileInPlace(fileSystem, to, contents, asideFolder);
}

tl::expected<FileStatus, FileError> replace(FileSystem& fileSystem, TemporaryFile temporary,
                                            const Path& path, const FileStatus& old,
                                            const ByteSource& source, const Path& asideFolder)
{
    const auto status = fill(temporary.file(), source, old.mode);
    if (!status)
        return status;
    const auto placed = moveOver(temporary, path, fileSystem);
    if (!placed && forbidsReplacing(placed.error()))
        return copyInPlace(fileSystem, temporary.path(), *status, path, asideFolder);
    if (!placed)
        return tl::unexpected(fileError(placed.error()));
    if (*placed == Placed::renamed)
        temporary.keep();
    const Outcome synced = syncFolder(fileSystem, folderOf(path));
    if (synced)
        return status;
    if (*placed == Placed::swapped && !fileSystem.exchange(temporary.path(), path) &&
        fileSystem.rename(temporary.path(), path))
        temporary.keep();
    return tl::unexpected(synced.error());
}

}  // namespace

ByteSource byteSource(std::string_view bytes)
{
    auto next = [left = bytes]() mutable { return std::exchange(left, std::string_view()); };
    return {std::move(next), bytes.size()};
}

tl::expected<FileStatus, FileError> writeFileAtomically(FileSystem& fileSystem, const Path& path,
                                                        const ByteSource& source,
                                                        const Path& asideFolder)
{
    const auto target = resolved(fileSystem, path);
    if (!target)
        return tl::unexpected(target.error());
    if (!target->status)
        return writeNewFile(fileSystem, target->path, source);
    if (target->status->kind == FileKind::folder)
        return tl::unexpected(fileError(EISDIR));
    if (target->status->kind != FileKind::regular)
        return tl::unexpected(notARegularFileError());
    if (const auto writable = fileSystem.checkWritable(target->path); !writable)
        return tl::unexpected(fileError(writable.error()));

    auto temporary = replacementFor(fileSystem, target->path, *target->status);
    if (!temporary)
        return tl::unexpected(temporary.error());
    if (*temporary)
        return replace(fileSystem, std::move(**temporary), target->path, *target->status, source,
                       asideFolder);
    const NewContents contents{[&](OpenFile& file) { return writeAll(file, source); },
                               source.byteCount};
    return writeFileInPlace(fileSystem, target->path, contents, asideFolder);
}

}  // namespace tavrel
