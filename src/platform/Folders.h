#pragma once

#include "platform/FileError.h"

#include <tl/expected.hpp>

#include <filesystem>

namespace tavrel {

class FileSystem;

/// Makes the folder at `path` and those above it that are missing, with the mode that the process's
/// mask gives them. Nothing to do where it stands already, or a symbolic link to it does. Fails
/// with the system's reason; `ENOTDIR` where something else has the name. Folders made before a
/// failure stay.
tl::expected<void, FileError> makeFolders(FileSystem& fileSystem,
                                          const std::filesystem::path& path);

/// Whether `path` leads to a folder, through symbolic links.
bool isFolder(FileSystem& fileSystem, const std::filesystem::path& path);

}  // namespace tavrel
