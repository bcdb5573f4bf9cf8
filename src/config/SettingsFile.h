#pragma once

#include "platform/FileError.h"

#include <tl/expected.hpp>

#include <filesystem>

namespace tavrel {

class ConfigurationFolder;
class ResourceStore;

/// What an upgrade did to the file.
enum class SettingsUpgrade { unchanged, rewritten };

/// Brings the settings file at `path` up to date; see `upgradedSettings`. Writing keeps the mode of
/// the file and follows symbolic links. Fails where the file cannot be read as UTF-8 or written.
tl::expected<SettingsUpgrade, FileError> upgradeSettingsFile(const ConfigurationFolder& folder,
                                                             const std::filesystem::path& path);

/// Sees to it that the settings file is there, with its folder, and is up to date: a file of the
/// older name moves to the new one, and where there is neither the text of the resources, else the
/// built-in one, is written. Fails with the system's reason.
tl::expected<void, FileError> ensureSettingsFile(const ConfigurationFolder& folder,
                                                 const ResourceStore& resources);

}  // namespace tavrel
