#include "config/SettingsOpener.h"

#include "ConfigTestSupport.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

using testing::ElementsAre;

/// Writes down what it is told, in order.
struct RecordingWindow final : SettingsOpenerDelegate {
    void settingsOpenerDidUpdate(const std::filesystem::path& file) override
    {
        told.push_back("update " + file.filename().string());
    }
    void settingsOpenerWillShow(const std::filesystem::path& file) override
    {
        told.push_back("show " + file.filename().string());
    }
    void settingsOpenerDidReport(std::string_view status) override { told.emplace_back(status); }

    std::vector<std::string> told;
};

struct SettingsOpener : testing::Test, test::ConfigTestHome {
    RecordingWindow window;
};

TEST_F(SettingsOpener, MakesUpdatesAndShowsTheSettings)
{
    openSettings(store, window);
    EXPECT_THAT(window.told,
                ElementsAre("update settings.cson", "show settings.cson", "Opened Settings"));
    EXPECT_NE(test::contents(folder.settingsFile()), "");
}

TEST_F(SettingsOpener, SaysWhyTheSettingsCannotBeOpened)
{
    fileSystem.failure = {.call = 0, .code = EACCES, .only = "makeFolder"};
    openSettings(store, window);
    EXPECT_THAT(window.told, ElementsAre("Could not open Settings: Permission denied"));
}

TEST_F(SettingsOpener, ShowsAMode)
{
    openMode(store, "csharp", window);
    EXPECT_THAT(window.told, ElementsAre("show csharp.cson", "Opened C# Mode"));
}

TEST_F(SettingsOpener, SaysWhyAModeCannotBeOpened)
{
    openMode(store, "pascal", window);
    EXPECT_THAT(window.told,
                ElementsAre("Could not open mode: Bundled language mode not found: pascal"));
}

}  // namespace
}  // namespace tavrel
