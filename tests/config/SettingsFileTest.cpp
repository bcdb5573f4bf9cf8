#include "config/SettingsFile.h"

#include "ConfigTestSupport.h"
#include "config/BuiltInSettings.h"
#include "config/ConfigText.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavrel {
namespace {

using test::ConfigTestHome;
using test::contents;

struct SettingsFile : testing::Test, ConfigTestHome {
    std::filesystem::path settings = folder.settingsFile();
};

TEST_F(SettingsFile, MakesTheFolderWithMissingParents)
{
    const BuiltInResources built;
    const PreferencesStore deep(fileSystem, built, home / "a/b");
    EXPECT_TRUE(deep.ensureSettingsFile());
    EXPECT_NE(contents(home / "a/b/.tavrel-code/settings.cson"), "");
}

TEST_F(SettingsFile, TakesTheOlderResourceAndThenTheBuiltInText)
{
    test::FakeResources fake;
    fake.texts = {{"Defaults/preferences.cson", "{older: 1}"}};
    EXPECT_TRUE(ensureSettingsFile(folder, fake));
    EXPECT_EQ(contents(settings), "{older: 1}");
    std::filesystem::remove(settings);
    fake.texts = {{"settings.cson", "{top: 1}"}, {"Defaults/preferences.cson", "{older: 1}"}};
    EXPECT_TRUE(ensureSettingsFile(folder, fake));
    EXPECT_EQ(contents(settings), "{top: 1}");
    std::filesystem::remove(settings);
    EXPECT_TRUE(ensureSettingsFile(folder, test::FakeResources()));
    EXPECT_EQ(contents(settings), builtInSettingsText());
}

TEST_F(SettingsFile, TellsWhetherTheFileWasRewritten)
{
    write("settings.cson", "{}");
    EXPECT_EQ(store.upgradeSettingsFile(settings), SettingsUpgrade::rewritten);
    EXPECT_EQ(store.upgradeSettingsFile(settings), SettingsUpgrade::rewritten);
    EXPECT_EQ(store.upgradeSettingsFile(settings), SettingsUpgrade::unchanged);
}

TEST_F(SettingsFile, LeavesTheFileAloneWhereThereIsNothingToDo)
{
    write("settings.cson", "{ not CSON");
    fileSystem.failure = {.call = 0, .code = EIO, .only = "rename"};
    struct stat before = {};
    ASSERT_EQ(::stat(settings.c_str(), &before), 0);
    EXPECT_EQ(store.upgradeSettingsFile(settings), SettingsUpgrade::unchanged);
    struct stat after = {};
    ASSERT_EQ(::stat(settings.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
}

TEST_F(SettingsFile, KeepsTheModeOfTheFile)
{
    write("settings.cson", "{}");
    ASSERT_EQ(::chmod(settings.c_str(), 0640), 0);
    EXPECT_EQ(store.upgradeSettingsFile(settings), SettingsUpgrade::rewritten);
    EXPECT_EQ(test::modeOf(settings), 0640U);
}

TEST_F(SettingsFile, FollowsASymbolicLink)
{
    write("modes/keep", "");
    home.write("dotfiles.cson", "{}");
    std::filesystem::create_symlink("../dotfiles.cson", settings);
    EXPECT_TRUE(store.ensureSettingsFile());
    EXPECT_TRUE(std::filesystem::is_symlink(settings));
    EXPECT_NE(contents(home / "dotfiles.cson"), "{}");
}

TEST_F(SettingsFile, MakesTheTargetOfALinkThatLeadsNowhere)
{
    write("modes/keep", "");
    std::filesystem::create_symlink("../dotfiles.cson", settings);
    EXPECT_TRUE(store.ensureSettingsFile());
    EXPECT_TRUE(std::filesystem::is_symlink(settings));
    EXPECT_NE(contents(home / "dotfiles.cson"), "");
}

TEST_F(SettingsFile, MovingTheOlderFileKeepsItsMode)
{
    const auto older = write("preferences.cson", "{}");
    ASSERT_EQ(::chmod(older.c_str(), 0600), 0);
    EXPECT_TRUE(store.ensureSettingsFile());
    EXPECT_FALSE(std::filesystem::exists(older));
    EXPECT_EQ(test::modeOf(settings), 0600U);
}

TEST_F(SettingsFile, FailsWhereTheFolderCannotBeMade)
{
    fileSystem.failure = {.call = 0, .code = EROFS, .only = "makeFolder"};
    EXPECT_EQ(store.ensureSettingsFile().error().code, EROFS);
}

TEST_F(SettingsFile, FailsWhereTheOlderFileCannotBeMoved)
{
    write("preferences.cson", "{}");
    fileSystem.failure = {.call = 0, .code = EPERM, .only = "rename"};
    const auto ensured = store.ensureSettingsFile();
    ASSERT_FALSE(ensured);
    EXPECT_EQ(ensured.error().code, EPERM);
    EXPECT_EQ(contents(folder.olderSettingsFile()), "{}");
}

TEST_F(SettingsFile, AMissingFileCannotBeUpgraded)
{
    const auto upgraded = store.upgradeSettingsFile(settings);
    ASSERT_FALSE(upgraded);
    EXPECT_EQ(upgraded.error().code, ENOENT);
}

TEST_F(SettingsFile, AFailedWriteLeavesTheFileAsItWas)
{
    write("settings.cson", "{}");
    fileSystem.failure = {.call = 0, .code = ENOSPC, .isLasting = true, .only = "write"};
    EXPECT_EQ(store.upgradeSettingsFile(settings).error().code, ENOSPC);
    EXPECT_EQ(contents(settings), "{}");
}

TEST_F(SettingsFile, APipeIsUnreadableAndDoesNotBlock)
{
    write("modes/keep", "");
    ASSERT_EQ(::mkfifo(settings.c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((folder.modesFolder() / "cpp.cson").c_str(), 0600), 0);
    EXPECT_EQ(store.load(), PreferencesStore::Outcome::applied);
    EXPECT_EQ(store.values().languageModes.size(), 20U);
    EXPECT_FALSE(store.ensureSettingsFile());
    EXPECT_FALSE(store.upgradeSettingsFile(settings));
}

TEST_F(SettingsFile, ADeviceIsUnreadable)
{
    write("modes/keep", "");
    std::filesystem::create_symlink("/dev/zero", settings);
    std::filesystem::create_symlink("/dev/zero", folder.modesFolder() / "cpp.cson");
    EXPECT_EQ(store.load(), PreferencesStore::Outcome::applied);
    EXPECT_EQ(store.values().languageModes.size(), 20U);
}

TEST_F(SettingsFile, AFileAboveTheLimitIsUnreadable)
{
    write("settings.cson", "{editor: {tabWidth: 7}}" + std::string(maximumConfigBytes, ' '));
    EXPECT_EQ(store.load(), PreferencesStore::Outcome::applied);
    EXPECT_EQ(store.values().tabWidth, 2);
    EXPECT_EQ(store.upgradeSettingsFile(settings).error().code, EFBIG);
}

TEST_F(SettingsFile, AFileWithoutPermissionIsUnreadable)
{
    write("settings.cson", "{editor: {tabWidth: 7}}");
    ASSERT_EQ(::chmod(settings.c_str(), 0), 0);
    EXPECT_TRUE(test::asNobody([&] {
        return store.load() == PreferencesStore::Outcome::applied && store.values().tabWidth == 2 &&
               store.upgradeSettingsFile(settings).error().code == EACCES;
    }));
}

TEST_F(SettingsFile, AHomeThatCannotBeWrittenGivesTheDefaults)
{
    std::filesystem::permissions(home.path(), std::filesystem::perms(0555));
    EXPECT_TRUE(test::asNobody([&] {
        return store.load() == PreferencesStore::Outcome::applied &&
               store.values().languageModes.size() == 20 &&
               store.ensureSettingsFile().error().code == EACCES;
    }));
    std::filesystem::permissions(home.path(), std::filesystem::perms(0755));
}

}  // namespace
}  // namespace tavrel
