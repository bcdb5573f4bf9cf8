#include "editor/DocumentFiles.h"

#include "platform/FileSystem.h"

#include <utility>

namespace tavrel {

std::filesystem::path DocumentFiles::standardised(const std::filesystem::path& path)
{
    return path.lexically_normal();
}

std::shared_ptr<EditorDocument> DocumentFiles::documentOf(const std::filesystem::path& path,
                                                          LoadedText loaded)
{
    auto document = std::make_shared<EditorDocument>(standardised(path), std::move(loaded.text));
    document->diskStatus = loaded.status;
    return document;
}

tl::expected<std::shared_ptr<EditorDocument>, FileError>
DocumentFiles::open(const std::filesystem::path& path) const
{
    // What is read is what will be written: behind a link ".." may lead elsewhere.
    const std::filesystem::path url = standardised(path);
    LoadResult loaded = readDocument(fileSystem_, url);
    if (!loaded)
        return tl::unexpected(loaded.error());
    return documentOf(url, std::move(*loaded));
}

std::optional<FileIdentity> DocumentFiles::identity(const std::filesystem::path& path) const
{
    const auto status = fileSystem_.status(path);
    return status ? std::optional(status->identity) : std::nullopt;
}

std::optional<FileStatus> DocumentFiles::changeOnDisk(const EditorDocument& document) const
{
    if (!document.url)
        return std::nullopt;
    const auto present = fileSystem_.status(*document.url);
    if (!present)
        return std::nullopt;
    const std::optional<FileStatus>& known = document.diskStatus;
    // Two changes in quick succession may bear one date.
    const bool isTheKnownOne = known && present->date == known->date &&
                               present->identity == known->identity && present->size == known->size;
    return isTheKnownOne ? std::nullopt : std::optional(*present);
}

DocumentFiles::Reload DocumentFiles::reload(EditorDocument& document) const
{
    LoadResult loaded = readDocument(fileSystem_, *document.url);
    if (!loaded)
        return Reload::unreadable;
    document.setText(loaded->text);
    document.history().clear();
    document.diskStatus = loaded->status;
    document.isModified = false;
    document.postDidChange(nullptr, true);
    return Reload::done;
}

tl::expected<void, FileError> DocumentFiles::write(EditorDocument& document,
                                                   const std::filesystem::path& path) const
{
    const auto written = writeDocument(fileSystem_, path, document.text(), asideFolder_);
    if (!written)
        return tl::unexpected(written.error());
    didWrite(document, path, *written);
    return {};
}

void DocumentFiles::didWrite(EditorDocument& document, const std::filesystem::path& path,
                             const FileStatus& status)
{
    document.url = path;
    document.isModified = false;
    document.diskStatus = status;
}

}  // namespace tavrel
