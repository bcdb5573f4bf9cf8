#include "ConfigTestSupport.h"
#include "config/SettingsReloader.h"
#include "platform/qt/QtFolderWatch.h"
#include "platform/qt/QtMainQueue.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

// The whole road of a save, from the kernel's news to the values in force, over a running event
// loop. The rules of the reload itself are tested by SettingsReloaderTest with simulated time.

namespace tavrel {

namespace {

struct SettingsWatchTest : testing::Test, test::ConfigTestHome, SettingsReloaderDelegate {
    void settingsReloaderDidReload(ColumnLayout) override { QCoreApplication::quit(); }
    void settingsReloaderDidReport(std::string_view) override {}
    void settingsReloaderDidRewrite(const std::filesystem::path&) override {}

    /// Runs the event loop until the next reload.
    void awaitReload()
    {
        QTimer limit;
        limit.setSingleShot(true);
        QObject::connect(&limit, &QTimer::timeout, [] { QCoreApplication::quit(); });
        limit.start(std::chrono::seconds(30));
        application.exec();
        EXPECT_TRUE(limit.isActive()) << "there was no reload";
    }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    QtMainQueue queue;
    SettingsReloader reloader{store, queue, *this, [](FolderWatchDelegate& delegate) {
                                  return std::make_unique<QtFolderWatch>(delegate);
                              }};
};

TEST_F(SettingsWatchTest, ASaveInPlaceAndASaveByRenameAreReloaded)
{
    reloader.startWatching();
    write("settings.cson", "{editor: {tabWidth: 7}}");
    awaitReload();
    EXPECT_EQ(store.values().tabWidth, 7);

    write("new", "{editor: {tabWidth: 5}}");
    std::filesystem::rename(folder.path() / "new", folder.settingsFile());
    while (store.values().tabWidth == 7 && !HasFailure())
        awaitReload();
    EXPECT_EQ(store.values().tabWidth, 5);
}

TEST_F(SettingsWatchTest, AModeIsReloadedInAFolderThatCameLater)
{
    reloader.startWatching();
    std::filesystem::create_directory(folder.modesFolder());
    awaitReload();
    write("modes/python.cson", "{id: python extensions: [xyz]}");
    awaitReload();
    EXPECT_EQ(store.languageMode("a.xyz")->id, "python");
}

}  // namespace

}  // namespace tavrel

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
