#include "git/FileWalk.h"

#include "GitTestFolder.h"
#include "git/FolderListing.h"
#include "git/GitIgnoreCache.h"
#include "git/StandardPath.h"
#include "platform/Collator.h"
#include "platform/PosixFileSystem.h"

#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tavrel {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<std::string>;

class FileWalkTest : public testing::Test {
protected:
    Paths walk(const Paths& roots, std::size_t limit = 50'000,
               const std::atomic<bool>* cancelled = nullptr)
    {
        return collectFiles(roots, limit, cache_, collator_, cancelled);
    }
    Paths walk() { return walk({folder_.path()}); }

    /// `width` folders in each folder, `depth` levels of them, three files in each.
    void makeTree(const std::string& at, int width, int depth)
    {
        for (const char* file : {"a.c", "B.c", "c.o"})
            folder_.write(at + file, "");
        for (int index = 0; depth > 0 && index < width; ++index)
            makeTree(at + "f" + std::to_string(index) + "/", width, depth - 1);
    }

    GitTestFolder folder_;
    PosixFileSystem fileSystem_;
    GitIgnoreCache cache_{fileSystem_};
    Collator collator_{""};
};

TEST_F(FileWalkTest, LinksAndSpecialFilesAreLeftOut)
{
    folder_.write("real/a", "");
    folder_.write("b", "");
    fs::create_symlink("real", folder_.at("folder-link"));
    fs::create_symlink("b", folder_.at("file-link"));
    fs::create_symlink(".", folder_.at("real/loop"));
    ASSERT_EQ(::mkfifo(folder_.at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(walk(), (Paths{folder_.at("b"), folder_.at("real/a")}));
}

TEST_F(FileWalkTest, ARootMayBeALink)
{
    folder_.write("real/a", "");
    fs::create_symlink("real", folder_.at("link"));
    fs::create_symlink("real/a", folder_.at("file-link"));
    EXPECT_EQ(walk({folder_.at("link")}), (Paths{folder_.at("link/a")}));
    EXPECT_EQ(walk({folder_.at("file-link")}), (Paths{folder_.at("file-link")}));
}

TEST_F(FileWalkTest, AFolderThatCannotBeReadCountsAsEmpty)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "the superuser may read everything";
    folder_.write("a/b", "");
    folder_.write("c", "");
    fs::permissions(folder_.at("a"), fs::perms::none);
    EXPECT_EQ(walk(), (Paths{folder_.at("c")}));
    fs::permissions(folder_.at("a"), fs::perms::owner_all);
}

TEST_F(FileWalkTest, NamesOfAnyBytesAreKept)
{
    folder_.write("x\xFF.o", "");
    folder_.write("y\xFF.c", "");
    folder_.write("z\n.c", "");
    folder_.write(".gitignore", "*.o\n");
    EXPECT_EQ(walk(), (Paths{folder_.at("y\xFF.c"), folder_.at("z\n.c")}));
}

TEST_F(FileWalkTest, ALargeTreeIsInOrderAndWhole)
{
    makeTree("", 4, 3);
    folder_.write(".gitignore", "*.o\n");
    folder_.write("f1/.gitignore", "!c.o\nf2/\n");
    const Paths found = walk();
    Paths expected;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.path())) {
        const std::string path = entry.path();
        const bool inF1 = isWithin(path, folder_.at("f1"));
        const bool ignored =
            (path.ends_with(".o") && !inF1) || path.ends_with(".gitignore") ||
            (inF1 && path.find("/f2", folder_.path().string().size() + 3) != std::string::npos);
        if (entry.is_regular_file() && !ignored)
            expected.push_back(path);
    }
    std::sort(expected.begin(), expected.end(), [&](const auto& left, const auto& right) {
        return collator_.compareUtf8(left, right) < 0;
    });
    EXPECT_GT(found.size(), 150U);
    EXPECT_EQ(found, expected);
    for (int round = 0; round < 10; ++round)
        ASSERT_EQ(walk(), found);
}

TEST_F(FileWalkTest, TheLimitAlwaysKeepsTheSameFiles)
{
    makeTree("", 3, 3);
    const Paths all = walk();
    for (const std::size_t limit :
         {std::size_t{1}, std::size_t{7}, std::size_t{50}, all.size() - 1}) {
        const Paths first = walk({folder_.path()}, limit);
        EXPECT_EQ(first.size(), limit);
        for (int round = 0; round < 5; ++round)
            ASSERT_EQ(walk({folder_.path()}, limit), first);
        // Of one root they are the first ones, as the folders are taken in the order of the list.
        EXPECT_EQ(first, Paths(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(limit)));
    }
    EXPECT_EQ(walk({folder_.path()}, all.size()), all);
}

TEST_F(FileWalkTest, OverlappingRootsDoNotCountTwiceForTheLimit)
{
    makeTree("", 3, 2);
    const Paths all = walk();
    EXPECT_EQ(walk({folder_.path(), folder_.at("f1"), folder_.path()}, all.size()), all);
}

TEST_F(FileWalkTest, ManyRootsAreSortedTogether)
{
    Paths roots;
    for (int index = 0; index < 300; ++index) {
        const std::string name = "n" + std::to_string(index * 7919 % 300);
        folder_.write(name, "");
        roots.push_back(folder_.at(name));
    }
    const Paths found = walk(roots);
    EXPECT_EQ(found.size(), 300U);
    EXPECT_TRUE(
        std::is_sorted(found.begin(), found.end(), [&](const auto& left, const auto& right) {
            return collator_.compareUtf8(left, right) < 0;
        }));
}

TEST_F(FileWalkTest, DeepFoldersEndWhereTheSystemEndsThem)
{
    fs::path current = folder_.path();
    const int start = ::open(current.c_str(), O_RDONLY | O_DIRECTORY);
    int folder = start;
    const std::string name(250, 'd');
    for (int depth = 0; depth < 20; ++depth) {
        ASSERT_EQ(::mkdirat(folder, name.c_str(), 0700), 0);
        const int next = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY);
        ASSERT_GE(next, 0);
        ::close(folder);
        folder = next;
    }
    const int file = ::openat(folder, "unreachable", O_CREAT | O_WRONLY, 0600);
    ::close(file);
    ::close(folder);
    folder_.write(name + "/a", "");
    EXPECT_EQ(walk(), (Paths{folder_.at(name + "/a")}));
}

TEST_F(FileWalkTest, ACancelledWalkEndsEarly)
{
    makeTree("", 2, 2);
    const std::atomic<bool> cancelled{true};
    EXPECT_TRUE(walk({folder_.path()}, 50'000, &cancelled).empty());
}

TEST_F(FileWalkTest, TheTreeShowsWhereLinksLead)
{
    folder_.write("real/a", "");
    folder_.write("b", "");
    folder_.write(".gitignore", "ignored/\n");
    fs::create_symlink("real", folder_.at("zlink"));
    fs::create_symlink("b", folder_.at("alink"));
    fs::create_symlink("none", folder_.at("dangling"));
    fs::create_symlink("real", folder_.at("ignored"));
    // To the ignore file a link is no folder, so "ignored/" does not speak of it.
    EXPECT_EQ(listFolder(folder_.path(), cache_, collator_),
              (std::vector<ListedChild>{{"ignored", true},
                                        {"real", true},
                                        {"zlink", true},
                                        {"alink", false},
                                        {"b", false},
                                        {"dangling", false}}));
}

TEST(StandardPath, DotsAndSlashesGo)
{
    EXPECT_EQ(standardPath("/"), "/");
    EXPECT_EQ(standardPath("//a/./b/../c//"), "/a/c");
    EXPECT_EQ(standardPath("/../.."), "/");
    EXPECT_EQ(standardPath("/a/.."), "/");
    EXPECT_EQ(standardPath("/a/b/../../.."), "/");
    EXPECT_EQ(standardPath("/..."), "/...");
    EXPECT_EQ(standardPath("a"), "");
    EXPECT_EQ(standardPath(""), "");
}

TEST(StandardPath, ParentsEndAtTheRoot)
{
    EXPECT_EQ(parentPath("/a/b"), "/a");
    EXPECT_EQ(parentPath("/a"), "/");
    EXPECT_EQ(parentPath("/"), "/");
    EXPECT_EQ(parentPath(""), "");
    EXPECT_EQ(pathInFolder("/", "a"), "/a");
    EXPECT_EQ(pathInFolder("/a", "b"), "/a/b");
}

TEST(StandardPath, WithinMeansWholeComponents)
{
    EXPECT_TRUE(isWithin("/a/b", "/a"));
    EXPECT_TRUE(isWithin("/a", "/a"));
    EXPECT_TRUE(isWithin("/a", "/"));
    EXPECT_FALSE(isWithin("/ab", "/a"));
    EXPECT_FALSE(isWithin("/a", "/a/b"));
}

}  // namespace
}  // namespace tavrel
