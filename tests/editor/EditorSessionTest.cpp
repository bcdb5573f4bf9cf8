#include "PaneFixture.h"

#include "editor/EditorSession.h"

#include <gtest/gtest.h>
#include <limits>

namespace tavrel {
namespace {

constexpr std::int64_t huge = std::numeric_limits<std::int64_t>::max();

class EditorSessionTest : public PaneFilesTest {};

TEST_F(EditorSessionTest, HoldsFilesAndUnsavedTexts)
{
    const auto a = open("a", "one\ntwo\n");
    pane.setSelectedRange({4, 3});
    view.origin = {4, 2.5};
    const auto b = openAndType("b", "two");
    pane.files().openSearchResults(folder.write("results", "x"));
    pane.showDocument(std::make_shared<EditorDocument>());
    pane.showDocument(std::make_shared<EditorDocument>());
    type(u"new");
    view.origin = {};
    const ProjectEditorSession session = editorSession(pane);
    EXPECT_EQ(session.activeTabIndex, 2);
    ASSERT_EQ(session.tabs.size(), 3U);
    EXPECT_EQ(session.tabs[0], (ProjectSessionTab{a, 4, 3, 12.5, {}}));
    EXPECT_EQ(session.tabs[1].path, b);
    EXPECT_EQ(session.tabs[1].unsavedText, u"xtwo");
    EXPECT_EQ(session.tabs[2], (ProjectSessionTab{{}, 3, 0, 0, u"new"}));
}

TEST_F(EditorSessionTest, AModifiedListOfSearchResultsIsHeldAndACleanOneIsNot)
{
    open("a", "1");
    pane.files().openSearchResults(folder.write("results", "x"));
    EXPECT_EQ(editorSession(pane).tabs.size(), 1U);
    EXPECT_EQ(editorSession(pane).activeTabIndex, 0);
    type(u"y");
    EXPECT_EQ(editorSession(pane).tabs.size(), 2U);
    EXPECT_EQ(editorSession(pane).activeTabIndex, 1);
}

TEST_F(EditorSessionTest, AnEmptyPaneHasAnEmptySession)
{
    EXPECT_EQ(editorSession(pane), ProjectEditorSession{});
}

TEST_F(EditorSessionTest, GivesThePaneBackAsItWas)
{
    open("a", "one\ntwo\n");
    pane.setSelectedRange({4, 3});
    view.origin = {4, 2.5};
    openAndType("b", "two");
    const ProjectEditorSession session = editorSession(pane);
    TestPane other(world());
    other.type(u"given up");
    restoreSession(other.pane, session);
    ASSERT_EQ(other.pane.tabs().size(), 2U);
    EXPECT_TRUE(other.delegate.alerts.empty());
    EXPECT_EQ(other.pane.activeTabIndex(), 1U);
    EXPECT_EQ(other.text(), u"xtwo");
    EXPECT_TRUE(other.pane.document().isModified);
    other.pane.save();
    EXPECT_EQ(test::contents(folder / "b"), "xtwo");
    other.pane.selectTab(0);
    EXPECT_EQ(other.text(), u"one\ntwo\n");
    EXPECT_FALSE(other.pane.document().isModified);
    EXPECT_EQ(other.pane.selectedRange(), (TextRange{4, 3}));
    EXPECT_EQ(other.view.origin, (ScrollOrigin{4, 2.5}));
}

TEST_F(EditorSessionTest, BringsAnyNumbersIntoTheText)
{
    const auto path = folder.write("a", "one\ntwo");
    const double odd[] = {-1, 1e300, std::numeric_limits<double>::quiet_NaN(),
                          std::numeric_limits<double>::infinity()};
    for (const double scrollY : odd) {
        restoreSession(pane, {huge, {{path, huge, huge, scrollY, {}}, {path, -5, huge, 0, {}}}});
        EXPECT_EQ(pane.activeTabIndex(), 1U);
        EXPECT_EQ(pane.selectedRange(), (TextRange{0, 7}));
        pane.selectTab(0);
        EXPECT_EQ(pane.selectedRange(), (TextRange{7, 0}));
        EXPECT_LE(view.origin.location, 4U);
        EXPECT_LE(view.origin.offset, 10);
    }
    restoreSession(pane, {-3, {{path, 3, -7, 0, {}}, {{}, 0, 0, 0, u"b"}}});
    EXPECT_EQ(pane.activeTabIndex(), 0U);
    EXPECT_EQ(pane.selectedRange(), (TextRange{3, 0}));
}

TEST_F(EditorSessionTest, FilesThatCannotBeReadAreLeftOut)
{
    const auto path = folder.write("b", "two");
    restoreSession(
        pane,
        {1, {{folder / "missing", 0, 0, 0, {}}, {path, 0, 0, 0, {}}, {"relative", 0, 0, 0, {}}}});
    EXPECT_EQ(pane.tabs().size(), 1U);
    EXPECT_EQ(text(), u"two");
    EXPECT_EQ(delegate.status, u"Could not open missing: No such file or directory");
    restoreSession(pane, {0, {{folder / "missing", 0, 0, 0, {}}}});
    EXPECT_EQ(pane.tabs().size(), 1U);
    EXPECT_TRUE(document().isEmpty());
}

TEST_F(EditorSessionTest, UnsavedTextSurvivesItsFile)
{
    restoreSession(pane,
                   {0, {{folder / "gone", 0, 0, 0, u"kept"}, {"relative", 0, 0, 0, u"text"}}});
    EXPECT_EQ(document().url, folder / "gone");
    pane.save();
    EXPECT_EQ(test::contents(folder / "gone"), "kept");
    EXPECT_FALSE(pane.tabs()[1]->document->url);
    EXPECT_TRUE(pane.tabs()[1]->document->isModified);
}

TEST_F(EditorSessionTest, ATabWithoutPathAndTextIsAnEmptyOne)
{
    restoreSession(pane, {0, {{}}});
    EXPECT_TRUE(document().isEmpty());
    restoreSession(pane, {});
    EXPECT_EQ(pane.tabs().size(), 1U);
}

TEST_F(EditorSessionTest, TabsOnOneFileShareTheirDocument)
{
    const auto path = folder.write("a", "one");
    TestPane other(world());
    delegate.editors = other.delegate.editors = {&pane, &other.pane};
    restoreSession(pane, {0, {{path, 0, 0, 0, u"xone"}, {path, 1, 0, 0, u"xone"}}});
    EXPECT_EQ(pane.tabs()[0]->document, pane.tabs()[1]->document);
    restoreSession(other.pane, {0, {{path, 0, 0, 0, u"xone"}}});
    EXPECT_EQ(&other.pane.document(), &document());
}

TEST_F(EditorSessionTest, ThePanesFormerTabsHearNothingAnyMore)
{
    open("a", "one");
    const std::shared_ptr<EditorDocument> former = pane.activeTab().document;
    restoreSession(pane, {});
    const int before = view.tabChanges;
    former->postDidChange(nullptr, true);
    former->textStorage().replace({0, 0}, u"x");
    EXPECT_EQ(view.tabChanges, before);
}

}  // namespace
}  // namespace tavrel
