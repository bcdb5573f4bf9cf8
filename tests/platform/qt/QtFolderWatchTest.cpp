#include "platform/qt/QtFolderWatch.h"

#include "../FileTestSupport.h"
#include "platform/AtomicWrite.h"

#include <QCoreApplication>
#include <QTimer>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <sys/resource.h>
#include <unistd.h>

namespace tavrel {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

/// A watch over a running event loop, and the folders it told of.
struct QtFolderWatchTest : testing::Test, FolderWatchDelegate {
    void folderDidChange(const std::filesystem::path& changed) override
    {
        told.insert(changed);
        if (destroysWatch)
            watch.reset();
        QCoreApplication::quit();
    }
    void folderWatchDidRunOut() override { ++runOuts; }

    /// Runs the event loop until something is told, and answers what.
    std::set<std::filesystem::path> next()
    {
        told.clear();
        QTimer limit;
        limit.setSingleShot(true);
        QObject::connect(&limit, &QTimer::timeout, [] { QCoreApplication::quit(); });
        limit.start(std::chrono::seconds(30));
        application.exec();
        EXPECT_TRUE(limit.isActive()) << "nothing was told";
        return told;
    }
    std::filesystem::path makeFolder(std::string_view relative)
    {
        std::filesystem::create_directories(folder / relative);
        return folder / relative;
    }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    test::TestFolder folder;
    std::filesystem::path first = makeFolder("first");
    std::filesystem::path second = makeFolder("second");
    std::optional<QtFolderWatch> watch{std::in_place, *this};
    std::set<std::filesystem::path> told;
    int runOuts = 0;
    bool destroysWatch = false;
};

TEST_F(QtFolderWatchTest, TellsOfAFileThatIsMade)
{
    watch->setFolders({first, second});
    folder.write("first/a", "");
    EXPECT_THAT(next(), ElementsAre(first));
}

TEST_F(QtFolderWatchTest, TellsOfAFileThatIsWrittenInPlace)
{
    folder.write("first/a", "old");
    watch->setFolders({first, second});
    const int file = ::open((first / "a").c_str(), O_WRONLY);
    ASSERT_EQ(::write(file, "new", 3), 3);
    ::close(file);
    EXPECT_THAT(next(), ElementsAre(first));
}

TEST_F(QtFolderWatchTest, TellsOfAFileThatIsReplaced)
{
    PosixFileSystem fileSystem;
    folder.write("second/a", "old");
    watch->setFolders({first, second});
    ASSERT_TRUE(writeFileAtomically(fileSystem, second / "a", byteSource("new")));
    EXPECT_THAT(next(), ElementsAre(second));
}

TEST_F(QtFolderWatchTest, TellsOfFilesThatAreRemovedOrRenamed)
{
    folder.write("first/a", "");
    folder.write("first/b", "");
    watch->setFolders({first});
    std::filesystem::remove(first / "a");
    EXPECT_THAT(next(), ElementsAre(first));
    std::filesystem::rename(first / "b", first / "c");
    EXPECT_THAT(next(), ElementsAre(first));
}

TEST_F(QtFolderWatchTest, TellsManyChangesAsOne)
{
    watch->setFolders({first, second});
    for (int i = 0; i < 100; ++i)
        folder.write("first/" + std::to_string(i), "");
    folder.write("second/a", "");
    EXPECT_THAT(next(), ElementsAre(first, second));
}

TEST_F(QtFolderWatchTest, WhatLiesDeeperIsNotLookedAt)
{
    makeFolder("first/deeper");
    watch->setFolders({first, second});
    folder.write("first/deeper/a", "");
    folder.write("second/a", "");
    EXPECT_THAT(next(), ElementsAre(second));
}

TEST_F(QtFolderWatchTest, NewFoldersTakeThePlaceOfThoseBefore)
{
    watch->setFolders({first});
    watch->setFolders({second});
    folder.write("first/a", "");
    folder.write("second/a", "");
    EXPECT_THAT(next(), ElementsAre(second));
    watch->setFolders({first, second});
    folder.write("first/b", "");
    EXPECT_THAT(next(), ElementsAre(first));
}

TEST_F(QtFolderWatchTest, FilesAndMissingFoldersAreLeftOut)
{
    const auto file = folder.write("file", "");
    watch->setFolders({file, folder / "missing", second});
    folder.write("second/a", "");
    EXPECT_THAT(next(), ElementsAre(second));
    EXPECT_EQ(runOuts, 0);
}

TEST_F(QtFolderWatchTest, AFolderThatIsMadeLaterIsTakenUpByTheNextCall)
{
    watch->setFolders({first, folder / "later"});
    makeFolder("later");
    watch->setFolders({first, folder / "later"});
    folder.write("later/a", "");
    EXPECT_THAT(next(), ElementsAre(folder / "later"));
}

TEST_F(QtFolderWatchTest, AFolderThatIsRemovedIsToldAndCanComeBack)
{
    watch->setFolders({first});
    std::filesystem::remove(first);
    EXPECT_THAT(next(), ElementsAre(first));
    makeFolder("first");
    watch->setFolders({first});
    folder.write("first/a", "");
    EXPECT_THAT(next(), ElementsAre(first));
}

TEST_F(QtFolderWatchTest, AFolderThatIsRenamedIsNoLongerWatched)
{
    watch->setFolders({first, second});
    std::filesystem::rename(first, folder / "moved");
    EXPECT_THAT(next(), ElementsAre(first));
    folder.write("moved/a", "");
    folder.write("second/a", "");
    EXPECT_THAT(next(), ElementsAre(second));
}

TEST_F(QtFolderWatchTest, TwoPathsOfOneFolderAreBothTold)
{
    std::filesystem::create_directory_symlink(first, folder / "link");
    watch->setFolders({first, folder / "link"});
    folder.write("first/a", "");
    EXPECT_THAT(next(), ElementsAre(first, folder / "link"));
    watch->setFolders({folder / "link"});
    folder.write("first/b", "");
    EXPECT_THAT(next(), ElementsAre(folder / "link"));
}

TEST_F(QtFolderWatchTest, ADelegateMayDestroyTheWatch)
{
    destroysWatch = true;
    watch->setFolders({first, second});
    folder.write("first/a", "");
    folder.write("second/a", "");
    EXPECT_EQ(next().size(), 1U);
    QCoreApplication::processEvents();
}

TEST_F(QtFolderWatchTest, WatchesThatRunOutAreToldOnce)
{
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none = {0, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    watch.emplace(*this);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    watch->setFolders({});
    EXPECT_EQ(runOuts, 0);
    watch->setFolders({first, second});
    watch->setFolders({second});
    EXPECT_EQ(runOuts, 1);
}

}  // namespace

}  // namespace tavrel

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
