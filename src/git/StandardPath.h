#pragma once

#include <string>
#include <string_view>

namespace tavrel {

// Paths as strings of bytes. A path in standard form is absolute, has no "." and ".." in it, no
// two slashes in a row, and none at its end unless it is "/".

/// The standard form of an absolute path, found without a look at the disk; empty for any other.
std::string standardPath(std::string_view path);

/// The path of the folder that holds the one at `path`, both in standard form; "/" for "/".
std::string parentPath(std::string_view path);

/// The path of `name` in `folder`.
std::string pathInFolder(std::string_view folder, std::string_view name);

/// Whether `path` is `folder` or lies somewhere below it.
bool isWithin(std::string_view path, std::string_view folder);

}  // namespace tavrel
