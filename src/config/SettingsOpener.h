#pragma once

#include <filesystem>
#include <string_view>

namespace tavrel {

class PreferencesStore;

/// What opening a configuration file needs of a window. Called on the main thread.
class SettingsOpenerDelegate {
public:
    virtual ~SettingsOpenerDelegate() = default;

    /// The file may have been rewritten: documents open on it are to be read anew, except where
    /// that would throw changes away.
    virtual void settingsOpenerDidUpdate(const std::filesystem::path& file) = 0;
    virtual void settingsOpenerWillShow(const std::filesystem::path& file) = 0;
    /// A line for the status bar; comes last.
    virtual void settingsOpenerDidReport(std::string_view status) = 0;
};

/// The menu command "Settings…": sees to it that the settings file is there and up to date, and has
/// it shown in an editor tab.
void openSettings(const PreferencesStore& store, SettingsOpenerDelegate& delegate);

/// The menu item of a mode: has the user's file of it shown, made when it does not exist.
void openMode(const PreferencesStore& store, std::string_view modeId,
              SettingsOpenerDelegate& delegate);

}  // namespace tavrel
