#pragma once

#include "editor/TextSnapshot.h"
#include "platform/FileError.h"
#include "platform/FileStatus.h"

#include <tl/expected.hpp>

#include <filesystem>

namespace tavrel {

class FileSystem;

/// A file that has been read as a document.
struct LoadedText {
    TextSnapshot text;
    FileStatus status;
};

using LoadResult = tl::expected<LoadedText, FileError>;

/// Reads a file as UTF-8. Nothing is refused for its contents: invalid bytes show as U+FFFD and are
/// remembered, so that saving gives them back. May be called on any thread.
LoadResult readDocument(FileSystem& fileSystem, const std::filesystem::path& path);

/// Writes the text as UTF-8, atomically, and tells the file's status after that. A failure leaves
/// the old file whole. `asideFolder` as for `writeFileAtomically`.
tl::expected<FileStatus, FileError> writeDocument(FileSystem& fileSystem,
                                                  const std::filesystem::path& path,
                                                  const TextSnapshot& text,
                                                  const std::filesystem::path& asideFolder = {});

}  // namespace tavrel
