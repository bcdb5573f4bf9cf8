#include "PaneFixture.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

class EditorPaneFilesTest : public PaneFilesTest {
protected:
    void expectAutosaveKeeps(std::string_view kept)
    {
        pane.autosave();
        EXPECT_EQ(test::contents(folder / "a"), kept);
        EXPECT_TRUE(document().isModified);
        EXPECT_EQ(delegate.status, u"Text | modified");
    }
};

TEST_F(EditorPaneFilesTest, OpensAFileInPlaceOfTheEmptyTab)
{
    open("a.txt", "one\n");
    ASSERT_EQ(pane.tabs().size(), 1U);
    EXPECT_EQ(text(), u"one\n");
    EXPECT_EQ(document().url, folder / "a.txt");
    EXPECT_FALSE(document().isModified);
    EXPECT_TRUE(document().diskStatus);
    EXPECT_EQ(delegate.status, u"Text");
    EXPECT_EQ(tabTitle(document()), u"a.txt");
}

TEST_F(EditorPaneFilesTest, OpensAFileBesideATabThatIsNotEmpty)
{
    type(u"x");
    open("a", "one");
    ASSERT_EQ(pane.tabs().size(), 2U);
    EXPECT_EQ(pane.activeTabIndex(), 1U);
    EXPECT_EQ(text(), u"one");
}

TEST_F(EditorPaneFilesTest, GoesToTheTabThatShowsTheFile)
{
    open("a", "one");
    open("b", "two");
    pane.openLocation(folder / "x/.././a");
    EXPECT_EQ(pane.tabs().size(), 2U);
    EXPECT_EQ(pane.activeTabIndex(), 0U);
}

TEST_F(EditorPaneFilesTest, OpeningTheFileShownKeepsTheUnsavedText)
{
    openAndType("a", "one");
    pane.openLocation(folder / "a");
    EXPECT_EQ(text(), u"xone");
    EXPECT_EQ(pane.tabs().size(), 1U);
}

TEST_F(EditorPaneFilesTest, SaysWhyAFileCouldNotBeOpened)
{
    pane.openLocation(folder / "missing.txt");
    EXPECT_EQ(delegate.status, u"Could not open missing.txt: No such file or directory");
    EXPECT_EQ(pane.tabs().size(), 1U);
    EXPECT_TRUE(document().isEmpty());
    pane.openLocation(folder.path());
    EXPECT_EQ(delegate.status,
              u"Could not open " + folder.path().filename().u16string() + u": Is a directory");
    pane.openLocation("/dev/null");
    EXPECT_EQ(delegate.status, u"Could not open null: Not a regular file");
    failAlways("open", EACCES);
    open("a", "one");
    EXPECT_EQ(delegate.status, u"Could not open a: Permission denied");
    EXPECT_EQ(fileSystem.openDescriptors(), 0);
}

TEST_F(EditorPaneFilesTest, AFileThatCannotBeOpenedLeavesTheOthersAlone)
{
    openAndType("a", "one");
    pane.openLocation(folder / "missing");
    EXPECT_EQ(text(), u"xone");
    EXPECT_EQ(pane.tabs().size(), 1U);
}

TEST_F(EditorPaneFilesTest, SavesTheTextAndSaysSo)
{
    const auto path = openAndType("a", "one");
    pane.save();
    EXPECT_EQ(test::contents(path), "xone");
    EXPECT_FALSE(document().isModified);
    EXPECT_EQ(delegate.status, u"Text | saved");
    EXPECT_EQ(tabTitle(document()), u"a");
    EXPECT_EQ(document().history().undoStack().size(), 1U);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
}

TEST_F(EditorPaneFilesTest, KeepsTextAndFlagWhereSavingFails)
{
    const auto path = openAndType("a", "one");
    failAlways("write", ENOSPC);
    pane.save();
    EXPECT_EQ(delegate.status, u"Could not save a: No space left on device");
    EXPECT_TRUE(document().isModified);
    EXPECT_EQ(text(), u"xone");
    EXPECT_EQ(test::contents(path), "one");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
    EXPECT_EQ(fileSystem.openDescriptors(), 0);
    fileSystem.failure.reset();
    pane.save();
    EXPECT_EQ(test::contents(path), "xone");
}

TEST_F(EditorPaneFilesTest, AFailingSyncIsAFailureToSave)
{
    const auto path = openAndType("a", "one");
    fileSystem.failure = {.call = 0, .code = EIO, .isLasting = false, .only = "sync"};
    pane.save();
    EXPECT_EQ(delegate.status, u"Could not save a: Input/output error");
    EXPECT_TRUE(document().isModified);
    EXPECT_EQ(test::contents(path), "one");
}

TEST_F(EditorPaneFilesTest, SavingATextWithoutAFileAsksWhere)
{
    type(u"x");
    pane.save();
    EXPECT_EQ(delegate.proposedLocation, "untitled.txt");
    EXPECT_TRUE(document().isModified);
    EXPECT_FALSE(document().url);
    delegate.saveLocation = folder / "new.txt";
    pane.save();
    EXPECT_EQ(test::contents(folder / "new.txt"), "x");
    EXPECT_EQ(document().url, folder / "new.txt");
    EXPECT_EQ(tabTitle(document()), u"new.txt");
    EXPECT_EQ(delegate.status, u"Text | saved");
}

TEST_F(EditorPaneFilesTest, SavingAsProposesThePresentFileAndMovesToTheNewOne)
{
    const auto path = openAndType("a", "one");
    delegate.saveLocation = folder / "b";
    pane.saveAs();
    EXPECT_EQ(delegate.proposedLocation, path);
    EXPECT_EQ(test::contents(path), "one");
    EXPECT_EQ(test::contents(folder / "b"), "xone");
    EXPECT_EQ(document().url, folder / "b");
    type(u"y");
    pane.save();
    EXPECT_EQ(test::contents(folder / "b"), "xyone");
}

TEST_F(EditorPaneFilesTest, SavingAsWhereItFailsKeepsTheOldFile)
{
    const auto path = openAndType("a", "one");
    delegate.saveLocation = folder / "missing/b";
    pane.saveAs();
    EXPECT_EQ(delegate.status, u"Could not save b: No such file or directory");
    EXPECT_EQ(document().url, path);
    EXPECT_TRUE(document().isModified);
}

TEST_F(EditorPaneFilesTest, AutosavesAModifiedFile)
{
    const auto path = openAndType("a", "one");
    pane.autosave();
    EXPECT_EQ(test::contents(path), "xone");
    EXPECT_EQ(delegate.status, u"Text | autosaved");
    EXPECT_FALSE(document().isModified);
    type(u"y");
    pane.autosave();
    EXPECT_EQ(test::contents(path), "xyone");
}

TEST_F(EditorPaneFilesTest, AutosavesNothingElse)
{
    type(u"x");
    pane.autosave();
    EXPECT_TRUE(document().isModified);
    EXPECT_EQ(delegate.status, u"Text | modified");
    const auto path = open("a", "one");
    const std::size_t calls = fileSystem.callCount();
    pane.autosave();
    EXPECT_EQ(fileSystem.callCount(), calls);
    EXPECT_EQ(delegate.status, u"Text");
}

TEST_F(EditorPaneFilesTest, SaysWhyAFileCouldNotBeAutosaved)
{
    const auto path = openAndType("a", "one");
    failAlways("write", ENOSPC);
    pane.autosave();
    EXPECT_EQ(delegate.status, u"Could not autosave a: No space left on device");
    EXPECT_TRUE(document().isModified);
    EXPECT_EQ(test::contents(path), "one");
}

TEST_F(EditorPaneFilesTest, AutosaveNeverOverwritesALaterFile)
{
    openAndType("a", "one");
    writeOutside("a", "other");
    expectAutosaveKeeps("other");
}

TEST_F(EditorPaneFilesTest, AutosaveNeverOverwritesAFileWithAnOlderDate)
{
    const auto path = openAndType("a", "one");
    test::moveDate(path, -3'600'000'000'000);
    expectAutosaveKeeps("one");
}

TEST_F(EditorPaneFilesTest, AutosaveNeverOverwritesAnotherFileOfThatName)
{
    const auto path = openAndType("a", "one");
    const auto other = folder.write("b", "two");
    const auto date = std::filesystem::last_write_time(path);
    std::filesystem::rename(other, path);
    std::filesystem::last_write_time(path, date);
    expectAutosaveKeeps("two");
}

TEST_F(EditorPaneFilesTest, AutosaveBringsBackAFileThatIsGone)
{
    const auto path = openAndType("a", "one");
    std::filesystem::remove(path);
    pane.autosave();
    EXPECT_EQ(test::contents(path), "xone");
    EXPECT_EQ(delegate.status, u"Text | autosaved");
}

TEST_F(EditorPaneFilesTest, BytesThatAreNoTextSurviveEditingUndoAndSaving)
{
    const std::string bytes = "a\xFF\xFE"
                              "b\xC3\nc\xE2\x82";
    const auto path = open("a", bytes);
    pane.save();
    EXPECT_EQ(test::contents(path), bytes);
    type(u"x");
    pane.save();
    EXPECT_EQ(test::contents(path), "x" + bytes);
    run("selectAll");
    run("erase");
    wait(2);
    EXPECT_EQ(text(), u"");
    run("undo");
    pane.save();
    EXPECT_EQ(test::contents(path), bytes);
    run("redo");
    run("undo");
    pane.setSelectedRange({1, 1});
    type(u"?");
    pane.save();
    EXPECT_EQ(test::contents(path), "a?\xFE"
                                    "b\xC3\nc\xE2\x82");
}

TEST_F(EditorPaneFilesTest, UndoPastTheSavedTextIsNotModified)
{
    const auto path = openAndType("a", "one");
    pane.save();
    run("undo");
    EXPECT_EQ(text(), u"one");
    EXPECT_FALSE(document().isModified);
    pane.save();
    EXPECT_EQ(test::contents(path), "one");
}

}  // namespace
}  // namespace tavrel
