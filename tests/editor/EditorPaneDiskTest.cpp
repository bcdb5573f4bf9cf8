#include "PaneFixture.h"

#include <cerrno>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavrel {
namespace {

constexpr std::size_t keep = 0;
constexpr std::size_t reload = 1;

class EditorPaneDiskTest : public PaneFilesTest {
protected:
    std::size_t questions() const { return delegate.alerts.size(); }
    const UndoHistory& history() { return document().history(); }
};

TEST_F(EditorPaneDiskTest, AFileThatHasNotChangedIsNotRead)
{
    open("a", "one");
    const std::uint64_t revision = document().textStorage().revision();
    fileSystem.beforeRead = [] { FAIL(); };
    pane.checkDisk();
    type(u"x");
    pane.checkDisk();
    EXPECT_EQ(document().textStorage().revision(), revision + 1);
    EXPECT_EQ(questions(), 0U);
}

TEST_F(EditorPaneDiskTest, ACleanDocumentReloadsSilently)
{
    openAndType("a", "one");
    pane.undo();
    ASSERT_FALSE(document().isModified);
    ASSERT_FALSE(history().redoStack().empty());
    writeOutside("a", "two words");
    pane.checkDisk();
    EXPECT_EQ(text(), u"two words");
    EXPECT_FALSE(document().isModified);
    EXPECT_TRUE(history().undoStack().empty());
    EXPECT_TRUE(history().redoStack().empty());
    EXPECT_EQ(questions(), 0U);
    EXPECT_EQ(delegate.status, u"Text");
    fileSystem.beforeRead = [] { FAIL(); };
    pane.checkDisk();
}

TEST_F(EditorPaneDiskTest, AnOlderDateAndAnotherFileOfThatNameAreChangesToo)
{
    const auto path = open("a", "one");
    folder.write("a", "two");
    test::moveDate(path, -3'600'000'000'000);
    pane.checkDisk();
    EXPECT_EQ(text(), u"two");
    const auto date = std::filesystem::last_write_time(path);
    std::filesystem::rename(folder.write("b", "six"), path);
    std::filesystem::last_write_time(path, date);
    pane.checkDisk();
    EXPECT_EQ(text(), u"six");
}

TEST_F(EditorPaneDiskTest, AnotherSizeIsAChangeThoughTheDateIsTheSame)
{
    const auto path = open("a", "one");
    const auto date = std::filesystem::last_write_time(path);
    std::ofstream(path, std::ios::app) << " two";
    std::filesystem::last_write_time(path, date);
    pane.checkDisk();
    EXPECT_EQ(text(), u"one two");
}

TEST_F(EditorPaneDiskTest, AModifiedDocumentIsAskedAbout)
{
    openAndType("a.txt", "one");
    writeOutside("a.txt", "two");
    pane.checkDisk();
    ASSERT_EQ(questions(), 1U);
    const EditorPaneAlert& alert = delegate.alerts.front();
    EXPECT_EQ(alert.message, u"a.txt changed on disk");
    EXPECT_EQ(alert.information,
              u"The file was modified outside Tavrel Code while this tab has unsaved changes.");
    EXPECT_EQ(alert.buttons,
              (std::vector<std::u16string>{u"Keep Editor Version", u"Reload From Disk"}));
    EXPECT_EQ(alert.escapeButton, keep);
    EXPECT_EQ(text(), u"xone");  // Escape keeps.
    EXPECT_TRUE(document().isModified);
    EXPECT_EQ(history().undoStack().size(), 1U);
}

TEST_F(EditorPaneDiskTest, TheEditorsVersionIsKeptUntilTheNextChange)
{
    const auto path = openAndType("a", "one");
    writeOutside("a", "two");
    delegate.answer = keep;
    pane.checkDisk();
    pane.checkDisk();
    EXPECT_EQ(questions(), 1U);
    EXPECT_TRUE(document().isModified);
    writeOutside("a", "three");
    pane.checkDisk();
    EXPECT_EQ(questions(), 2U);
    pane.autosave();  // The user has decided.
    EXPECT_EQ(test::contents(path), "xone");
}

TEST_F(EditorPaneDiskTest, ReloadingGivesTheUnsavedTextUp)
{
    openAndType("a", "one");
    writeOutside("a", "two");
    delegate.answer = reload;
    pane.checkDisk();
    EXPECT_EQ(text(), u"two");
    EXPECT_FALSE(document().isModified);
    EXPECT_TRUE(history().undoStack().empty());
    EXPECT_EQ(tabTitle(document()), u"a");
    pane.checkDisk();
    EXPECT_EQ(questions(), 1U);
}

TEST_F(EditorPaneDiskTest, AnUnreadableFileIsLeftAlone)
{
    openAndType("a", "one");
    pane.save();
    writeOutside("a", "two");
    failAlways("open", EACCES);
    pane.checkDisk();
    EXPECT_EQ(text(), u"xone");
    EXPECT_EQ(history().undoStack().size(), 1U);
    type(u"y");
    delegate.answer = reload;
    pane.checkDisk();
    EXPECT_EQ(text(), u"xyone");
    EXPECT_TRUE(document().isModified);
    EXPECT_EQ(fileSystem.openDescriptors(), 0);
}

TEST_F(EditorPaneDiskTest, AFolderInPlaceOfTheFileIsNotWrittenOver)
{
    const auto path = openAndType("a", "one");
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    pane.autosave();
    EXPECT_TRUE(document().isModified);
    pane.checkDisk();
    pane.checkDisk();
    EXPECT_EQ(delegate.alerts.size(), 1U);
    pane.save();
    EXPECT_EQ(delegate.status, u"Could not save a: Is a directory");
    EXPECT_TRUE(document().isModified);
    delegate.answer = 1;
    pane.files().reload(path);
    EXPECT_EQ(text(), u"xone");
    EXPECT_TRUE(document().isModified);
}

TEST_F(EditorPaneDiskTest, AFolderThatHasGoneKeepsTheTextUnsaved)
{
    std::filesystem::create_directory(folder / "sub");
    const auto path = openAndType("sub/a", "one");
    std::filesystem::remove_all(folder / "sub");
    pane.checkDisk();
    pane.save();
    EXPECT_EQ(delegate.status, u"Could not save a: No such file or directory");
    EXPECT_TRUE(document().isModified);
    std::filesystem::create_directory(folder / "sub");
    pane.save();
    EXPECT_EQ(test::contents(path), "xone");
}

TEST_F(EditorPaneDiskTest, AFileThatHasGoneChangesNothing)
{
    const auto path = open("a", "one");
    std::filesystem::remove(path);
    pane.checkDisk();
    EXPECT_EQ(text(), u"one");
    EXPECT_FALSE(document().isModified);
    type(u"x");
    pane.checkDisk();
    EXPECT_EQ(questions(), 0U);
    folder.write("a", "back");
    pane.checkDisk();
    EXPECT_EQ(questions(), 1U);
}

TEST_F(EditorPaneDiskTest, ATextWithoutAFileIsSkipped)
{
    type(u"x");
    pane.checkDisk();
    EXPECT_EQ(questions(), 0U);
}

TEST_F(EditorPaneDiskTest, EveryDocumentIsLookedAtOnce)
{
    open("b", "other");
    openAndType("a", "one");
    pane.showDocument(pane.activeTab().document);
    ASSERT_EQ(pane.tabs().size(), 3U);
    writeOutside("a", "two");
    writeOutside("b", "another");
    pane.checkDisk();
    EXPECT_EQ(questions(), 1U);
    EXPECT_EQ(pane.tabs()[0]->document->text(), u"another");
}

TEST_F(EditorPaneDiskTest, TwoPanesAskOnceAboutTheirDocument)
{
    openAndType("a", "one");
    TestPane other(world());
    other.pane.showDocument(pane.activeTab().document);
    writeOutside("a", "two");
    pane.checkDisk();
    other.pane.checkDisk();
    EXPECT_EQ(questions(), 1U);
    EXPECT_TRUE(other.delegate.alerts.empty());
}

TEST_F(EditorPaneDiskTest, NothingHappensToADocumentWhileTheUserIsAskedAboutIt)
{
    const auto path = openAndType("a", "one");
    TestPane other(world());
    other.pane.showDocument(pane.activeTab().document);
    delegate.editors = other.delegate.editors = {&pane, &other.pane};
    writeOutside("a", "two");
    delegate.whileAsked = [&] {
        EXPECT_TRUE(document().isAskedAbout());
        pane.didEndEditing();  // The dialog takes the focus.
        mainQueue.run();
        other.pane.autosave();
        other.pane.save();
        other.pane.saveAs();
        writeOutside("a", "three");
        pane.checkDisk();
        other.pane.checkDisk();
        other.pane.files().reload(path);
        EXPECT_EQ(pane.closeTab(0), TabClosing::closed);  // Another view is left.
        EXPECT_EQ(other.pane.closeTab(0), TabClosing::cancelled);
    };
    pane.checkDisk();
    EXPECT_EQ(test::contents(path), "three");
    EXPECT_EQ(other.text(), u"xone");
    EXPECT_EQ(questions(), 1U);
    EXPECT_TRUE(other.delegate.alerts.empty());
    EXPECT_TRUE(other.delegate.proposedLocation.empty());
    other.pane.checkDisk();  // What changed meanwhile is another change.
    EXPECT_EQ(other.delegate.alerts.size(), 1U);
    EXPECT_FALSE(other.pane.document().isAskedAbout());
}

TEST_F(EditorPaneDiskTest, APaneMayGoWhileTheUserIsAsked)
{
    openAndType("a", "one");
    auto going = std::make_unique<TestPane>(world());
    going->pane.showDocument(pane.activeTab().document);
    going->pane.openLocation(folder.write("b", "two"));
    going->type(u"y");
    writeOutside("a", "1");
    writeOutside("b", "2");
    FakePaneDelegate asked;
    asked.answer = reload;
    asked.whileAsked = [&going] { going.reset(); };
    going->pane.setDelegate(&asked);
    going->pane.checkDisk();
    EXPECT_EQ(asked.alerts.size(), 1U);
    EXPECT_EQ(text(), u"xone");
    EXPECT_FALSE(document().isAskedAbout());
}

TEST_F(EditorPaneDiskTest, AReloadMovesSelectionsOfAllTabsWithTheirText)
{
    open("a", "one two three");
    pane.setSelectedRange({8, 5});
    pane.storeCursors({0, 4});
    pane.showDocument(pane.activeTab().document);
    pane.setSelectedRange({4, 3});
    writeOutside("a", "one 2 three");
    pane.checkDisk();
    EXPECT_EQ(pane.selectedRange(), (TextRange{4, 1}));
    pane.selectTab(0);
    EXPECT_EQ(pane.selectedRange(), (TextRange{6, 5}));
    writeOutside("a", "on");
    pane.checkDisk();
    EXPECT_EQ(pane.selectedRange(), (TextRange{2, 0}));
    EXPECT_THAT(pane.secondaryCursorLocations(), testing::Each(testing::Le(2U)));
}

TEST_F(EditorPaneDiskTest, AReloadReplacesOnlyWhatDiffers)
{
    class Follower final : public TextStorageObserver {
    public:
        void storageDidChange(const TextStorage&, std::span<const TextChange> changes) override
        {
            heard.assign(changes.begin(), changes.end());
        }
        std::vector<TextChange> heard;
    } follower;
    open("a", "one two three");
    document().textStorage().addObserver(&follower);
    writeOutside("a", "one 2 three");
    pane.checkDisk();
    EXPECT_EQ(follower.heard, (std::vector<TextChange>{{{4, 3}, 1}}));
    const std::uint64_t revision = document().textStorage().revision();
    writeOutside("a", "one 2 three");
    pane.checkDisk();
    EXPECT_EQ(document().textStorage().revision(), revision);
    document().textStorage().removeObserver(&follower);
}

TEST_F(EditorPaneDiskTest, BytesThatAreNoTextAreThoseOfTheFileAfterAReload)
{
    const auto path = open("a", "one \xFF three");
    writeOutside("a", "one \xFE three");
    pane.checkDisk();
    pane.save();
    EXPECT_EQ(test::contents(path), "one \xFE three");
}

TEST_F(EditorPaneDiskTest, AReloadTellsEveryViewThatTheTextIsAnother)
{
    open("a", "one");
    TestPane other(world());
    other.pane.showDocument(pane.activeTab().document);
    const int before = other.view.shownDocuments;
    writeOutside("a", "two");
    pane.checkDisk();
    EXPECT_EQ(other.view.shownDocuments, before + 1);
    EXPECT_EQ(other.text(), u"two");
}

// --- Saving over a change

TEST_F(EditorPaneDiskTest, SavingOverAChangeAsksFirst)
{
    const auto path = openAndType("a", "one");
    writeOutside("a", "two");
    delegate.answer = keep;
    pane.save();
    EXPECT_EQ(questions(), 1U);
    EXPECT_EQ(test::contents(path), "xone");
    EXPECT_FALSE(document().isModified);
    EXPECT_EQ(delegate.status, u"Text | saved");
    type(u"y");
    pane.save();
    EXPECT_EQ(questions(), 1U);
    EXPECT_EQ(test::contents(path), "xyone");
}

TEST_F(EditorPaneDiskTest, SavingOverAChangeMayTakeTheFileInstead)
{
    const auto path = openAndType("a", "one");
    writeOutside("a", "two");
    delegate.answer = reload;
    pane.save();
    EXPECT_EQ(test::contents(path), "two");
    EXPECT_EQ(text(), u"two");
    EXPECT_FALSE(document().isModified);
}

TEST_F(EditorPaneDiskTest, SavingACleanDocumentTakesAChangeWithoutAQuestion)
{
    const auto path = open("a", "one");
    writeOutside("a", "two");
    pane.save();
    EXPECT_EQ(test::contents(path), "two");
    EXPECT_EQ(text(), u"two");
    EXPECT_EQ(questions(), 0U);
}

TEST_F(EditorPaneDiskTest, SavingAsOverTheDocumentsOwnChangedFileAsksToo)
{
    const auto path = openAndType("a", "one");
    writeOutside("a", "two");
    delegate.saveLocation = path;
    delegate.answer = reload;
    pane.saveAs();
    EXPECT_EQ(questions(), 1U);
    EXPECT_EQ(test::contents(path), "two");
}

TEST_F(EditorPaneDiskTest, AnotherTabShownMeanwhileIsNotSavedInItsPlace)
{
    open("b", "two");
    openAndType("a", "one");
    delegate.saveLocation = folder / "c";
    delegate.whileAsked = [this] { pane.selectTab(0); };
    pane.saveAs();
    EXPECT_EQ(test::contents(folder / "c"), "xone");
    EXPECT_EQ(pane.tabs()[1]->document->url, folder / "c");
    EXPECT_EQ(document().url, folder / "b");
    EXPECT_EQ(delegate.status, u"Text");
}

// --- Reloading on demand

TEST_F(EditorPaneDiskTest, AReloadByAnyRoadAsksWhereTextWouldBeLost)
{
    const auto path = openAndType("a", "one");
    folder.write("a", "two");
    pane.files().reload(path);
    EXPECT_EQ(questions(), 1U);
    EXPECT_EQ(text(), u"xone");
    delegate.answer = reload;
    pane.files().reload(folder / "x/../a");
    EXPECT_EQ(questions(), 2U);
    EXPECT_EQ(text(), u"two");
    folder.write("a", "three");
    pane.files().reload(path);
    EXPECT_EQ(questions(), 2U);
    EXPECT_EQ(text(), u"three");
    pane.files().reload(folder / "other");
    type(u"y");
    pane.reloadUnmodified(path);
    EXPECT_EQ(text(), u"tyhree");
    EXPECT_EQ(questions(), 2U);
}

// --- Focus

TEST_F(EditorPaneDiskTest, AutosavesAMomentAfterTheFocusHasLeft)
{
    const auto path = openAndType("a", "one");
    view.hasFocus = false;
    pane.didEndEditing();
    EXPECT_EQ(test::contents(path), "one");
    mainQueue.run();
    EXPECT_EQ(test::contents(path), "xone");
    EXPECT_EQ(delegate.status, u"Text | autosaved");
}

TEST_F(EditorPaneDiskTest, AFocusThatStaysInThePaneSavesNothing)
{
    const auto path = openAndType("a", "one");
    pane.didEndEditing();
    view.hasFocus = true;
    mainQueue.run();
    EXPECT_EQ(test::contents(path), "one");
}

TEST_F(EditorPaneDiskTest, FocusLossSavesNothingWhereThePreferencesForbidIt)
{
    const auto path = openAndType("a", "one");
    pane.setSettings({.autoSaveOnFocusLoss = false});
    pane.didEndEditing();
    mainQueue.run();
    pane.files().autosaveOnFocusLoss();
    EXPECT_EQ(test::contents(path), "one");
}

TEST_F(EditorPaneDiskTest, APaneThatHasGoneIsNotLookedAtAfterItsFocusHasLeft)
{
    {
        TestPane going(world());
        going.pane.openLocation(folder.write("a", "one"));
        going.type(u"x");
        going.pane.didEndEditing();
    }
    mainQueue.run();
    EXPECT_EQ(test::contents(folder / "a"), "one");
}

TEST_F(EditorPaneDiskTest, TakingTheFocusTellsTheOwner)
{
    pane.didBecomeFirstResponder();
    EXPECT_EQ(delegate.activations, 1);
}

// --- Files that move

TEST_F(EditorPaneDiskTest, ARenamedFileTakesItsTabsAlong)
{
    const auto path = openAndType("a.txt", "one");
    TestPane other(world());
    other.pane.showDocument(pane.activeTab().document);
    const auto status = document().diskStatus;
    const int before = other.view.tabChanges;
    std::filesystem::rename(path, folder / "b.txt");
    pane.files().fileWasRenamed(path, folder / "b.txt");
    EXPECT_EQ(document().url, folder / "b.txt");
    EXPECT_EQ(tabTitle(document()), u"• b.txt");
    EXPECT_GT(other.view.tabChanges, before);
    EXPECT_EQ(text(), u"xone");
    EXPECT_EQ(history().undoStack().size(), 1U);
    EXPECT_EQ(document().diskStatus->date, status->date);
    pane.save();
    EXPECT_EQ(test::contents(folder / "b.txt"), "xone");
    EXPECT_EQ(questions(), 0U);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(EditorPaneDiskTest, ARenamedFileHasTheLanguageOfItsNewName)
{
    languageModeForURL = [](const auto& url) {
        auto mode = std::make_shared<LanguageMode>(LanguageMode::plain());
        mode->name = url && url->extension() == ".py" ? "Python" : "Text";
        return mode;
    };
    TestPane first(world());
    TestPane second(world());
    const auto path = folder.write("a.txt", "one");
    first.pane.openLocation(path);
    second.pane.showDocument(first.pane.activeTab().document);
    first.pane.files().fileWasRenamed(path, folder / "a.py");
    EXPECT_EQ(first.delegate.status, u"Python");
    EXPECT_EQ(second.pane.activeTab().language->name, "Python");
    EXPECT_EQ(second.delegate.status, u"Python");
    second.delegate.saveLocation = folder / "b.txt";
    second.pane.saveAs();
    EXPECT_EQ(first.pane.activeTab().language->name, "Text");
    EXPECT_EQ(second.delegate.status, u"Text | saved");
}

TEST_F(EditorPaneDiskTest, ADeletedFileLeavesAModifiedTabWithoutAFile)
{
    const auto path = openAndType("a", "one");
    pane.save();
    std::filesystem::remove(path);
    pane.files().fileWasDeleted(path);
    EXPECT_EQ(pane.tabs().size(), 1U);
    EXPECT_FALSE(document().url);
    EXPECT_TRUE(document().isModified);
    EXPECT_EQ(tabTitle(document()), u"• Untitled");
    EXPECT_EQ(text(), u"xone");
    pane.undo();
    EXPECT_EQ(text(), u"one");
    EXPECT_TRUE(document().isModified);
    pane.autosave();
    pane.checkDisk();
    EXPECT_FALSE(std::filesystem::exists(path));
    pane.closeTab(0);
    EXPECT_EQ(questions(), 1U);
}

}  // namespace
}  // namespace tavrel
