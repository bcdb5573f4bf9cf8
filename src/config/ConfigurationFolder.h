#pragma once

#include <filesystem>
#include <string_view>

namespace tavrel {

class FileSystem;

/// The user's configuration folder: where its files lie. Nothing needs to exist.
class ConfigurationFolder {
public:
    /// `fileSystem` must outlive the object.
    ConfigurationFolder(FileSystem& fileSystem, const std::filesystem::path& homeFolder)
        : fileSystem_(fileSystem), path_(homeFolder / ".tavrel-code")
    {
    }

    FileSystem& fileSystem() const { return fileSystem_; }
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path settingsFile() const { return path_ / "settings.cson"; }
    /// The name that the settings file had in older versions.
    std::filesystem::path olderSettingsFile() const { return path_ / "preferences.cson"; }
    std::filesystem::path modesFolder() const { return path_ / "modes"; }
    std::filesystem::path modeFile(std::string_view modeId) const;

    /// The settings file where it exists, else the one of the older name, which need not exist.
    std::filesystem::path activeSettingsURL() const;

private:
    FileSystem& fileSystem_;
    std::filesystem::path path_;
};

}  // namespace tavrel
