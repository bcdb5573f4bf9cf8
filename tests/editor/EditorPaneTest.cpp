#include "PaneFixture.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(EditorPane, BeginsWithOneEmptyTab)
{
    OnePane one;
    ASSERT_EQ(one.pane.tabs().size(), 1U);
    EXPECT_EQ(one.pane.statusText(), u"No File");
    EXPECT_EQ(tabTitle(one.pane.document()), u"No File");
    EXPECT_EQ(one.pane.selectedRange(), TextRange{});
    EXPECT_FALSE(one.pane.document().isModified);
}

TEST(EditorPane, TitlesATabByItsFileAndMarksAModifiedOne)
{
    EditorDocument untitled;
    EXPECT_EQ(tabTitle(untitled), u"No File");
    untitled.isModified = true;
    EXPECT_EQ(tabTitle(untitled), u"• Untitled");
    EditorDocument named("/folder/name.txt");
    EXPECT_EQ(tabTitle(named), u"name.txt");
    EXPECT_EQ(documentName(named), u"name.txt");
    named.isModified = true;
    EXPECT_EQ(tabTitle(named), u"• name.txt");
}

TEST(EditorPane, TitlesAreOneLineWhateverTheFileIsCalled)
{
    EditorDocument document(std::filesystem::path("/x/a\nb\tc\x1b\xe2\x80\xa8"
                                                  "d\xff"));
    EXPECT_EQ(tabTitle(document), u"a b c  d\ufffd");
    EXPECT_EQ(documentName(document), u"a b c  d\ufffd");
}

TEST(EditorPane, SaysWhatHappenedInTheStatusText)
{
    OnePane one(u"ab");
    one.type(u"x");
    EXPECT_EQ(one.delegate.status, u"Text | modified");
    one.run("setMarker");
    EXPECT_EQ(one.delegate.status, u"Text | marker");
    one.type(u"y");
    EXPECT_EQ(one.delegate.status, u"Text | marker | modified");
    EXPECT_EQ(one.pane.statusText(), one.delegate.status);
    one.run("deselect");
    EXPECT_EQ(one.delegate.status, u"Text");
}

TEST(EditorPane, UndoSaysModifiedOnlyWhereTheTextIs)
{
    OnePane one(u"ab");
    one.type(u"x");
    one.wait(2);
    one.type(u"y");
    one.run("undo");
    EXPECT_EQ(one.delegate.status, u"Text | modified");
    one.run("undo");
    EXPECT_EQ(one.delegate.status, u"Text");
    one.run("redo");
    EXPECT_EQ(one.delegate.status, u"Text | modified");
}

TEST(EditorPane, AnEmptiedTabWithoutAFileIsNoFileAgain)
{
    OnePane one;
    one.type(u"x");
    EXPECT_EQ(one.delegate.status, u"Text | modified");
    one.run("undo");
    EXPECT_EQ(one.delegate.status, u"No File");
    EXPECT_EQ(tabTitle(one.pane.document()), u"No File");
}

TEST(EditorPane, TellsTheViewOnceThatATabIsModified)
{
    OnePane one(u"ab");
    one.type(u"x");
    EXPECT_EQ(one.view.tabChanges, 1);
    one.type(u"y");
    EXPECT_EQ(one.view.tabChanges, 1);
}

TEST(EditorPane, ShowsWhereItInserts)
{
    OnePane one(u"ab");
    one.pane.setSelectedRange({1, 0});
    one.type(u"x");
    EXPECT_EQ(one.view.visible, (TextRange{2, 0}));
    one.run("undo");
    EXPECT_EQ(one.view.visible, (TextRange{1, 0}));
}

TEST(EditorPane, ShowsTheOccurrenceTakenLast)
{
    OnePane one(u"foo a foo");
    one.run("selectWord");
    EXPECT_EQ(one.view.visible, (TextRange{0, 3}));
    one.run("selectWord");
    EXPECT_EQ(one.view.visible, (TextRange{6, 3}));
    EXPECT_EQ(one.pane.selectedRanges(), (std::vector<TextRange>{{0, 3}, {6, 3}}));
}

TEST(EditorPane, ShowsTheOccurrenceNearestToTheCursor)
{
    OnePane one(u"foo a foo b foo");
    one.pane.setSelectedRange({8, 0});
    one.run("selectWordAll");
    EXPECT_EQ(one.view.visible, (TextRange{6, 3}));
}

TEST(EditorPane, PassesCommandsOfOthersToItsOwner)
{
    OnePane one;
    one.run("find");
    one.run("toggleTree");
    EXPECT_EQ(one.delegate.commands, (std::vector<std::string>{"find", "toggleTree"}));
}

TEST(EditorPane, BeepsForAKeyThatBreaksASequence)
{
    OnePane one(u"ab");
    one.pane.commandDispatcher().load(*keyMapFromCSON("{\"ctrl+x,ctrl+s\": {erase}}"));
    EXPECT_TRUE(one.pane.keyDown({.modifierFlags = controlModifier,
                                  .characters = u"x",
                                  .charactersIgnoringModifiers = u"x"}));
    EXPECT_EQ(one.delegate.beeps, 0);
    EXPECT_TRUE(one.pane.keyDown({.characters = u"a", .charactersIgnoringModifiers = u"a"}));
    EXPECT_EQ(one.delegate.beeps, 1);
    EXPECT_EQ(one.text(), u"ab");
}

TEST(EditorPane, WidthsBelowOneCountAsOne)
{
    OnePane one(u"a");
    one.pane.setSettings({.tabWidth = -3, .columnWidth = 0});
    EXPECT_EQ(one.pane.settings().tabWidth, 1);
    EXPECT_EQ(one.pane.settings().columnWidth, 1);
    one.run("indent");
    EXPECT_EQ(one.text(), u" a");
}

TEST(EditorPane, WorksWithoutViewAndOwner)
{
    PaneWorld world;
    EditorPane pane(world.services());
    pane.insertText(u"foo foo");
    for (const char* name : {"line", "page", "selectWordAll", "undo", "redo", "find", "copy", "cut",
                             "paste", "setMarker", "selectFromMarker"})
        pane.runCommand({name, {}});
    pane.saveAs();
    EXPECT_EQ(pane.tabs().size(), 1U);
}

TEST(EditorPane, ReplacesARangeThatAnInputMethodNames)
{
    OnePane one(u"abcdef");
    one.pane.insertText(u"xy", TextRange{1, 3});
    EXPECT_EQ(one.text(), u"axyef");
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{3, 0}));
    one.pane.insertText(u"!", TextRange{99, 3});
    EXPECT_EQ(one.text(), u"axyef!");
}

TEST(EditorPane, ReplaceTextLeavesTheSelectionItIsGiven)
{
    OnePane one(u"abcdef");
    one.pane.storeCursors({5});
    one.pane.setSelectedRange({0, 2});
    one.pane.replaceText({2, 2}, TextSnapshot(u"123"), TextRange{2, 3});
    EXPECT_EQ(one.text(), u"ab123ef");
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{2, 3}));
    EXPECT_FALSE(one.pane.hasSecondaryCursors());
    one.run("undo");
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{0, 2}));
    one.run("redo");
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{2, 3}));
}

TEST(EditorPane, ClampsASelectionGivenPastTheEnd)
{
    OnePane one(u"abc");
    one.pane.replaceText({1, 99}, TextSnapshot(u"x"), TextRange{50, 50});
    EXPECT_EQ(one.text(), u"ax");
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{2, 0}));
}

TEST(EditorPane, AnEmptyListOfEditsDoesNothing)
{
    OnePane one(u"abc");
    one.pane.applyEdits({}, one.pane.selectedRange());
    EXPECT_TRUE(one.pane.document().history().undoStack().empty());
    EXPECT_FALSE(one.pane.document().isModified);
}

TEST(EditorPane, EditsOfNoCursorKeepTheSelectionFromBefore)
{
    OnePane one(u"abcdef");
    one.pane.applyEdits({{{{5, 1}, TextSnapshot(u"xyz"), {}}, false}}, {1, 2});
    EXPECT_EQ(one.text(), u"abcdexyz");
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{1, 2}));
    EXPECT_EQ(one.pane.secondaryCursorLocations(), (std::vector<std::size_t>{8}));
}

TEST(EditorPane, OccurrencesAreVoidOnceTheTextUnderThemIsAnother)
{
    OnePane one(u"foo foo");
    one.run("selectWordAll");
    one.pane.document().textStorage().replace({5, 1}, u"0");
    EXPECT_EQ(one.pane.validOccurrences(), nullptr);
}

TEST(EditorPane, SwitchingTabsKeepsTheStateOfEach)
{
    OnePane one;
    test::TestFolder folder;
    one.pane.openLocation(folder.write("a", "foo bar foo"));
    one.run("selectWord");
    one.run("selectWord");
    one.view.origin = {3, 1.5};
    one.pane.openLocation(folder.write("b", "12345"));
    EXPECT_EQ(one.view.origin, ScrollOrigin{});
    one.pane.setSelectedRange({1, 0});
    one.pane.storeCursors({4});
    one.pane.setMarker(2);
    one.pane.selectTab(0);
    EXPECT_EQ(one.pane.selectedRanges(), (std::vector<TextRange>{{0, 3}, {8, 3}}));
    EXPECT_NE(one.pane.validOccurrences(), nullptr);
    EXPECT_EQ(one.view.origin, (ScrollOrigin{3, 1.5}));
    EXPECT_EQ(one.pane.activeTab().marker, std::nullopt);
    one.pane.selectTab(1);
    EXPECT_EQ(one.pane.selectedRange(), (TextRange{1, 0}));
    EXPECT_EQ(one.pane.secondaryCursorLocations(), (std::vector<std::size_t>{4}));
    EXPECT_EQ(one.pane.activeTab().marker, 2U);
    EXPECT_EQ(one.delegate.status, u"Text | marker");
}

TEST(EditorPane, SwitchingTabsEndsTyping)
{
    OnePane one;
    test::TestFolder folder;
    one.pane.openLocation(folder.write("a", ""));
    one.pane.openLocation(folder.write("b", ""));
    one.type(u"x");
    EXPECT_TRUE(one.pane.lastActionWasTyping());
    one.pane.selectTab(0);
    EXPECT_FALSE(one.pane.lastActionWasTyping());
}

TEST(EditorPane, RemovingTabsKeepsOneActive)
{
    OnePane one;
    test::TestFolder folder;
    for (const char* name : {"a", "b", "c"})
        one.pane.openLocation(folder.write(name, name));
    one.pane.removeTab(99);
    ASSERT_EQ(one.pane.tabs().size(), 3U);
    one.pane.removeTab(0);
    EXPECT_EQ(one.text(), u"c");
    one.pane.removeTab(1);
    EXPECT_EQ(one.text(), u"b");
    EXPECT_EQ(one.pane.activeTabIndex(), 0U);
    one.pane.removeTab(0);
    ASSERT_EQ(one.pane.tabs().size(), 1U);
    EXPECT_TRUE(one.pane.document().isEmpty());
    EXPECT_EQ(one.delegate.status, u"No File");
}

}  // namespace
}  // namespace tavrel
