#include "PaneFixture.h"

#include "editor/EditorTabDrag.h"
#include "editor/OpenDocuments.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

namespace tavrel {
namespace {

constexpr std::size_t closeIt = 0;
constexpr std::size_t cancel = 1;

class EditorPaneTabsTest : public PaneFilesTest {
protected:
    std::vector<std::u16string> titles()
    {
        std::vector<std::u16string> titles;
        for (const auto& tab : pane.tabs())
            titles.push_back(tabTitle(*tab->document));
        return titles;
    }
    using Titles = std::vector<std::u16string>;
};

TEST_F(EditorPaneTabsTest, ClosingTheLastTabLeavesAnEmptyOne)
{
    open("a", "one");
    EXPECT_EQ(pane.closeTab(0), TabClosing::closed);
    EXPECT_EQ(titles(), Titles{u"No File"});
    EXPECT_EQ(delegate.status, u"No File");
    EXPECT_TRUE(delegate.alerts.empty());
    EXPECT_EQ(pane.closeTab(0), TabClosing::closed);
    EXPECT_EQ(titles(), Titles{u"No File"});
}

TEST_F(EditorPaneTabsTest, ClosingAModifiedDocumentAsks)
{
    openAndType("a.txt", "one");
    const int before = delegate.activations;
    EXPECT_EQ(pane.closeTab(0), TabClosing::cancelled);
    ASSERT_EQ(delegate.alerts.size(), 1U);
    EXPECT_EQ(delegate.alerts[0].message, u"Close a.txt");
    EXPECT_EQ(delegate.alerts[0].information, u"This tab has unsaved changes.");
    EXPECT_EQ(delegate.alerts[0].buttons, (Titles{u"Close", u"Cancel"}));
    EXPECT_EQ(delegate.alerts[0].escapeButton, cancel);
    EXPECT_EQ(text(), u"xone");
    EXPECT_EQ(delegate.activations, before);
    delegate.answer = closeIt;
    EXPECT_EQ(pane.closeTab(0), TabClosing::closed);
    EXPECT_EQ(titles(), Titles{u"No File"});
    EXPECT_EQ(test::contents(folder / "a.txt"), "one");
}

TEST_F(EditorPaneTabsTest, AnUntitledTextIsCalledSo)
{
    type(u"x");
    pane.closeTab(0);
    ASSERT_EQ(delegate.alerts.size(), 1U);
    EXPECT_EQ(delegate.alerts[0].message, u"Close Untitled");
}

TEST_F(EditorPaneTabsTest, ClosingOneOfTwoViewsDoesNotAsk)
{
    openAndType("a", "one");
    TestPane other(world());
    other.pane.showDocument(pane.activeTab().document);
    delegate.editors = {&pane, &other.pane};
    other.delegate.editors = {&pane, &other.pane};
    EXPECT_EQ(pane.closeTab(0), TabClosing::closed);
    EXPECT_TRUE(delegate.alerts.empty());
    EXPECT_EQ(other.pane.closeTab(0), TabClosing::cancelled);
    EXPECT_EQ(other.delegate.alerts.size(), 1U);
}

TEST_F(EditorPaneTabsTest, TwoTabsOfOnePaneAreTwoViews)
{
    openAndType("a", "one");
    pane.showDocument(pane.activeTab().document);
    type(u"y");
    EXPECT_EQ(text(), u"yxone");
    EXPECT_EQ(pane.tabs()[0]->selectedRange, (TextRange{2, 0}));  // Moved once.
    EXPECT_EQ(pane.closeTab(1), TabClosing::closed);
    EXPECT_TRUE(delegate.alerts.empty());
    const int before = view.shownDocuments;
    document().postDidChange(nullptr, true);
    EXPECT_EQ(view.shownDocuments, before + 1);
    EXPECT_EQ(pane.closeTab(0), TabClosing::cancelled);
}

TEST_F(EditorPaneTabsTest, ClosingTakesTheFocusAndShowsTheNextTab)
{
    open("a", "1");
    open("b", "2");
    open("c", "3");
    pane.selectTab(1);
    const int before = delegate.activations;
    pane.closeTab(1);
    EXPECT_EQ(titles(), (Titles{u"a", u"c"}));
    EXPECT_EQ(pane.activeTabIndex(), 1U);
    EXPECT_EQ(delegate.activations, before + 1);
    EXPECT_TRUE(view.hasFocus);
    pane.closeTab(1);
    EXPECT_EQ(pane.activeTabIndex(), 0U);
    EXPECT_EQ(text(), u"1");
}

TEST_F(EditorPaneTabsTest, ClosingATabBeforeTheActiveOneKeepsThatShown)
{
    open("a", "1");
    open("b", "2");
    open("c", "3");
    pane.selectTab(1);
    pane.closeTab(0);
    EXPECT_EQ(text(), u"2");
    EXPECT_EQ(pane.activeTabIndex(), 0U);
}

TEST_F(EditorPaneTabsTest, NoFocusLossSavesWhatTheUserIsAboutToGiveUp)
{
    const auto path = openAndType("a", "one");
    delegate.answer = closeIt;
    delegate.whileAsked = [this] {
        pane.didEndEditing();
        mainQueue.run();
        pane.autosave();
    };
    pane.closeTab(0);
    EXPECT_EQ(test::contents(path), "one");
    EXPECT_EQ(titles(), Titles{u"No File"});
}

TEST_F(EditorPaneTabsTest, TheTabThatWasAskedAboutIsClosedWhereverItStandsThen)
{
    open("b", "two");
    openAndType("a", "one");
    delegate.answer = closeIt;
    delegate.whileAsked = [this] { pane.removeTab(0); };
    EXPECT_EQ(pane.closeTab(1), TabClosing::closed);
    EXPECT_EQ(titles(), Titles{u"No File"});
}

TEST_F(EditorPaneTabsTest, WhatIsComposedIsTypedIntoTheTabThatIsLeft)
{
    open("a.txt", "a");
    view.whileLeaving = [this] { pane.insertText(u"\u00e9"); };
    open("b.txt", "b");
    EXPECT_EQ(pane.tabs()[0]->document->text().text(), u"\u00e9a");
    EXPECT_EQ(pane.tabs()[0]->selectedRange, (TextRange{1, 0}));
    pane.selectTab(1);
    EXPECT_EQ(text(), u"b");
    pane.selectTab(0);
    EXPECT_EQ(pane.tabs()[1]->document->text().text(), u"\u00e9b");
    EXPECT_EQ(text(), u"\u00e9a");
    EXPECT_EQ(pane.detachTab(0)->document->text().text(), u"\u00e9\u00e9a");
}

TEST_F(EditorPaneTabsTest, WhatIsComposedCountsAsUnsaved)
{
    open("a.txt", "a");
    view.whileLeaving = [this] { pane.insertText(u"\u00e9"); };
    EXPECT_EQ(pane.closeTab(0), TabClosing::cancelled);
    EXPECT_EQ(delegate.alerts.size(), 1u);
    EXPECT_EQ(text(), u"\u00e9a");
}

TEST_F(EditorPaneTabsTest, ATabOutOfRangeIsNotClosed)
{
    EXPECT_EQ(pane.closeTab(7), TabClosing::cancelled);
    EXPECT_EQ(pane.detachTab(7), nullptr);
}

TEST_F(EditorPaneTabsTest, ClosingAllAsksOnceForEachModifiedDocument)
{
    openAndType("a", "1");
    pane.showDocument(pane.activeTab().document);
    open("b", "2");
    openAndType("c", "3");
    delegate.answer = closeIt;
    EXPECT_EQ(pane.closeAllTabs(), TabClosing::closed);
    EXPECT_EQ(titles(), Titles{u"No File"});
    ASSERT_EQ(delegate.alerts.size(), 2U);
    EXPECT_EQ(delegate.alerts[0].message, u"Close a");
    EXPECT_EQ(delegate.alerts[1].message, u"Close c");
}

TEST_F(EditorPaneTabsTest, ClosingAllTellsTheTabBarOnce)
{
    for (const char* name : {"a", "b", "c", "d"})
        open(name, name);
    view.tabChanges = 0;
    EXPECT_EQ(pane.closeAllTabs(), TabClosing::closed);
    EXPECT_EQ(view.tabChanges, 1);
    EXPECT_EQ(titles(), (Titles{u"No File"}));
}

TEST_F(EditorPaneTabsTest, TheTabBarIsUpToDateWhileClosingAllAsks)
{
    open("a", "a");
    open("b", "b");
    openAndType("c", "c");
    open("d", "d");
    view.tabChanges = 0;
    delegate.whileAsked = [this] { EXPECT_EQ(view.tabChanges, 1); };
    EXPECT_EQ(pane.closeAllTabs(), TabClosing::cancelled);
    EXPECT_EQ(titles(), (Titles{u"\u2022 c", u"d"}));
    EXPECT_EQ(view.tabChanges, 1);
    pane.selectTab(0);
    EXPECT_EQ(view.tabChanges, 2);
}

TEST_F(EditorPaneTabsTest, CancelStopsTheRest)
{
    open("a", "1");
    openAndType("b", "2");
    open("c", "3");
    delegate.answer = cancel;
    EXPECT_EQ(pane.closeAllTabs(), TabClosing::cancelled);
    EXPECT_EQ(titles(), (Titles{u"• b", u"c"}));
    EXPECT_EQ(delegate.alerts.size(), 1U);
}

TEST_F(EditorPaneTabsTest, TheNextAndPreviousViewGoRoundAtTheEnds)
{
    open("a", "1");
    run("nextView");
    run("previousView");
    EXPECT_EQ(pane.activeTabIndex(), 0U);
    open("b", "2");
    open("c", "3");
    run("nextView");
    EXPECT_EQ(pane.activeTabIndex(), 0U);
    run("previousView");
    EXPECT_EQ(pane.activeTabIndex(), 2U);
    run("previousView");
    EXPECT_EQ(pane.activeTabIndex(), 1U);
    run("nextView");
    EXPECT_EQ(pane.activeTabIndex(), 2U);
    EXPECT_TRUE(delegate.commands.empty());
}

TEST_F(EditorPaneTabsTest, TheCommandClosesTheActiveTab)
{
    open("a", "1");
    open("b", "2");
    pane.selectTab(0);
    run("closeFile");
    EXPECT_EQ(titles(), Titles{u"b"});
    run("closeAllFiles");  // A matter of all panes.
    EXPECT_EQ(delegate.commands, std::vector<std::string>{"closeAllFiles"});
}

TEST_F(EditorPaneTabsTest, AppliesTheStoredStateWithinTheText)
{
    open("a", "one two");
    pane.setSelectedRange({4, 3});
    view.origin = {4, 2.5};
    open("b", "2");
    pane.tabs()[0]->selectedRange = {5, 99};
    const int shown = view.shownDocuments;
    pane.selectTab(0);
    EXPECT_EQ(pane.selectedRange(), (TextRange{5, 2}));
    EXPECT_EQ(view.origin, (ScrollOrigin{4, 2.5}));
    EXPECT_EQ(view.shownDocuments, shown + 1);
    EXPECT_EQ(delegate.status, u"Text");
}

TEST_F(EditorPaneTabsTest, StoringTheStateOfATabTouchesNoText)
{
    open("a", "one two");
    type(u"x");
    const TextSnapshot before = pane.text();
    const std::uint64_t revision = document().textStorage().revision();
    pane.storeTabState();
    open("b", "2");
    pane.selectTab(0);
    EXPECT_EQ(document().textStorage().revision(), revision);
    EXPECT_EQ(pane.text().root(), before.root());
}

/// Where the units of the text lie in memory.
std::vector<const void*> blocksOf(const TextSnapshot& text)
{
    std::vector<const void*> blocks;
    text.forEachPiece({0, text.length()}, [&blocks](const TextPiece& piece) {
        blocks.push_back(piece.narrow ? static_cast<const void*>(piece.narrow) : piece.wide);
        return true;
    });
    std::sort(blocks.begin(), blocks.end());
    return blocks;
}

TEST_F(EditorPaneTabsTest, EditsAndUndoCopyNoMoreThanTheBlocksTheyTouch)
{
    open("a", std::string(200'000, 'x'));
    const std::vector<const void*> before = blocksOf(pane.text());
    ASSERT_GT(before.size(), 20U);
    pane.setSelectedRange({100'000, 0});
    type(u"y");
    run("undo");
    const std::vector<const void*> after = blocksOf(pane.text());
    std::vector<const void*> kept;
    std::set_intersection(before.begin(), before.end(), after.begin(), after.end(),
                          std::back_inserter(kept));
    EXPECT_GE(kept.size() + 3, before.size());
}

TEST_F(EditorPaneTabsTest, TheStatusTextNamesLanguageMarkerAndWhatHappened)
{
    EXPECT_EQ(pane.statusText(), u"No File");
    openAndType("a", "one");
    EXPECT_EQ(delegate.status, u"Text | modified");
    run("setMarker");
    EXPECT_EQ(delegate.status, u"Text | marker");
    pane.save();
    EXPECT_EQ(delegate.status, u"Text | marker | saved");
    type(u"y");
    EXPECT_EQ(delegate.status, u"Text | marker | modified");
    pane.autosave();
    EXPECT_EQ(delegate.status, u"Text | marker | autosaved");
    pane.refreshStatus();
    EXPECT_EQ(delegate.status, u"Text | marker");
    pane.setStatus(u"Settings reloaded");
    EXPECT_EQ(pane.statusText(), u"Settings reloaded");
}

TEST_F(EditorPaneTabsTest, TheTabBarHearsOnlyOfWhatItShows)
{
    open("a", "one");
    open("b", "two");
    const int before = view.tabChanges;
    type(u"x");
    EXPECT_EQ(view.tabChanges, before + 1);
    type(u"y");
    pane.showDocument(pane.activeTab().document);
    EXPECT_EQ(view.tabChanges, before + 2);
    TestPane other(world());
    other.pane.showDocument(pane.activeTab().document);
    const int othersBefore = other.view.tabChanges;
    type(u"z");
    run("undo");
    EXPECT_EQ(other.view.tabChanges, othersBefore + 1);  // It was modified, and is not any more.
    pane.selectTab(0);
    EXPECT_EQ(view.tabChanges, before + 4);
}

TEST_F(EditorPaneTabsTest, AChosenTabMakesThePaneTheActiveOne)
{
    open("a", "one");
    EXPECT_EQ(delegate.activations, 1);
    open("b", "two");
    pane.selectTab(0);
    pane.selectTab(0);
    run("nextView");
    EXPECT_EQ(delegate.activations, 5);
    pane.selectTab(7);
    pane.replaceTabs({}, 0);
    run("nextView");
    EXPECT_EQ(delegate.activations, 5);
}

// --- Tabs that go from pane to pane

struct TwoColumns : PaneFilesTest {
    TwoColumns() : other(world())
    {
        delegate.editors = {&pane, &other.pane};
        other.delegate.editors = {&pane, &other.pane};
    }
    TestPane other;
    EditorTabDrag drag;
};

using EditorTabDragTest = TwoColumns;

TEST_F(EditorTabDragTest, ADropTakesTheTabWithItsState)
{
    open("a", "one two");
    pane.setSelectedRange({4, 3});
    run("setMarker");
    pane.storeCursors({1});
    view.origin = {2, 1.5};
    const auto tab = pane.tabs()[0];
    const std::string token = drag.begin(pane, 0);
    ASSERT_FALSE(token.empty());
    EXPECT_EQ(drag.dragged()->sourceIndex, 0U);
    EXPECT_TRUE(drag.canDrop(other.pane, token));
    drag.drop(other.pane, token);
    EXPECT_EQ(other.pane.tabs().size(), 1U);  // In place of the empty tab.
    EXPECT_EQ(other.pane.tabs()[0], tab);
    EXPECT_EQ(other.pane.selectedRange(), (TextRange{4, 3}));
    EXPECT_EQ(other.pane.activeTab().marker, 4U);
    EXPECT_EQ(other.pane.secondaryCursorLocations(), std::vector<std::size_t>{1});
    EXPECT_EQ(other.view.origin, (ScrollOrigin{2, 1.5}));
    EXPECT_EQ(other.delegate.activations, 1);
    EXPECT_TRUE(other.view.hasFocus);
    EXPECT_TRUE(document().isEmpty());
    EXPECT_FALSE(drag.dragged());
    other.type(u"x");
    EXPECT_EQ(other.text(), u"one x");
}

TEST_F(EditorTabDragTest, ADropBesideOtherTabsIsTheLastAndActiveOne)
{
    open("a", "1");
    open("b", "2");
    other.pane.openLocation(folder.write("c", "3"));
    drag.drop(other.pane, drag.begin(pane, 0));
    EXPECT_EQ(other.pane.tabs().size(), 2U);
    EXPECT_EQ(other.text(), u"1");
    EXPECT_EQ(pane.tabs().size(), 1U);
    EXPECT_EQ(text(), u"2");
}

TEST_F(EditorTabDragTest, AModifiedTabMovesWithoutAQuestion)
{
    openAndType("a", "one");
    drag.drop(other.pane, drag.begin(pane, 0));
    EXPECT_EQ(other.text(), u"xone");
    EXPECT_TRUE(delegate.alerts.empty());
    other.run("undo");
    EXPECT_EQ(other.text(), u"one");
}

TEST_F(EditorTabDragTest, ATabIsRefusedByItsOwnPaneAndUnderAnotherToken)
{
    open("a", "one");
    const std::string token = drag.begin(pane, 0);
    EXPECT_FALSE(drag.canDrop(pane, token));
    EXPECT_FALSE(drag.canDrop(other.pane, "another"));
    drag.drop(pane, token);
    drag.drop(other.pane, "");
    EXPECT_EQ(text(), u"one");
    EXPECT_TRUE(drag.dragged());
    EXPECT_NE(drag.begin(pane, 0), token);
    EXPECT_FALSE(drag.canDrop(other.pane, token));
    drag.end();
    EXPECT_FALSE(drag.dragged());
}

TEST_F(EditorTabDragTest, ATabThatHasGoneIsNotDropped)
{
    open("a", "1");
    open("b", "2");
    const std::string token = drag.begin(pane, 0);
    pane.closeTab(0);
    EXPECT_FALSE(drag.canDrop(other.pane, token));
    EXPECT_EQ(drag.begin(pane, 7), "");
    auto going = std::make_unique<TestPane>(world());
    const std::string next = drag.begin(going->pane, 0);
    going.reset();
    EXPECT_FALSE(drag.canDrop(other.pane, next));
    drag.drop(other.pane, next);
    EXPECT_TRUE(other.pane.document().isEmpty());
}

TEST_F(EditorTabDragTest, ATabMovesToTheSamePaneByStayingThere)
{
    open("a", "1");
    moveTab(pane, 0, pane);
    EXPECT_EQ(text(), u"1");
}

// --- Shared documents

using EditorPaneOpeningTest = TwoColumns;

TEST_F(EditorPaneOpeningTest, AFileOfAnotherPaneIsSharedWithIt)
{
    const auto path = openAndType("a", "one");
    EXPECT_EQ(other.pane.openLocation(path), OpenResult::opened);
    EXPECT_EQ(&other.pane.document(), &document());
    EXPECT_EQ(other.text(), u"xone");
    EXPECT_EQ(other.pane.tabs().size(), 1U);
    EXPECT_TRUE(documentIsOpenElsewhere(document(), pane, delegate.editors));
    other.pane.closeTab(0);
    EXPECT_FALSE(documentIsOpenElsewhere(document(), pane, delegate.editors));
}

TEST_F(EditorPaneOpeningTest, WhatIsSavedOverAnOpenFileTakesItsTabs)
{
    const auto path = open("b", "a longer text");
    other.pane.openLocation(path);
    other.pane.setSelectedRange({8, 3});
    const std::weak_ptr<EditorDocument> former = other.pane.activeTab().document;
    openAndType("a", "one");
    delegate.saveLocation = path;
    pane.saveAs();
    EXPECT_EQ(pane.tabs().size(), 1U);
    EXPECT_EQ(&other.pane.document(), &document());
    EXPECT_EQ(other.pane.tabs().size(), 1U);
    EXPECT_EQ(other.text(), u"xone");
    EXPECT_EQ(other.pane.selectedRange(), (TextRange{4, 0}));
    EXPECT_TRUE(former.expired());
    type(u"y");
    EXPECT_EQ(other.text(), u"xyone");
    EXPECT_EQ(tabTitle(other.pane.document()), u"\u2022 b");
}

TEST_F(EditorPaneOpeningTest, AModifiedTextOfAFileThatIsSavedOverStays)
{
    const auto path = openAndType("b", "old");
    open("a", "one");
    delegate.saveLocation = path;
    pane.saveAs();
    ASSERT_EQ(pane.tabs().size(), 2U);
    EXPECT_EQ(pane.tabs()[0]->document->text().text(), u"xold");
    pane.checkDisk();
    EXPECT_EQ(delegate.alerts.size(), 1U);
}

TEST_F(EditorPaneOpeningTest, ALinkToTheFileThatIsSavedOverIsThatFile)
{
    const auto path = folder.write("b", "old");
    std::filesystem::create_symlink(path, folder / "link");
    other.pane.openLocation(folder / "link");
    openAndType("a", "one");
    delegate.saveLocation = path;
    pane.saveAs();
    EXPECT_EQ(&other.pane.document(), &document());
}

TEST_F(EditorPaneOpeningTest, WhatIsReadIsWhatWillBeWritten)
{
    std::filesystem::create_directories(folder / "far/sub");
    std::filesystem::create_directory_symlink(folder / "far/sub", folder / "link");
    folder.write("far/a", "far");
    folder.write("a", "near");
    pane.openLocation(folder / "link/../a");
    EXPECT_EQ(document().url, folder / "a");
    EXPECT_EQ(text(), u"near");
}

TEST_F(EditorPaneOpeningTest, OtherPathsOfAFileLeadToItsTab)
{
    const auto path = openAndType("a", "one");
    std::filesystem::create_symlink(path, folder / "link");
    std::filesystem::create_directory_symlink(folder.path(), folder / "here");
    std::filesystem::create_hard_link(path, folder / "hard");
    for (const char* name : {"link", "here/a", "./x/../a", "hard"}) {
        EXPECT_EQ(pane.openLocation(folder / name), OpenResult::opened) << name;
        EXPECT_EQ(pane.tabs().size(), 1U) << name;
        other.pane.openLocation(folder / name);
        EXPECT_EQ(&other.pane.document(), &document()) << name;
    }
    EXPECT_EQ(other.pane.tabs().size(), 1U);
}

TEST_F(EditorPaneOpeningTest, AFileReadElsewhereIsSharedToo)
{
    const auto path = openAndType("a", "one");
    EXPECT_EQ(other.pane.showLoaded(path, readDocument(fileSystem, path)), OpenResult::opened);
    EXPECT_EQ(&other.pane.document(), &document());
    EXPECT_EQ(other.pane.showLoaded(folder / "b", tl::unexpected(fileError(2))),
              OpenResult::failed);
    EXPECT_EQ(other.delegate.status, u"Could not open b: No such file or directory");
}

TEST_F(EditorPaneOpeningTest, AFileThatIsOpenIsShownThoughItHasGone)
{
    const auto path = open("a", "one");
    std::filesystem::remove(path);
    EXPECT_EQ(other.pane.openLocation(path), OpenResult::opened);
    EXPECT_EQ(&other.pane.document(), &document());
    EXPECT_EQ(other.pane.openLocation(folder / "b"), OpenResult::failed);
}

TEST_F(EditorPaneOpeningTest, AnEditInOneViewLeavesTheCursorOfTheOther)
{
    const auto path = open("a", "one two");
    other.pane.openLocation(path);
    other.pane.setSelectedRange({5, 0});
    pane.setSelectedRange({7, 0});
    type(u"!");
    EXPECT_EQ(other.pane.selectedRange(), (TextRange{5, 0}));
    EXPECT_EQ(tabTitle(other.pane.document()), u"• a");
    EXPECT_GT(other.view.tabChanges, 0);
    pane.replaceText({2, 6}, {});
    EXPECT_EQ(other.pane.selectedRange(), (TextRange{2, 0}));
}

// --- Field editors

TEST_F(EditorPaneOpeningTest, AFieldEditorHearsNothingOfOtherViewsAndTakesNoTabs)
{
    EditorPane field(services(), {}, EditorPaneKind::fieldEditor);
    FakePaneView fieldView(field);
    field.setView(&fieldView);
    EXPECT_TRUE(field.isFieldEditor());
    field.showDocument(pane.activeTab().document);
    const int before = fieldView.shownDocuments;
    pane.document().postDidChange(&pane, true);
    EXPECT_EQ(fieldView.shownDocuments, before);
    EXPECT_EQ(fieldView.tabChanges, 0);
    field.setSelectedRange({0, 0});
    type(u"ab");  // Its positions still follow the text.
    EXPECT_EQ(field.text(), u"ab");
    EXPECT_FALSE(drag.canDrop(field, drag.begin(pane, 0)));
    EXPECT_EQ(drag.begin(field, 0), "");
}

}  // namespace
}  // namespace tavrel
