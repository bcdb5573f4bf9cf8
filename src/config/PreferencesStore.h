#pragma once

#include "config/ConfigurationFolder.h"
#include "config/LanguageModeFiles.h"
#include "config/Preferences.h"
#include "config/SettingsFile.h"
#include "config/cson/CSONValue.h"

#include <tl/expected.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

class FileSystem;
class ResourceStore;

/// The one live copy of the user's configuration, filled in layers: the built-in values, the
/// settings that ship with the application, its theme and its language modes, the user's file.
///
/// Begins with the built-in values and stays the same object through every load. Main thread only.
class PreferencesStore {
public:
    /// Whether the text was one that can be applied.
    enum class Outcome { applied, invalid };

    /// Reads nothing yet. Both references must outlive the store.
    PreferencesStore(FileSystem& fileSystem, const ResourceStore& resources,
                     const std::filesystem::path& homeFolder);
    PreferencesStore(const PreferencesStore&) = delete;
    PreferencesStore& operator=(const PreferencesStore&) = delete;

    /// What is in force. Valid as long as the store; its contents change with a load.
    const Preferences& values() const { return values_; }
    const ConfigurationFolder& folder() const { return folder_; }

    /// A full load, the five steps below in their order. With a text the user's file is not read.
    Outcome load(std::optional<std::string_view> userSettings = std::nullopt);

    void resetToBuiltInValues();
    void applyDefaultSettings();
    void loadDefaultTheme();
    void loadLanguageModes();
    /// Without a text it reads the active settings file; a file that cannot be read changes nothing
    /// and counts as applied. `invalid` for a text that is no map; nothing changes then either.
    Outcome applyUserSettings(std::optional<std::string_view> text = std::nullopt);

    /// The value that the text holds, without regard to a byte-order mark.
    static std::optional<CSONValue> parseSettings(std::string_view text);

    std::filesystem::path activeSettingsURL() const { return folder_.activeSettingsURL(); }

    /// The chord that a menu shows for a command: of all that are bound to it, alone or in a list,
    /// the first in the order of their bytes. Costs time in proportion to the key map.
    std::optional<std::string> keyChord(std::string_view command) const;

    /// The mode for a file, by what follows the last dot of its name; without a location, and for
    /// an extension that no mode has, the plain mode. Never null.
    std::shared_ptr<const LanguageMode>
    languageMode(const std::optional<std::filesystem::path>& file) const;

    /// The user's file of a mode, made when it does not exist.
    tl::expected<std::filesystem::path, ModeFileError> userModeURL(std::string_view modeId) const;
    tl::expected<void, FileError> ensureSettingsFile() const;
    tl::expected<SettingsUpgrade, FileError>
    upgradeSettingsFile(const std::filesystem::path& file) const;

private:
    std::optional<std::string_view> settingsResource() const;

    const ResourceStore& resources_;
    ConfigurationFolder folder_;
    Preferences values_;
    std::shared_ptr<const LanguageMode> plainMode_;
};

}  // namespace tavrel
