#pragma once

#include "platform/FileError.h"

#include <filesystem>
#include <string_view>
#include <tl/expected.hpp>

namespace tavrel {

class FileSystem;

/// Our own description of the terminal under the name "xterm-256color", compiled, for the programs
/// that run in it. Valid for good.
std::string_view terminfoEntry();

/// Writes the description below a new folder "terminfo" in `folder`, which is to be private, and
/// answers that folder, the value for the variable TERMINFO. Nobody else may read it.
tl::expected<std::filesystem::path, FileError> writeTerminfo(FileSystem& fileSystem,
                                                             const std::filesystem::path& folder);

}  // namespace tavrel
