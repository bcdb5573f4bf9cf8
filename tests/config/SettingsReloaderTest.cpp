#include "config/SettingsReloader.h"

#include "ConfigTestSupport.h"
#include "platform/ManualMainQueue.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// A watch whose events the test makes up.
class FakeWatch final : public FolderWatch {
public:
    FakeWatch(int& count, std::vector<std::filesystem::path>& folders)
        : count_(count), folders_(folders)
    {
        ++count_;
    }
    ~FakeWatch() override { --count_; }
    void setFolders(const std::vector<std::filesystem::path>& folders) override
    {
        folders_ = folders;
    }

private:
    int& count_;
    std::vector<std::filesystem::path>& folders_;
};

struct SettingsReloaderTest : testing::Test, test::ConfigTestHome, SettingsReloaderDelegate {
    SimulatedClock clock;
    ManualMainQueue queue{clock};
    int watches = 0;
    int watchesMade = 0;
    std::vector<std::filesystem::path> watched;
    std::vector<std::string> told;
    std::optional<SettingsReloader> reloader{
        std::in_place, store, queue, static_cast<SettingsReloaderDelegate&>(*this),
        [this](FolderWatchDelegate&) {
            ++watchesMade;
            return std::make_unique<FakeWatch>(watches, watched);
        }};

    void settingsReloaderDidReload(ColumnLayout columns) override
    {
        told.emplace_back(columns == ColumnLayout::redo ? "reload, columns" : "reload");
    }
    void settingsReloaderDidReport(std::string_view status) override { told.emplace_back(status); }
    void settingsReloaderDidRewrite(const std::filesystem::path& file) override
    {
        told.push_back("rewrite " + file.filename().string());
    }

    /// The texts of the user with every section, so that there is nothing to upgrade.
    void writeSettings(const std::string& editor)
    {
        write("settings.cson", "{editor: {" + editor + "}}");
        while (store.upgradeSettingsFile(folder.settingsFile()) == SettingsUpgrade::rewritten) {
        }
    }
    void change() { reloader->folderDidChange(folder.path()); }
    std::vector<std::string> takeTold() { return std::exchange(told, {}); }
};

TEST_F(SettingsReloaderTest, ReloadsAndReportsIt)
{
    writeSettings("tabWidth: 7");
    reloader->reloadSettings();
    EXPECT_EQ(store.values().tabWidth, 7);
    EXPECT_THAT(told, ElementsAre("reload", "Settings reloaded"));
}

TEST_F(SettingsReloaderTest, InvalidSettingsLeaveEverythingAsItIs)
{
    store.load("{editor: {tabWidth: 7} keys: {a: copy}}");
    const auto keymap = store.values().keymap;
    for (const char* text : {"{editor: {", "[]", "12", "", "{a: 1.2.3}"}) {
        write("settings.cson", text);
        reloader->reloadSettings();
        EXPECT_THAT(takeTold(), ElementsAre("Settings not applied: invalid CSON")) << text;
        EXPECT_EQ(store.values().tabWidth, 7);
        EXPECT_EQ(store.values().keymap, keymap);
        EXPECT_EQ(test::contents(folder.settingsFile()), text);
    }
}

TEST_F(SettingsReloaderTest, AFileThatIsMissingGivesTheDefaults)
{
    store.load("{editor: {tabWidth: 7}}");
    reloader->reloadSettings();
    EXPECT_EQ(store.values().tabWidth, 2);
    EXPECT_THAT(told, ElementsAre("reload", "Settings reloaded"));
    EXPECT_FALSE(std::filesystem::exists(folder.settingsFile()));
}

TEST_F(SettingsReloaderTest, AFileThatCannotBeReadGivesTheDefaults)
{
    store.load("{editor: {tabWidth: 7}}");
    std::filesystem::create_directories(folder.settingsFile());
    reloader->reloadSettings();
    EXPECT_EQ(store.values().tabWidth, 2);
    EXPECT_THAT(told, ElementsAre("reload", "Settings reloaded"));
}

TEST_F(SettingsReloaderTest, TheColumnsAreRedoneForTheFourValuesThatTheyDependOn)
{
    for (const char* editor : {"fontName: X", "fontSize: 20", "columnWidth: 70", "maxEditors: 2"}) {
        store.load("{}");
        writeSettings(editor);
        reloader->reloadSettings();
        EXPECT_THAT(takeTold(), Contains("reload, columns")) << editor;
        reloader->reloadSettings();
        EXPECT_THAT(takeTold(), Contains("reload")) << editor << ", a second time";
    }
    store.load("{}");
    writeSettings("tabWidth: 3 autoSaveOnFocusLoss: false");
    reloader->reloadSettings();
    EXPECT_THAT(told, Contains("reload"));
}

TEST_F(SettingsReloaderTest, UpgradesTheFileAtTheEndAndTellsItsDocuments)
{
    write("settings.cson", "{}");
    reloader->reloadSettings();
    EXPECT_THAT(takeTold(), ElementsAre("reload", "Settings reloaded", "rewrite settings.cson"));
    reloader->reloadSettings();
    EXPECT_THAT(takeTold(), ElementsAre("reload", "Settings reloaded", "rewrite settings.cson"));
    reloader->reloadSettings();
    EXPECT_THAT(takeTold(), ElementsAre("reload", "Settings reloaded"));
}

TEST_F(SettingsReloaderTest, TheFileOfTheOlderNameIsUpgradedUnderItsName)
{
    write("preferences.cson", "{}");
    reloader->reloadSettings();
    EXPECT_THAT(told, Contains("rewrite preferences.cson"));
    EXPECT_FALSE(std::filesystem::exists(folder.settingsFile()));
}

TEST_F(SettingsReloaderTest, AFailedUpgradeIsIgnored)
{
    write("settings.cson", "{}");
    fileSystem.failure = {.call = 0, .code = ENOSPC, .isLasting = true, .only = "write"};
    reloader->reloadSettings();
    EXPECT_THAT(told, ElementsAre("reload", "Settings reloaded"));
}

TEST_F(SettingsReloaderTest, WatchesTheFolderAndItsModes)
{
    reloader->startWatching();
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
    EXPECT_THAT(watched, ElementsAre(folder.path(), folder.modesFolder()));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(watches, 1);
    reloader->startWatching();
    EXPECT_EQ(watches, 1) << "a new watch takes the place of the one before";
    EXPECT_EQ(watchesMade, 2);
}

TEST_F(SettingsReloaderTest, AChangeIsReloadedAFifthOfASecondLater)
{
    writeSettings("tabWidth: 7");
    reloader->startWatching();
    change();
    queue.advance(0.199);
    EXPECT_THAT(told, IsEmpty());
    queue.advance(0.001);
    EXPECT_THAT(told, ElementsAre("reload", "Settings reloaded"));
    EXPECT_EQ(store.values().tabWidth, 7);
}

TEST_F(SettingsReloaderTest, ABurstOfChangesGivesOneReload)
{
    writeSettings("");
    reloader->startWatching();
    for (int i = 0; i < 5; ++i) {
        change();
        queue.advance(0.15);
    }
    EXPECT_THAT(told, IsEmpty());
    queue.advance(1);
    EXPECT_THAT(told, ElementsAre("reload", "Settings reloaded"));
}

TEST_F(SettingsReloaderTest, ASavedModeIsReloaded)
{
    writeSettings("");
    reloader->startWatching();
    write("modes/python.cson", "{id: python extensions: [xyz]}");
    reloader->folderDidChange(folder.modesFolder());
    queue.advance(0.2);
    EXPECT_EQ(store.languageMode("a.xyz")->id, "python");
}

TEST_F(SettingsReloaderTest, AFolderThatHasGoneIsWatchedAnew)
{
    writeSettings("tabWidth: 7");
    reloader->startWatching();
    std::filesystem::remove_all(folder.path());
    change();
    change();
    queue.advance(0.2);
    EXPECT_EQ(store.values().tabWidth, 2);
    EXPECT_EQ(watchesMade, 1);
    queue.advance(0.3);
    EXPECT_EQ(watchesMade, 2);
    EXPECT_EQ(watches, 1);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
    queue.advance(10);
    EXPECT_EQ(watchesMade, 2);
}

TEST_F(SettingsReloaderTest, AFolderThatCannotBeMadeIsReportedOnce)
{
    fileSystem.failure = {.call = 0, .code = EACCES, .isLasting = true, .only = "makeFolder"};
    reloader->startWatching();
    EXPECT_THAT(told, ElementsAre("Settings folder cannot be made: Permission denied"));
    change();
    queue.advance(1);
    EXPECT_EQ(watchesMade, 2);
    EXPECT_EQ(std::ranges::count(told, "Settings folder cannot be made: Permission denied"), 1);
}

TEST_F(SettingsReloaderTest, WatchesThatRunOutAreReported)
{
    reloader->folderWatchDidRunOut();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(SettingsReloaderTest, TheFolderThatALinkLeadsToIsWatched)
{
    std::filesystem::create_directory(home / "dotfiles");
    home.write("dotfiles/real.cson", "{editor: {tabWidth: 7}}");
    write("modes/keep", "");
    std::filesystem::create_symlink(home / "dotfiles/real.cson", folder.settingsFile());
    reloader->startWatching();
    EXPECT_THAT(watched, ElementsAre(folder.path(), folder.modesFolder(), home / "dotfiles"));

    home.write("dotfiles/other", "");
    reloader->folderDidChange(home / "dotfiles");
    queue.advance(1);
    EXPECT_THAT(told, IsEmpty()) << "another file of that folder";

    home.write("dotfiles/real.cson", "{editor: {tabWidth: 5} a: {}}");
    reloader->folderDidChange(home / "dotfiles");
    queue.advance(1);
    EXPECT_EQ(store.values().tabWidth, 5);
}

TEST_F(SettingsReloaderTest, ALinkThatLeadsNowhereOrRoundIsNotFollowed)
{
    write("modes/keep", "");
    std::filesystem::create_symlink("nowhere/at/all", folder.settingsFile());
    std::filesystem::create_symlink("cpp.cson", folder.modesFolder() / "cpp.cson");
    reloader->startWatching();
    EXPECT_THAT(watched, ElementsAre(folder.path(), folder.modesFolder()));
}

TEST_F(SettingsReloaderTest, NothingRunsOnceItHasGone)
{
    reloader->startWatching();
    std::filesystem::remove_all(folder.path());
    change();
    reloader.reset();
    queue.advance(10);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(watches, 0);
}

}  // namespace
}  // namespace tavrel
