#include "config/SettingsReloader.h"

#include "config/ConfigText.h"
#include "config/PreferencesStore.h"
#include "platform/FileSystem.h"
#include "platform/Folders.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>

namespace tavrel {
namespace {

constexpr double reloadDelaySeconds = 0.2;   // A burst of events gives one reload.
constexpr double restartDelaySeconds = 0.5;  // Whoever removed the folder may be putting one back.
constexpr std::string_view invalidStatus = "Settings not applied: invalid CSON";

/// What the widths of the editor columns depend on.
auto columnValues(const Preferences& values)
{
    return std::tuple(values.editorFontName, values.editorFontSize, values.columnWidth,
                      values.maxEditors);
}

}  // namespace

SettingsReloader::SettingsReloader(PreferencesStore& store, MainQueue& mainQueue,
                                   SettingsReloaderDelegate& delegate, MakeWatch makeWatch)
    : store_(store), mainQueue_(mainQueue), delegate_(delegate), makeWatch_(std::move(makeWatch))
{
}

SettingsReloader::~SettingsReloader()
{
    pendingSettingsReload_.cancel();
    pendingRestart_.cancel();
}

void SettingsReloader::startWatching()
{
    watch_.reset();
    const ConfigurationFolder& folder = store_.folder();
    const auto made = makeFolders(folder.fileSystem(), folder.path());
    if (!made && !std::exchange(didReportFolder_, true))
        delegate_.settingsReloaderDidReport("Settings folder cannot be made: " +
                                            made.error().message);
    watch_ = makeWatch_(*this);
    watchFolders();
}

void SettingsReloader::reloadSettings()
{
    const ConfigurationFolder& folder = store_.folder();
    const auto file = readConfigText(folder.fileSystem(), folder.activeSettingsURL());
    const std::string text = file.value_or("{}");
    const auto settings = PreferencesStore::parseSettings(text);
    if (!settings || !settings->isMap()) {
        delegate_.settingsReloaderDidReport(invalidStatus);
        return;
    }
    const auto before = columnValues(store_.values());
    if (store_.load(text) == PreferencesStore::Outcome::invalid) {
        delegate_.settingsReloaderDidReport(invalidStatus);
        return;
    }
    const bool isKept = before == columnValues(store_.values());
    delegate_.settingsReloaderDidReload(isKept ? ColumnLayout::keep : ColumnLayout::redo);
    delegate_.settingsReloaderDidReport("Settings reloaded");
    upgradeActiveFile();
}

void SettingsReloader::folderDidChange(const std::filesystem::path& folder)
{
    // Other files may change all the time in a folder that a link leads to.
    if (!isOwnFolder(folder) && linkedConfigFiles(store_.folder()) == linkedFiles_)
        return;
    scheduleReload();
    const bool isThere = isFolder(store_.folder().fileSystem(), store_.folder().path());
    if (!isThere && !pendingRestart_.isPending())
        pendingRestart_ = mainQueue_.postAfter(restartDelaySeconds, [this] { startWatching(); });
}

void SettingsReloader::folderWatchDidRunOut()
{
    delegate_.settingsReloaderDidReport(
        "Settings are not reloaded by themselves: the system has no folder watches left");
}

void SettingsReloader::scheduleReload()
{
    pendingSettingsReload_.cancel();
    pendingSettingsReload_ = mainQueue_.postAfter(reloadDelaySeconds, [this] {
        // The folder of the modes may have come meanwhile, or a link lead elsewhere.
        watchFolders();
        reloadSettings();
    });
}

void SettingsReloader::watchFolders()
{
    if (!watch_)
        return;
    linkedFiles_ = linkedConfigFiles(store_.folder());
    std::vector<std::filesystem::path> folders{store_.folder().path(),
                                               store_.folder().modesFolder()};
    for (const LinkedFile& file : linkedFiles_) {
        const std::filesystem::path folder = file.target.parent_path();
        if (std::ranges::find(folders, folder) == folders.end())
            folders.push_back(folder);
    }
    watch_->setFolders(folders);
}

bool SettingsReloader::isOwnFolder(const std::filesystem::path& folder) const
{
    return folder == store_.folder().path() || folder == store_.folder().modesFolder();
}

void SettingsReloader::upgradeActiveFile()
{
    const std::filesystem::path file = store_.activeSettingsURL();
    // A file that is missing, or cannot be read or written, is none that could be upgraded.
    if (store_.upgradeSettingsFile(file) == SettingsUpgrade::rewritten)
        delegate_.settingsReloaderDidRewrite(file);
}

}  // namespace tavrel
