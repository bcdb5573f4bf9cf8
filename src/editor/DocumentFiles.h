#pragma once

#include "editor/DocumentFile.h"
#include "editor/EditorDocument.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace tavrel {

/// What documents and files have to do with each other, without a word to the user: making a
/// document of a file, writing it, reading it anew, telling whether the file is still the one
/// known.
///
/// Borrows the file system. Main thread only.
class DocumentFiles {
public:
    /// `asideFolder` as for `writeFileAtomically`.
    explicit DocumentFiles(FileSystem& fileSystem, std::filesystem::path asideFolder = {})
        : fileSystem_(fileSystem), asideFolder_(std::move(asideFolder))
    {
    }

    /// The form in which paths are kept and compared: without "." and "..", links not followed.
    static std::filesystem::path standardised(const std::filesystem::path& path);
    static std::shared_ptr<EditorDocument> documentOf(const std::filesystem::path& path,
                                                      LoadedText loaded);

    tl::expected<std::shared_ptr<EditorDocument>, FileError>
    open(const std::filesystem::path& path) const;

    /// Which file a path leads to; absent where there is none.
    std::optional<FileIdentity> identity(const std::filesystem::path& path) const;

    /// The status of the document's file where it is not the one that was last read or written: any
    /// other date, also an earlier one, or another size, or another file of that name, or one where
    /// there was none.
    /// Absent for a document without a file, and for a file that has gone.
    std::optional<FileStatus> changeOnDisk(const EditorDocument& document) const;

    enum class Reload { done, unreadable };
    /// Reads the document's file anew, which drops the history and what was modified. A file that
    /// cannot be read leaves everything as it is.
    Reload reload(EditorDocument& document) const;

    /// Writes the text to `path`, which becomes the document's file. Does not tell the observers.
    tl::expected<void, FileError> write(EditorDocument& document,
                                        const std::filesystem::path& path) const;
    /// Notes that the document stands in that file as it is.
    static void didWrite(EditorDocument& document, const std::filesystem::path& path,
                         const FileStatus& status);

private:
    FileSystem& fileSystem_;
    std::filesystem::path asideFolder_;
};

}  // namespace tavrel
