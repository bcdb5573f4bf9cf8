#include "platform/FolderReader.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tavrel {
namespace {

class FolderReaderTest : public testing::Test {
protected:
    FolderReaderTest()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "tavrel-folder-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~FolderReaderTest() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path folder_;
};

TEST_F(FolderReaderTest, ListsEveryKindWithoutFollowingLinks)
{
    std::ofstream(folder_ / "file") << "x";
    std::ofstream(folder_ / ".hidden") << "x";
    std::ofstream(folder_ / "bytes\xFF\n") << "x";
    std::filesystem::create_directory(folder_ / "folder");
    std::filesystem::create_symlink("folder", folder_ / "link");
    std::filesystem::create_symlink("nowhere", folder_ / "dangling");
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    const auto entries = readFolder(folder_);
    ASSERT_TRUE(entries);
    std::vector<std::pair<std::string, FileKind>> found;
    for (const FolderEntry& entry : *entries)
        found.emplace_back(entry.name, entry.kind);
    std::sort(found.begin(), found.end());
    const std::vector<std::pair<std::string, FileKind>> expected{
        {".hidden", FileKind::regular},
        {"bytes\xFF\n", FileKind::regular},
        {"dangling", FileKind::symbolicLink},
        {"file", FileKind::regular},
        {"folder", FileKind::folder},
        {"link", FileKind::symbolicLink},
        {"pipe", FileKind::other}};
    EXPECT_EQ(found, expected);
}

TEST_F(FolderReaderTest, WhatIsNoFolderFails)
{
    std::ofstream(folder_ / "file") << "x";
    EXPECT_EQ(readFolder(folder_ / "file").error().code, ENOTDIR);
    EXPECT_EQ(readFolder(folder_ / "none").error().code, ENOENT);
    EXPECT_EQ(readFolder("").error().code, ENOENT);
    EXPECT_EQ(readFolder(std::string("/\0", 2)).error().code, EINVAL);
    EXPECT_EQ(readFolder("/" + std::string(10'000, 'a')).error().code, ENAMETOOLONG);
}

TEST_F(FolderReaderTest, AnEmptyFolderHasNoEntries)
{
    EXPECT_TRUE(readFolder(folder_)->empty());
}

}  // namespace
}  // namespace tavrel
