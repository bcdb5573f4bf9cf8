#pragma once

#include "config/LanguageMode.h"
#include "config/WorkspaceError.h"
#include "platform/FileError.h"

#include <tl/expected.hpp>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tavrel {

class ConfigurationFolder;
class ResourceStore;

/// The modes of the table, at most one for each row and in its order. A file of the user takes the
/// place of the resource where it parses; one that parses to something without an `id` leaves its
/// language without a mode.
std::vector<std::shared_ptr<const LanguageMode>>
loadedLanguageModes(const ConfigurationFolder& folder, const ResourceStore& resources);

/// Why a mode could not be opened for editing.
using ModeFileError = std::variant<FileError, WorkspaceError>;
std::string description(const ModeFileError& error);

/// The user's file of the mode, made from the resource where it does not exist.
tl::expected<std::filesystem::path, ModeFileError> ensureModeFile(const ConfigurationFolder& folder,
                                                                  const ResourceStore& resources,
                                                                  std::string_view modeId);

}  // namespace tavrel
