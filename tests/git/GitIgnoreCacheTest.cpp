#include "git/GitIgnoreCache.h"

#include "GitTestFolder.h"
#include "platform/PosixFileSystem.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tavrel {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class GitIgnoreCacheTest : public testing::Test {
protected:
    bool isIgnoredIn(const std::string& relativeFolder, const std::string& name)
    {
        const std::string folder =
            relativeFolder.empty() ? folder_.path().string() : folder_.at(relativeFolder);
        return isIgnored(folder + "/" + name, false, cache_.files(folder));
    }

    /// Gives the file a date of its own, as a save some time later would.
    void setDate(const std::string& name, std::chrono::nanoseconds later)
    {
        fs::last_write_time(folder_.at(name), start_ + later);
    }

    GitTestFolder folder_;
    PosixFileSystem fileSystem_;
    GitIgnoreCache cache_{fileSystem_};
    fs::file_time_type start_ = fs::file_time_type::clock::now();
};

TEST_F(GitIgnoreCacheTest, AFolderWithoutAnIgnoreFileHasNone)
{
    EXPECT_EQ(cache_.file(folder_.path()), nullptr);
    EXPECT_EQ(cache_.file(folder_.at("none")), nullptr);
}

TEST_F(GitIgnoreCacheTest, AnUnchangedFileIsParsedOnce)
{
    folder_.write(".gitignore", "*.o\n");
    const auto first = cache_.file(folder_.path());
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->rules().size(), 1U);
    EXPECT_EQ(first->base(), folder_.path().string() + "/");
    EXPECT_EQ(cache_.file(folder_.path()), first);
}

TEST_F(GitIgnoreCacheTest, ANewDateParsesAnew)
{
    folder_.write(".gitignore", "*.o\n");
    setDate(".gitignore", 0ns);
    EXPECT_TRUE(isIgnoredIn("", "a.o"));
    folder_.write(".gitignore", "*.p\n");
    setDate(".gitignore", 1'000'000ns);
    EXPECT_FALSE(isIgnoredIn("", "a.o"));
    EXPECT_TRUE(isIgnoredIn("", "a.p"));
}

TEST_F(GitIgnoreCacheTest, ANewSizeOrAnotherFileOfTheSameDateParsesAnew)
{
    folder_.write(".gitignore", "*.o\n");
    setDate(".gitignore", 0ns);
    EXPECT_TRUE(isIgnoredIn("", "a.o"));
    folder_.write(".gitignore", "*.long\n");
    setDate(".gitignore", 0ns);
    EXPECT_TRUE(isIgnoredIn("", "a.long"));
    folder_.write("other", "*.lung\n");
    setDate("other", 0ns);
    fs::rename(folder_.at("other"), folder_.at(".gitignore"));
    EXPECT_TRUE(isIgnoredIn("", "a.lung"));
    EXPECT_FALSE(isIgnoredIn("", "a.long"));
}

TEST_F(GitIgnoreCacheTest, ARemovedFileIsAbsentAndMayComeBack)
{
    folder_.write(".gitignore", "*.o\n");
    EXPECT_TRUE(isIgnoredIn("", "a.o"));
    fs::remove(folder_.at(".gitignore"));
    EXPECT_FALSE(isIgnoredIn("", "a.o"));
    folder_.write(".gitignore", "*.o\n");
    EXPECT_TRUE(isIgnoredIn("", "a.o"));
}

TEST_F(GitIgnoreCacheTest, WhatIsNoRegularFileCountsAsAbsent)
{
    folder_.write("real", "*.o\n");
    fs::create_symlink("real", folder_.at(".gitignore"));
    EXPECT_EQ(cache_.file(folder_.path()), nullptr);
    fs::remove(folder_.at(".gitignore"));
    fs::create_directory(folder_.at(".gitignore"));
    EXPECT_EQ(cache_.file(folder_.path()), nullptr);
    fs::remove(folder_.at(".gitignore"));
    ASSERT_EQ(::mkfifo(folder_.at(".gitignore").c_str(), 0600), 0);
    EXPECT_EQ(cache_.file(folder_.path()), nullptr);
}

TEST_F(GitIgnoreCacheTest, WhatIsNotUtf8OrTooLargeCountsAsAbsent)
{
    folder_.write(".gitignore", "*.o\n\xE9\n");
    EXPECT_EQ(cache_.file(folder_.path()), nullptr);
    EXPECT_EQ(cache_.file(folder_.path()), nullptr);
    folder_.write(".gitignore", std::string(GitIgnoreCache::maximumBytes + 1, 'a'));
    EXPECT_EQ(cache_.file(folder_.path()), nullptr);
    folder_.write(".gitignore", std::string(GitIgnoreCache::maximumBytes, 'a'));
    EXPECT_NE(cache_.file(folder_.path()), nullptr);
}

TEST_F(GitIgnoreCacheTest, AnUnreadableFileCountsAsAbsent)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "the superuser may read everything";
    folder_.write(".gitignore", "*.o\n");
    fs::permissions(folder_.at(".gitignore"), fs::perms::none);
    EXPECT_EQ(cache_.file(folder_.path()), nullptr);
}

TEST_F(GitIgnoreCacheTest, TheChainGoesFromTheOutermostToTheFoldersOwn)
{
    fs::create_directory(folder_.at(".git"));
    folder_.write(".gitignore", "1\n");
    folder_.write("a/b/.gitignore", "2\n");
    const GitIgnoreChain chain = cache_.files(folder_.at("a/b"));
    ASSERT_EQ(chain.size(), 2U);
    EXPECT_EQ(chain[0]->base(), folder_.path().string() + "/");
    EXPECT_EQ(chain[1]->base(), folder_.at("a/b") + "/");
}

TEST_F(GitIgnoreCacheTest, TheChainEndsAtTheRootOfARepository)
{
    folder_.write(".gitignore", "1\n");
    folder_.write("a/.gitignore", "2\n");
    folder_.write("a/.git", "gitdir: elsewhere\n");
    EXPECT_EQ(cache_.files(folder_.at("a")).size(), 1U);
    EXPECT_EQ(cache_.files(folder_.at("a/b")).size(), 1U);
    EXPECT_TRUE(cache_.filesAbove(folder_.at("a")).empty());
    EXPECT_EQ(cache_.filesAbove(folder_.at("b")).size(), cache_.files(folder_.path()).size());
}

TEST_F(GitIgnoreCacheTest, TheRootOfTheFileSystemEndsTheChain)
{
    EXPECT_NO_FATAL_FAILURE(cache_.files("/"));
    EXPECT_TRUE(cache_.filesAbove("/").empty());
    EXPECT_TRUE(cache_.files("").empty());
}

TEST_F(GitIgnoreCacheTest, TheChainLooksAt129FoldersAtMost)
{
    folder_.write(".gitignore", "1\n");
    std::string deep = folder_.path();
    for (std::size_t depth = 1; depth < GitIgnoreCache::maximumDepth; ++depth)
        deep += "/d";
    EXPECT_FALSE(cache_.files(deep).empty());
    EXPECT_TRUE(cache_.files(deep + "/d").empty());
}

TEST_F(GitIgnoreCacheTest, SeveralThreadsMayAskAtOnce)
{
    for (int index = 0; index < 20; ++index)
        folder_.write("f" + std::to_string(index) + "/.gitignore", "*.o\n");
    std::vector<std::thread> threads;
    std::vector<int> found(4);
    for (int& count : found) {
        threads.emplace_back([this, &count] {
            for (int round = 0; round < 50; ++round) {
                for (int index = 0; index < 20; ++index)
                    count += cache_.file(folder_.at("f" + std::to_string(index))) != nullptr;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(found, std::vector<int>(4, 1000));
}

}  // namespace
}  // namespace tavrel
