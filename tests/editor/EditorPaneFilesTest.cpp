#include "PaneFixture.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tavrel {
namespace {

using test::TestFolder;

/// Gives the file another date, `nanoseconds` later or, with a negative number, earlier.
void moveDate(const std::filesystem::path& path, std::int64_t nanoseconds)
{
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    const std::int64_t present = status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec;
    const std::int64_t moved = present + nanoseconds;
    const timespec times[2] = {{moved / 1'000'000'000, moved % 1'000'000'000},
                               {moved / 1'000'000'000, moved % 1'000'000'000}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

TEST(EditorPaneFiles, OpensAFileInPlaceOfTheEmptyTab)
{
    OnePane one;
    TestFolder folder;
    one.pane.openLocation(folder.write("a.txt", "one\n"));
    ASSERT_EQ(one.pane.tabs().size(), 1U);
    EXPECT_EQ(one.text(), u"one\n");
    EXPECT_EQ(one.pane.document().url, folder / "a.txt");
    EXPECT_FALSE(one.pane.document().isModified);
    EXPECT_TRUE(one.pane.document().diskStatus);
    EXPECT_EQ(one.delegate.status, u"Text");
    EXPECT_EQ(tabTitle(one.pane.document()), u"a.txt");
}

TEST(EditorPaneFiles, OpensAFileBesideATabThatIsNotEmpty)
{
    OnePane one;
    TestFolder folder;
    one.type(u"x");
    one.pane.openLocation(folder.write("a", "one"));
    ASSERT_EQ(one.pane.tabs().size(), 2U);
    EXPECT_EQ(one.pane.activeTabIndex(), 1U);
    EXPECT_EQ(one.text(), u"one");
}

TEST(EditorPaneFiles, GoesToTheTabThatShowsTheFile)
{
    OnePane one;
    TestFolder folder;
    one.pane.openLocation(folder.write("a", "one"));
    one.pane.openLocation(folder.write("b", "two"));
    one.pane.openLocation(folder / "x/.././a");
    EXPECT_EQ(one.pane.tabs().size(), 2U);
    EXPECT_EQ(one.pane.activeTabIndex(), 0U);
}

TEST(EditorPaneFiles, OpeningTheFileShownKeepsTheUnsavedText)
{
    OnePane one;
    TestFolder folder;
    one.pane.openLocation(folder.write("a", "one"));
    one.type(u"x");
    one.pane.openLocation(folder / "a");
    EXPECT_EQ(one.text(), u"xone");
    EXPECT_EQ(one.pane.tabs().size(), 1U);
}

TEST(EditorPaneFiles, SaysWhyAFileCouldNotBeOpened)
{
    OnePane one;
    TestFolder folder;
    one.pane.openLocation(folder / "missing.txt");
    EXPECT_EQ(one.delegate.status, u"Could not open missing.txt: No such file or directory");
    EXPECT_EQ(one.pane.tabs().size(), 1U);
    EXPECT_TRUE(one.pane.document().isEmpty());
    one.pane.openLocation(folder.path());
    EXPECT_EQ(one.delegate.status,
              u"Could not open " + folder.path().filename().u16string() + u": Is a directory");
    one.pane.openLocation("/dev/null");
    EXPECT_EQ(one.delegate.status, u"Could not open null: Not a regular file");
    one.fileSystem.failure = {.call = 0, .code = EACCES, .isLasting = true, .only = "open"};
    one.pane.openLocation(folder.write("a", "one"));
    EXPECT_EQ(one.delegate.status, u"Could not open a: Permission denied");
    EXPECT_EQ(one.fileSystem.openDescriptors(), 0);
}

TEST(EditorPaneFiles, AFileThatCannotBeOpenedLeavesTheOthersAlone)
{
    OnePane one;
    TestFolder folder;
    one.pane.openLocation(folder.write("a", "one"));
    one.type(u"x");
    one.pane.openLocation(folder / "missing");
    EXPECT_EQ(one.text(), u"xone");
    EXPECT_EQ(one.pane.tabs().size(), 1U);
}

TEST(EditorPaneFiles, SavesTheTextAndSaysSo)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    one.pane.save();
    EXPECT_EQ(test::contents(path), "xone");
    EXPECT_FALSE(one.pane.document().isModified);
    EXPECT_EQ(one.delegate.status, u"Text | saved");
    EXPECT_EQ(tabTitle(one.pane.document()), u"a");
    EXPECT_EQ(one.pane.document().history().undoStack().size(), 1U);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
}

TEST(EditorPaneFiles, KeepsTextAndFlagWhereSavingFails)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    one.fileSystem.failure = {.call = 0, .code = ENOSPC, .isLasting = true, .only = "write"};
    one.pane.save();
    EXPECT_EQ(one.delegate.status, u"Could not save a: No space left on device");
    EXPECT_TRUE(one.pane.document().isModified);
    EXPECT_EQ(one.text(), u"xone");
    EXPECT_EQ(test::contents(path), "one");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
    EXPECT_EQ(one.fileSystem.openDescriptors(), 0);
    one.fileSystem.failure.reset();
    one.pane.save();
    EXPECT_EQ(test::contents(path), "xone");
}

TEST(EditorPaneFiles, AFailingSyncIsAFailureToSave)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    one.fileSystem.failure = {.call = 0, .code = EIO, .isLasting = false, .only = "sync"};
    one.pane.save();
    EXPECT_EQ(one.delegate.status, u"Could not save a: Input/output error");
    EXPECT_TRUE(one.pane.document().isModified);
    EXPECT_EQ(test::contents(path), "one");
}

TEST(EditorPaneFiles, SavingATextWithoutAFileAsksWhere)
{
    OnePane one;
    TestFolder folder;
    one.type(u"x");
    one.pane.save();
    EXPECT_EQ(one.delegate.proposedLocation, "untitled.txt");
    EXPECT_TRUE(one.pane.document().isModified);
    EXPECT_FALSE(one.pane.document().url);
    one.delegate.saveLocation = folder / "new.txt";
    one.pane.save();
    EXPECT_EQ(test::contents(folder / "new.txt"), "x");
    EXPECT_EQ(one.pane.document().url, folder / "new.txt");
    EXPECT_EQ(tabTitle(one.pane.document()), u"new.txt");
    EXPECT_EQ(one.delegate.status, u"Text | saved");
}

TEST(EditorPaneFiles, SavingAsProposesThePresentFileAndMovesToTheNewOne)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    one.delegate.saveLocation = folder / "b";
    one.pane.saveAs();
    EXPECT_EQ(one.delegate.proposedLocation, path);
    EXPECT_EQ(test::contents(path), "one");
    EXPECT_EQ(test::contents(folder / "b"), "xone");
    EXPECT_EQ(one.pane.document().url, folder / "b");
    one.type(u"y");
    one.pane.save();
    EXPECT_EQ(test::contents(folder / "b"), "xyone");
}

TEST(EditorPaneFiles, SavingAsWhereItFailsKeepsTheOldFile)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    one.delegate.saveLocation = folder / "missing/b";
    one.pane.saveAs();
    EXPECT_EQ(one.delegate.status, u"Could not save b: No such file or directory");
    EXPECT_EQ(one.pane.document().url, path);
    EXPECT_TRUE(one.pane.document().isModified);
}

TEST(EditorPaneFiles, AutosavesAModifiedFile)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    one.pane.autosave();
    EXPECT_EQ(test::contents(path), "xone");
    EXPECT_EQ(one.delegate.status, u"Text | autosaved");
    EXPECT_FALSE(one.pane.document().isModified);
    one.type(u"y");
    one.pane.autosave();
    EXPECT_EQ(test::contents(path), "xyone");
}

TEST(EditorPaneFiles, AutosavesNothingElse)
{
    OnePane one;
    TestFolder folder;
    one.type(u"x");
    one.pane.autosave();
    EXPECT_TRUE(one.pane.document().isModified);
    EXPECT_EQ(one.delegate.status, u"Text | modified");
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    const std::size_t calls = one.fileSystem.callCount();
    one.pane.autosave();
    EXPECT_EQ(one.fileSystem.callCount(), calls);
    EXPECT_EQ(one.delegate.status, u"Text");
}

TEST(EditorPaneFiles, SaysWhyAFileCouldNotBeAutosaved)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    one.fileSystem.failure = {.call = 0, .code = ENOSPC, .isLasting = true, .only = "write"};
    one.pane.autosave();
    EXPECT_EQ(one.delegate.status, u"Could not autosave a: No space left on device");
    EXPECT_TRUE(one.pane.document().isModified);
    EXPECT_EQ(test::contents(path), "one");
}

/// Opens a file, types, lets `change` work on the file behind the editor's back, and autosaves.
void expectAutosaveKeeps(const std::function<void(const TestFolder&)>& change,
                         std::string_view kept)
{
    OnePane one;
    TestFolder folder;
    one.pane.openLocation(folder.write("a", "one"));
    one.type(u"x");
    change(folder);
    one.pane.autosave();
    EXPECT_EQ(test::contents(folder / "a"), kept);
    EXPECT_TRUE(one.pane.document().isModified);
    EXPECT_EQ(one.delegate.status, u"Text | modified");
}

TEST(EditorPaneFiles, AutosaveNeverOverwritesALaterFile)
{
    expectAutosaveKeeps(
        [](const TestFolder& folder) {
            folder.write("a", "other");
            moveDate(folder / "a", 1'000'000'000);
        },
        "other");
}

TEST(EditorPaneFiles, AutosaveNeverOverwritesAFileWithAnOlderDate)
{
    expectAutosaveKeeps(
        [](const TestFolder& folder) { moveDate(folder / "a", -3'600'000'000'000); }, "one");
}

TEST(EditorPaneFiles, AutosaveNeverOverwritesAnotherFileOfThatName)
{
    expectAutosaveKeeps(
        [](const TestFolder& folder) {
            const auto other = folder.write("b", "two");
            const auto date = std::filesystem::last_write_time(folder / "a");
            std::filesystem::rename(other, folder / "a");
            std::filesystem::last_write_time(folder / "a", date);
        },
        "two");
}

TEST(EditorPaneFiles, AutosaveBringsBackAFileThatIsGone)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    std::filesystem::remove(path);
    one.pane.autosave();
    EXPECT_EQ(test::contents(path), "xone");
    EXPECT_EQ(one.delegate.status, u"Text | autosaved");
}

TEST(EditorPaneFiles, SaveOverwritesWhatChangedOutside)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    folder.write("a", "other");
    moveDate(path, 5'000'000'000);
    one.pane.save();
    EXPECT_EQ(test::contents(path), "xone");
    one.type(u"y");
    one.pane.autosave();
    EXPECT_EQ(test::contents(path), "xyone");
}

TEST(EditorPaneFiles, BytesThatAreNoTextSurviveEditingUndoAndSaving)
{
    OnePane one;
    TestFolder folder;
    const std::string bytes = "a\xFF\xFE"
                              "b\xC3\nc\xE2\x82";
    const auto path = folder.write("a", bytes);
    one.pane.openLocation(path);
    one.pane.save();
    EXPECT_EQ(test::contents(path), bytes);
    one.type(u"x");
    one.pane.save();
    EXPECT_EQ(test::contents(path), "x" + bytes);
    one.run("selectAll");
    one.run("erase");
    one.wait(2);
    EXPECT_EQ(one.text(), u"");
    one.run("undo");
    one.pane.save();
    EXPECT_EQ(test::contents(path), bytes);
    one.run("redo");
    one.run("undo");
    one.pane.setSelectedRange({1, 1});
    one.type(u"?");
    one.pane.save();
    EXPECT_EQ(test::contents(path), "a?\xFE"
                                    "b\xC3\nc\xE2\x82");
}

TEST(EditorPaneFiles, UndoPastTheSavedTextIsNotModified)
{
    OnePane one;
    TestFolder folder;
    const auto path = folder.write("a", "one");
    one.pane.openLocation(path);
    one.type(u"x");
    one.pane.save();
    one.run("undo");
    EXPECT_EQ(one.text(), u"one");
    EXPECT_FALSE(one.pane.document().isModified);
    one.pane.save();
    EXPECT_EQ(test::contents(path), "one");
}

}  // namespace
}  // namespace tavrel
