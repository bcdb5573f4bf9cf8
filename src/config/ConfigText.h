#pragma once

#include "platform/FileError.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace tavrel {

class FileSystem;

/// A configuration file above this size is not read: all of it is read on the main thread.
constexpr std::size_t maximumConfigBytes = std::size_t{4} << 20;

/// Reads a configuration file whole, with its byte-order mark. Never waits: a folder, a pipe or a
/// device fails, and so do a file of more than `maximumConfigBytes` and one that is not UTF-8.
tl::expected<std::string, FileError> readConfigText(FileSystem& fileSystem,
                                                    const std::filesystem::path& path);

/// Puts `text` in place of what the file holds; see `writeFileAtomically`.
tl::expected<void, FileError>
writeConfigText(FileSystem& fileSystem, const std::filesystem::path& path, std::string_view text);

std::string_view withoutByteOrderMark(std::string_view text);

/// The text in small letters, of any script. Costs O(length), little for ASCII.
std::string lowercasedUtf8(std::string_view text);

/// The text without white space at its ends; with `Trim::newlines` line ends go as well.
enum class Trim { whitespace, newlines };
std::string trimmedUtf8(std::string_view text, Trim trim);

}  // namespace tavrel
