#include "platform/Folders.h"

#include "FileTestSupport.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(MakeFolders, MakesAllThatAreMissing)
{
    test::TestFolder folder;
    PosixFileSystem fileSystem;
    EXPECT_TRUE(makeFolders(fileSystem, folder / "a/b/c"));
    EXPECT_TRUE(isFolder(fileSystem, folder / "a/b/c"));
}

TEST(MakeFolders, LeavesWhatStandsAlone)
{
    test::TestFolder folder;
    test::FailingFileSystem fileSystem;
    folder.write("kept", "text");
    fileSystem.failure = {.call = 0, .code = EIO, .only = "makeFolder"};
    EXPECT_TRUE(makeFolders(fileSystem, folder.path()));
    EXPECT_EQ(test::contents(folder / "kept"), "text");
}

TEST(MakeFolders, FollowsASymbolicLinkToAFolder)
{
    test::TestFolder folder;
    PosixFileSystem fileSystem;
    std::filesystem::create_directory(folder / "real");
    std::filesystem::create_directory_symlink("real", folder / "link");
    EXPECT_TRUE(makeFolders(fileSystem, folder / "link/deeper"));
    EXPECT_TRUE(isFolder(fileSystem, folder / "real/deeper"));
}

TEST(MakeFolders, FailsWhereAFileHasTheName)
{
    test::TestFolder folder;
    PosixFileSystem fileSystem;
    folder.write("file", "text");
    EXPECT_EQ(makeFolders(fileSystem, folder / "file").error().code, ENOTDIR);
    EXPECT_EQ(makeFolders(fileSystem, folder / "file/below").error().code, ENOTDIR);
}

TEST(MakeFolders, FailsWithTheReasonOfTheSystem)
{
    test::TestFolder folder;
    test::FailingFileSystem fileSystem;
    fileSystem.failure = {.call = 0, .code = EROFS, .only = "makeFolder"};
    EXPECT_EQ(makeFolders(fileSystem, folder / "a").error().code, EROFS);
    EXPECT_FALSE(isFolder(fileSystem, folder / "a"));
}

TEST(MakeFolders, FailsForAnEmptyPath)
{
    PosixFileSystem fileSystem;
    EXPECT_EQ(makeFolders(fileSystem, {}).error().code, ENOENT);
}

}  // namespace
}  // namespace tavrel
