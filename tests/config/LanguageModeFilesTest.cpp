#include "config/LanguageModeFiles.h"

#include "ConfigTestSupport.h"
#include "config/LanguageModeTable.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

struct LanguageModeFiles : testing::Test, test::ConfigTestHome {};

TEST_F(LanguageModeFiles, MakesTheFileOfTheUserFromTheResource)
{
    const auto file = store.userModeURL("python");
    ASSERT_TRUE(file);
    EXPECT_EQ(*file, home / ".tavrel-code/modes/python.cson");
    EXPECT_EQ(test::contents(*file), resources.textAt("Languages/python.cson"));
}

TEST_F(LanguageModeFiles, LeavesAFileOfTheUserAlone)
{
    const auto written = write("modes/python.cson", "mine");
    EXPECT_EQ(store.userModeURL("python").value_or(""), written);
    EXPECT_EQ(test::contents(written), "mine");
}

TEST_F(LanguageModeFiles, GivesAFileOfTheUserThatHasNoResource)
{
    const auto written = write("modes/pascal.cson", "mine");
    EXPECT_EQ(store.userModeURL("pascal").value_or(""), written);
}

TEST_F(LanguageModeFiles, FailsWithoutAResource)
{
    const auto file = store.userModeURL("pascal");
    ASSERT_FALSE(file);
    EXPECT_EQ(description(file.error()), "Bundled language mode not found: pascal");
    EXPECT_EQ(std::get<WorkspaceError>(file.error()).missingBundledLanguageMode, "pascal");
}

TEST_F(LanguageModeFiles, FailsWithTheReasonOfTheSystem)
{
    fileSystem.failure = {.call = 0, .code = EROFS, .only = "makeFolder"};
    auto file = store.userModeURL("python");
    ASSERT_FALSE(file);
    EXPECT_EQ(description(file.error()), "Read-only file system");
    fileSystem.failure = {.call = 0, .code = ENOSPC, .isLasting = true, .only = "write"};
    file = store.userModeURL("python");
    ASSERT_FALSE(file);
    EXPECT_EQ(std::get<FileError>(file.error()).code, ENOSPC);
    EXPECT_FALSE(std::filesystem::exists(home / ".tavrel-code/modes/python.cson"));
}

TEST(LanguageModeTable, GivesDisplayNames)
{
    EXPECT_EQ(displayName("cpp"), "C++");
    EXPECT_EQ(displayName("csharp"), "C#");
    EXPECT_EQ(displayName("toml"), "TOML");
    EXPECT_EQ(displayName("pascal"), "pascal");
    EXPECT_EQ(displayName(""), "");
}

}  // namespace
}  // namespace tavrel
