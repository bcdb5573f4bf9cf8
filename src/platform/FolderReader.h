#pragma once

#include "platform/FileError.h"
#include "platform/FileStatus.h"

#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace tavrel {

struct FolderEntry {
    std::string name;                 // Bytes as the file system has them.
    FileKind kind = FileKind::other;  // Of the entry itself: a link is not followed.
};

/// The entries of the folder at `path`, without "." and "..", in the order of the file system.
/// An entry that vanishes meanwhile may be missing or of the kind `other`.
tl::expected<std::vector<FolderEntry>, FileError> readFolder(const std::string& path);

}  // namespace tavrel
