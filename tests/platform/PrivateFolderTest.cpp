#include "FileTestSupport.h"

#include "platform/PrivateFolder.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>

namespace tavrel {

namespace {

using test::FailingFileSystem;
using test::TestFolder;

TEST(PrivateFolder, LiesInTheRuntimeFolderForNobodyElse)
{
    const TestFolder runtime;
    const TestFolder temporary;
    PosixFileSystem fileSystem;
    const auto folder = PrivateFolder::create(fileSystem, runtime.path(), temporary.path());
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->path().filename(), "TavrelCode");
    EXPECT_EQ(folder->path().parent_path().parent_path(), runtime.path());
    EXPECT_EQ(test::modeOf(folder->path()), 0700U);
    EXPECT_EQ(test::modeOf(folder->path().parent_path()), 0700U);
    EXPECT_TRUE(temporary.names().empty());
}

TEST(PrivateFolder, FallsBackToTheTemporaryFolder)
{
    const TestFolder temporary;
    PosixFileSystem fileSystem;
    for (const char* runtime : {"", "relative", "/nowhere/at/all"}) {
        const auto folder = PrivateFolder::create(fileSystem, runtime, temporary.path());
        ASSERT_TRUE(folder) << runtime;
        EXPECT_EQ(folder->path().parent_path().parent_path(), temporary.path()) << runtime;
    }
}

TEST(PrivateFolder, GivesTheReasonWhereItCannotBeMade)
{
    PosixFileSystem fileSystem;
    const auto folder = PrivateFolder::create(fileSystem, "/nowhere", "/nowhere/either");
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error(), (FileError{ENOENT, "No such file or directory"}));
}

TEST(PrivateFolder, TwoAreNotTheSame)
{
    const TestFolder temporary;
    PosixFileSystem fileSystem;
    const auto one = PrivateFolder::create(fileSystem, "", temporary.path());
    const auto other = PrivateFolder::create(fileSystem, "", temporary.path());
    ASSERT_TRUE(one && other);
    EXPECT_NE(one->path(), other->path());
}

TEST(PrivateFolder, GoesWithAllItsContents)
{
    const TestFolder temporary;
    const TestFolder elsewhere;
    const auto kept = elsewhere.write("kept", "x");
    PosixFileSystem fileSystem;
    {
        auto folder = PrivateFolder::create(fileSystem, "", temporary.path());
        ASSERT_TRUE(folder && folder->createFile("a", "bytes"));
        std::filesystem::create_directories(folder->path() / "deep" / "deeper");
        std::filesystem::create_directory_symlink(elsewhere.path(), folder->path() / "link");
        const PrivateFolder moved = std::move(*folder);
        EXPECT_EQ(temporary.names().size(), 1U);
    }
    EXPECT_TRUE(temporary.names().empty());
    EXPECT_EQ(test::contents(kept), "x");
}

TEST(PrivateFolder, AChildProcessDoesNotRemoveIt)
{
    const TestFolder temporary;
    PosixFileSystem fileSystem;
    std::optional<PrivateFolder> folder;
    {
        auto created = PrivateFolder::create(fileSystem, "", temporary.path());
        ASSERT_TRUE(created);
        folder.emplace(std::move(*created));
    }
    const bool isThere = test::asNobody([&] {
        folder.reset();
        return true;
    });
    EXPECT_TRUE(isThere);
    EXPECT_TRUE(std::filesystem::exists(folder->path()));
}

TEST(PrivateFolder, MakesFilesForNobodyElse)
{
    const TestFolder temporary;
    PosixFileSystem fileSystem;
    auto folder = PrivateFolder::create(fileSystem, "", temporary.path());
    ASSERT_TRUE(folder);
    const mode_t mask = umask(0);
    const auto path = folder->createFile("a.txt", "bytes");
    umask(mask);
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, folder->path() / "a.txt");
    EXPECT_EQ(test::contents(*path), "bytes");
    EXPECT_EQ(test::modeOf(*path), 0600U);
}

TEST(PrivateFolder, NeverOpensWhatIsThereAlready)
{
    const TestFolder temporary;
    PosixFileSystem fileSystem;
    auto folder = PrivateFolder::create(fileSystem, "", temporary.path());
    ASSERT_TRUE(folder && folder->createFile("a", "old"));
    const auto victim = temporary.write("victim", "old");
    std::filesystem::create_symlink(victim, folder->path() / "link");
    std::filesystem::create_symlink(temporary / "absent", folder->path() / "dangling");
    for (const char* name : {"a", "link", "dangling"}) {
        const auto path = folder->createFile(name, "new");
        ASSERT_FALSE(path) << name;
        EXPECT_EQ(path.error().code, EEXIST) << name;
    }
    EXPECT_EQ(test::contents(folder->path() / "a"), "old");
    EXPECT_EQ(test::contents(victim), "old");
    EXPECT_FALSE(std::filesystem::exists(temporary / "absent"));
}

TEST(PrivateFolder, TakesPlainNamesOnly)
{
    const TestFolder temporary;
    PosixFileSystem fileSystem;
    auto folder = PrivateFolder::create(fileSystem, "", temporary.path());
    ASSERT_TRUE(folder);
    for (const std::string& name :
         {std::string(), std::string("."), std::string(".."), std::string("../a"),
          std::string("/a"), std::string("a\0b", 3)}) {
        const auto path = folder->createFile(name, "x");
        ASSERT_FALSE(path) << name;
        EXPECT_EQ(path.error().code, EINVAL) << name;
    }
}

TEST(PrivateFolder, LeavesNoHalfWrittenFile)
{
    const TestFolder temporary;
    FailingFileSystem fileSystem;
    auto folder = PrivateFolder::create(fileSystem, "", temporary.path());
    ASSERT_TRUE(folder);
    fileSystem.failure = {.call = 0, .code = ENOSPC, .only = "write"};
    const auto path = folder->createFile("a", "bytes");
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error(), (FileError{ENOSPC, "No space left on device"}));
    EXPECT_FALSE(std::filesystem::exists(folder->path() / "a"));
    EXPECT_EQ(fileSystem.openDescriptors(), 0);
}

}  // namespace

}  // namespace tavrel
