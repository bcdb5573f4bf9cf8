#include "PaneFixture.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

/// Two panes that show one document.
struct TwoPanes : OnePane {
    explicit TwoPanes(std::u16string_view text)
        : OnePane(text), other(static_cast<PaneWorld&>(*this))
    {
        other.pane.showDocument(pane.tabs().front()->document);
    }
    TestPane other;
};

TEST(EditorPaneSharing, ADocumentShownTwiceTakesThePlaceOfTheEmptyTab)
{
    TwoPanes two(u"ab");
    ASSERT_EQ(two.other.pane.tabs().size(), 1U);
    EXPECT_EQ(&two.other.pane.document(), &two.pane.document());
}

TEST(EditorPaneSharing, BothSeeOneTextFlagAndHistory)
{
    TwoPanes two(u"ab");
    two.type(u"x");
    EXPECT_EQ(two.other.text(), u"xab");
    EXPECT_GT(two.other.view.tabChanges, 0);
    two.other.run("undo");
    EXPECT_EQ(two.text(), u"ab");
    EXPECT_FALSE(two.pane.document().isModified);
    two.run("redo");
    EXPECT_EQ(two.other.text(), u"xab");
}

TEST(EditorPaneSharing, UndoRestoresTheSelectionInThePaneThatUndoes)
{
    TwoPanes two(u"abcd");
    two.pane.setSelectedRange({1, 2});
    two.type(u"x");
    two.other.pane.setSelectedRange({0, 0});
    two.other.run("undo");
    EXPECT_EQ(two.other.pane.selectedRange(), (TextRange{1, 2}));
    EXPECT_EQ(two.pane.selectedRange(), (TextRange{3, 0}));
}

TEST(EditorPaneSharing, TheOtherSelectionKeepsToItsText)
{
    TwoPanes two(u"one two three");
    two.other.pane.setSelectedRange({4, 3});
    two.type(u"xx");
    EXPECT_EQ(two.other.pane.selectedRange(), (TextRange{6, 3}));
    two.run("undo");
    EXPECT_EQ(two.other.pane.selectedRange(), (TextRange{4, 3}));
    two.pane.replaceText({0, 6}, {});
    EXPECT_EQ(two.other.pane.selectedRange(), (TextRange{0, 1}));
}

TEST(EditorPaneSharing, TheOtherCursorsKeepToTheirPlaces)
{
    TwoPanes two(u"abcdef");
    two.other.pane.setSelectedRange({2, 0});
    two.other.pane.storeCursors({0, 4, 6});
    two.pane.setSelectedRange({3, 0});
    two.type(u"xyz");
    EXPECT_EQ(two.other.pane.selectedRange(), (TextRange{2, 0}));
    EXPECT_EQ(two.other.pane.secondaryCursorLocations(), (std::vector<std::size_t>{0, 7, 9}));
    two.pane.replaceText({0, 8}, {});
    EXPECT_EQ(two.other.pane.selectedRange(), (TextRange{0, 0}));
    EXPECT_EQ(two.other.pane.secondaryCursorLocations(), (std::vector<std::size_t>{1}));
}

TEST(EditorPaneSharing, OccurrencesMoveWithTheirTextAndGoWithIt)
{
    TwoPanes two(u"a foo foo");
    two.other.pane.setSelectedRange({2, 0});
    two.other.run("selectWordAll");
    two.type(u"xx");
    ASSERT_NE(two.other.pane.validOccurrences(), nullptr);
    EXPECT_EQ(two.other.pane.validOccurrences()->ranges, (std::vector<TextRange>{{4, 3}, {8, 3}}));
    two.pane.replaceText({4, 1}, TextSnapshot(u"g"));
    EXPECT_EQ(two.other.pane.validOccurrences(), nullptr);
}

TEST(EditorPaneSharing, TheStateOfATabThatIsNotShownMovesToo)
{
    TwoPanes two(u"abcdef");
    test::TestFolder folder;
    two.other.pane.setSelectedRange({4, 1});
    two.other.pane.openLocation(folder.write("b", "other"));
    two.type(u"xy");
    two.other.pane.selectTab(0);
    EXPECT_EQ(two.other.pane.selectedRange(), (TextRange{6, 1}));
}

TEST(EditorPaneSharing, APaneThatShowsAnotherTabOnlyHearsOfTheTitles)
{
    TwoPanes two(u"ab");
    test::TestFolder folder;
    two.other.pane.openLocation(folder.write("b", "other"));
    two.other.pane.setSelectedRange({1, 1});
    const int before = two.other.view.tabChanges;
    two.type(u"x");
    EXPECT_GT(two.other.view.tabChanges, before);
    EXPECT_EQ(two.other.pane.selectedRange(), (TextRange{1, 1}));
    EXPECT_EQ(two.other.delegate.status, u"Text");
}

TEST(EditorPaneSharing, SavingInOnePaneShowsInTheOther)
{
    TwoPanes two(u"");
    test::TestFolder folder;
    two.type(u"x");
    two.delegate.saveLocation = folder / "new.txt";
    const int before = two.other.view.tabChanges;
    two.pane.save();
    EXPECT_GT(two.other.view.tabChanges, before);
    EXPECT_EQ(tabTitle(two.other.pane.document()), u"new.txt");
    EXPECT_EQ(two.other.delegate.status, u"Text");
}

TEST(EditorPaneSharing, TheDocumentOutlivesThePaneThatOpenedIt)
{
    PaneWorld world;
    TestPane last(world);
    {
        TestPane first(world);
        first.type(u"ab");
        last.pane.showDocument(first.pane.tabs().front()->document);
    }
    last.type(u"x");
    EXPECT_EQ(last.text(), u"xab");
    last.run("undo");
    EXPECT_EQ(last.text(), u"");
}

TEST(EditorPaneSharing, AClosedTabHearsNothing)
{
    TwoPanes two(u"ab");
    two.other.pane.removeTab(0);
    const int before = two.other.view.tabChanges;
    two.type(u"x");
    EXPECT_EQ(two.other.view.tabChanges, before);
    EXPECT_EQ(two.other.text(), u"");
}

}  // namespace
}  // namespace tavrel
