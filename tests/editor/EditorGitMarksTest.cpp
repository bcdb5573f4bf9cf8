#include "PaneFixture.h"

#include "git/GitLineDiffer.h"
#include "git/GitTestFolder.h"
#include "git/GitTool.h"
#include "platform/ManualWorkQueue.h"
#include "platform/PrivateFolder.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

using Kind = GitLineChangeKind;

/// Two panes in a repository with the files "a" of three lines and "b" of one.
class EditorGitMarksTest : public PaneWorld, public testing::Test {
protected:
    EditorGitMarksTest()
    {
        environment.set("HOME", repository.path().string());
        repository.write("a", "one\ntwo\nthree\n");
        repository.write("b", "b\n");
        repository.git("", {"init", "--quiet"});
        repository.git("", {"add", "--all"});
        repository.git("", {"commit", "--quiet", "--message", "first"});
        scratch.emplace(PrivateFolder::create(fileSystem, "", repository.path()).value());
        differ.emplace(GitTool(GitTool::findProgram(environment).value(), environment), fileSystem,
                       *scratch, work, mainQueue);
        gitLineDiffer = &*differ;
        first.emplace(*this);
        second.emplace(*this);
        mainQueue.run();
    }

    void open(TestPane& pane, std::string_view name)
    {
        pane.pane.openLocation(repository.at(name));
    }
    /// Lets everything that is due, asked and answered take its course.
    void settle()
    {
        mainQueue.run();
        while (!work.isIdle()) {
            work.runOne();
            mainQueue.run();
        }
    }

    GitTestFolder repository;
    Environment environment = Environment::ofThisProcess();
    ManualWorkQueue work;
    std::optional<PrivateFolder> scratch;
    std::optional<GitLineDiffer> differ;
    std::optional<TestPane> first;
    std::optional<TestPane> second;
};

const GitLineDiff firstModified{{{1, 1, Kind::modified}}, {}};

TEST_F(EditorGitMarksTest, AnOpenedFileHasItsMarksAtOnce)
{
    open(*first, "a");
    EXPECT_FALSE(first->pane.gitLineDiff());
    const int before = first->view.markChanges;
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), GitLineDiff{});
    EXPECT_EQ(first->view.markChanges, before + 1);
}

TEST_F(EditorGitMarksTest, AnEditIsComparedWhenNoOtherHasFollowedForAWhile)
{
    open(*first, "a");
    settle();
    first->type(u"x");
    mainQueue.advance(0.5);
    first->type(u"y");
    mainQueue.advance(0.69);
    EXPECT_TRUE(work.isIdle());
    EXPECT_EQ(first->pane.gitLineDiff(), GitLineDiff{});  // What was known stands.
    mainQueue.advance(0.02);
    ASSERT_EQ(work.waitingCount(), 1U);
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), firstModified);
}

TEST_F(EditorGitMarksTest, UndoAndEditsAtSeveralCursorsAreEditsToo)
{
    open(*first, "a");
    settle();
    first->pane.setSelectedRange({0, 0});
    first->pane.storeCursors({8});
    first->type(u"x");
    mainQueue.advance(0.7);
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(),
              (GitLineDiff{{{1, 1, Kind::modified}, {3, 1, Kind::modified}}, {}}));
    first->run("undo");
    mainQueue.advance(0.69);
    EXPECT_TRUE(work.isIdle());
    mainQueue.advance(0.01);
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), GitLineDiff{});
}

TEST_F(EditorGitMarksTest, ASaveIsComparedAtOnce)
{
    open(*first, "a");
    settle();
    first->type(u"x");
    first->pane.save();
    mainQueue.run();
    EXPECT_EQ(work.waitingCount(), 1U);
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), firstModified);
    mainQueue.advance(2);  // The save has taken the place of the edit.
    EXPECT_TRUE(work.isIdle());
}

TEST_F(EditorGitMarksTest, ATabThatIsShownIsComparedAtOnce)
{
    open(*first, "a");
    open(*first, "b");
    settle();
    repository.git("", {"commit", "--quiet", "--message", "second", "--allow-empty"});
    first->pane.selectTab(0);
    mainQueue.run();
    EXPECT_EQ(work.waitingCount(), 1U);
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), GitLineDiff{});
}

TEST_F(EditorGitMarksTest, AnAnswerForATabThatIsNotShownAnyMoreIsDropped)
{
    open(*first, "a");
    mainQueue.run();
    ASSERT_EQ(work.waitingCount(), 1U);
    work.runOne();
    open(*first, "b");
    mainQueue.run();
    EXPECT_FALSE(first->pane.tabs()[0]->document->gitLineDiff);
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), GitLineDiff{});
}

TEST_F(EditorGitMarksTest, WhatIsAskedMeanwhileFollowsWithTheTextAsItIsThen)
{
    open(*first, "a");
    mainQueue.run();
    first->type(u"x");
    mainQueue.advance(0.7);
    first->type(u"y");
    mainQueue.advance(0.7);
    EXPECT_EQ(work.waitingCount(), 1U);
    work.runOne();
    mainQueue.run();
    EXPECT_EQ(work.waitingCount(), 1U);
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), firstModified);
    EXPECT_TRUE(work.isIdle());
}

TEST_F(EditorGitMarksTest, APaneMayGoBeforeTheAnswer)
{
    open(*first, "a");
    mainQueue.run();
    first->type(u"x");
    first.reset();
    settle();
    mainQueue.advance(1);
    EXPECT_TRUE(work.isIdle());
}

TEST_F(EditorGitMarksTest, EveryViewOfADocumentShowsItsMarks)
{
    open(*first, "a");
    second->pane.showDocument(first->pane.activeTab().document);
    settle();
    first->type(u"x");
    const int before = second->view.markChanges;
    mainQueue.advance(0.7);
    settle();
    EXPECT_EQ(second->pane.gitLineDiff(), firstModified);
    EXPECT_EQ(second->view.markChanges, before + 1);
}

TEST_F(EditorGitMarksTest, AnotherViewAsksWhenThePaneThatEditedShowsAnotherTab)
{
    first->delegate.editors = {&first->pane, &second->pane};
    open(*first, "a");
    second->pane.showDocument(first->pane.activeTab().document);
    settle();
    first->type(u"x");
    open(*first, "b");
    settle();
    EXPECT_EQ(second->pane.gitLineDiff(), GitLineDiff());
    mainQueue.advance(0.7);
    settle();
    EXPECT_EQ(second->pane.gitLineDiff(), firstModified);

    first->pane.selectTab(0);
    settle();
    first->type(u"y");
    second->pane.undo();
    mainQueue.advance(0.7);
    ASSERT_FALSE(work.isIdle());  // Asked, and left before the answer.
    first->pane.selectTab(1);
    settle();
    mainQueue.advance(0.7);
    settle();
    EXPECT_EQ(second->pane.gitLineDiff(), GitLineDiff());
}

TEST_F(EditorGitMarksTest, AReloadAndAnotherNameAreComparedAnew)
{
    open(*first, "a");
    settle();
    repository.write("a", "ONE\ntwo\nthree\n");
    test::moveDate(repository.at("a"), 1'000'000'000);
    first->pane.checkDisk();
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), firstModified);
    std::filesystem::rename(repository.at("a"), repository.at("c"));
    first->pane.files().fileWasRenamed(repository.at("a"), repository.at("c"));
    settle();
    EXPECT_EQ(first->pane.gitLineDiff(), (GitLineDiff{{{1, 3, Kind::added}}, {}}));
    first->pane.files().fileWasDeleted(repository.at("c"));
    settle();
    EXPECT_FALSE(first->pane.gitLineDiff());
}

TEST_F(EditorGitMarksTest, ATextWithoutAFileOrARepositoryHasNoMarks)
{
    first->type(u"x");
    mainQueue.advance(0.7);
    EXPECT_TRUE(work.isIdle());
    EXPECT_FALSE(first->pane.gitLineDiff());
    const test::TestFolder plain;
    first->pane.openLocation(plain.write("p", "x"));
    settle();
    EXPECT_FALSE(first->pane.gitLineDiff());
}

TEST_F(EditorGitMarksTest, AFieldEditorAsksForNoMarks)
{
    EditorPane field(services(), {}, EditorPaneKind::fieldEditor);
    field.openLocation(repository.at("a"));
    field.insertText(u"x");
    mainQueue.advance(1);
    EXPECT_TRUE(work.isIdle());
}

TEST_F(EditorGitMarksTest, TheCommandGoesFromChangeToChange)
{
    open(*first, "a");
    settle();
    first->pane.setSelectedRange({4, 0});
    first->type(u"x");
    first->pane.setSelectedRange({9, 0});
    first->type(u"y");
    first->run("nextGitChange");  // Nothing is known of these yet.
    EXPECT_EQ(first->pane.selectedRange(), (TextRange{10, 0}));
    mainQueue.advance(0.7);
    settle();
    first->pane.setSelectedRange({0, 2});
    first->pane.storeCursors({1});
    first->run("nextGitChange");
    EXPECT_EQ(first->pane.selectedRange(), (TextRange{4, 0}));
    EXPECT_EQ(first->view.visible, (TextRange{4, 0}));
    EXPECT_FALSE(first->pane.hasSecondaryCursors());
    first->run("nextGitChange");
    EXPECT_EQ(first->pane.selectedRange(), (TextRange{4, 0}));  // One block of two lines.
    EXPECT_TRUE(first->delegate.commands.empty());
}

TEST_F(EditorGitMarksTest, TheCommandStaysWhereNothingHasChanged)
{
    open(*first, "a");
    settle();
    first->pane.setSelectedRange({5, 2});
    first->run("nextGitChange");
    EXPECT_EQ(first->pane.selectedRange(), (TextRange{5, 2}));
}

}  // namespace
}  // namespace tavrel
