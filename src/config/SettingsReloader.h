#pragma once

#include "config/LinkedFiles.h"
#include "platform/FolderWatch.h"
#include "platform/MainQueue.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace tavrel {

class PreferencesStore;

/// Whether a reload changed what the widths of the editor columns depend on.
enum class ColumnLayout { keep, redo };

/// What the reloader needs of the application. Called on the main thread.
class SettingsReloaderDelegate {
public:
    virtual ~SettingsReloaderDelegate() = default;

    /// The store holds new values: fonts, colours, keys, menus and modes follow it from now on.
    virtual void settingsReloaderDidReload(ColumnLayout columns) = 0;

    /// A line for the status bar.
    virtual void settingsReloaderDidReport(std::string_view status) = 0;

    /// The file was brought up to date: documents open on it are to be read anew, except where
    /// that would throw changes away.
    virtual void settingsReloaderDidRewrite(const std::filesystem::path& file) = 0;
};

/// Keeps the store in step with the user's files: one for the process, with the one watch on the
/// configuration folder, its modes, and the folders that their symbolic links lead to.
///
/// Main thread only.
class SettingsReloader final : public FolderWatchDelegate {
public:
    using MakeWatch = std::function<std::unique_ptr<FolderWatch>(FolderWatchDelegate& delegate)>;

    /// Watches nothing yet. The references must outlive the reloader.
    SettingsReloader(PreferencesStore& store, MainQueue& mainQueue,
                     SettingsReloaderDelegate& delegate, MakeWatch makeWatch);
    ~SettingsReloader() override;
    SettingsReloader(const SettingsReloader&) = delete;
    SettingsReloader& operator=(const SettingsReloader&) = delete;

    /// Makes the configuration folder where it is missing and watches it, in place of any watch
    /// before. When the folder cannot be made, the status bar says so, once.
    void startWatching();

    /// A full load of what is on the disk. A settings file that is not valid leaves everything as
    /// it is; one that cannot be read counts as empty. Brings the file up to date at the end.
    void reloadSettings();

    void folderDidChange(const std::filesystem::path& folder) override;
    void folderWatchDidRunOut() override;

private:
    void scheduleReload();
    void watchFolders();
    bool isOwnFolder(const std::filesystem::path& folder) const;
    void upgradeActiveFile();

    PreferencesStore& store_;
    MainQueue& mainQueue_;
    SettingsReloaderDelegate& delegate_;
    MakeWatch makeWatch_;
    bool didReportFolder_ = false;
    std::vector<LinkedFile> linkedFiles_;
    ScheduledWork pendingSettingsReload_;
    ScheduledWork pendingRestart_;
    std::unique_ptr<FolderWatch> watch_;
};

}  // namespace tavrel
