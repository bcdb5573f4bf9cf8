#include "../config/ConfigTestSupport.h"
#include "MainWindowFixture.h"
#include "platform/Environment.h"
#include "terminal/TerminalViewController.h"
#include "terminal/views/TerminalGridView.h"
#include "terminal/views/TerminalPanel.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace tavrel {
namespace {

class EditorColumnsTest : public MainWindowTest {
protected:
    EditorColumnsTest() { setWidth(1500); }

    void setWidth(int width)
    {
        window.resize(width, 820);
        QCoreApplication::processEvents();
    }
    EditorColumns& columns() { return window.columns(); }
    EditorPane& pane(std::size_t index) { return columns().pane(index); }
    void run(const char* name) { window.pane().runCommand({name, {}}); }
    QString status() { return window.statusLine().text(); }
    std::u16string text(std::size_t index) { return pane(index).text().text(); }
};

TEST_F(EditorColumnsTest, AsManyColumnsAsFitStandSideBySide)
{
    ASSERT_EQ(columns().visibleColumnCount(), 2u);
    const int width = columns().view(0).preferredWidth();
    const TavrelTextView& view = columns().view(0).textView();
    EXPECT_EQ(width, static_cast<int>(std::ceil(view.columnLimit() + 52.0 + 14)));
    EXPECT_EQ(columns().column(0).geometry().left(), 0);
    EXPECT_EQ(columns().view(0).width(), width);
    EXPECT_EQ(columns().column(1).geometry().left(), width + 1);
    EXPECT_EQ(columns().view(1).width(), width);
    setWidth(2 * width + 1);
    EXPECT_EQ(columns().visibleColumnCount(), 2u);
    setWidth(2 * width);
    EXPECT_EQ(columns().visibleColumnCount(), 1u);
    EXPECT_FALSE(columns().view(1).isVisible());
    EXPECT_EQ(columns().view(0).width(), 2 * width);
}

TEST_F(EditorColumnsTest, ANarrowWindowMakesNoSecondColumn)
{
    MainWindow narrow({clock, mainQueue, fileSystem, pasteboard, calendar}, WindowSize{});
    narrow.show();
    EXPECT_EQ(narrow.columns().columnCount(), 1u);
}

TEST_F(EditorColumnsTest, ThePreferencesLimitTheirNumber)
{
    Preferences preferences = defaultPreferences();
    preferences.maxEditors = 1;
    window.applyPreferences(preferences);
    EXPECT_EQ(columns().visibleColumnCount(), 1u);
    preferences.maxEditors = -5;
    window.applyPreferences(preferences);
    EXPECT_EQ(columns().visibleColumnCount(), 1u);
    preferences.maxEditors = 9;
    preferences.columnWidth = 10;
    window.applyPreferences(preferences);
    EXPECT_EQ(columns().visibleColumnCount(), 4u);
}

TEST_F(EditorColumnsTest, CommandsMoveTheKeysBetweenTheColumns)
{
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(columns().activeColumnIndex(), 1u);
    EXPECT_TRUE(columns().view(1).textView().isFirstResponder());
    type("second");
    EXPECT_EQ(text(0), u"");
    EXPECT_EQ(text(1), u"second");
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(columns().activeColumnIndex(), 1u);
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(columns().activeColumnIndex(), 0u);
    EXPECT_EQ(status(), QStringLiteral("No File"));
}

TEST_F(EditorColumnsTest, AClickMakesAColumnTheActiveOne)
{
    pane(1).openLocation(file("b.txt", "text"));
    run("editor1");
    EXPECT_EQ(status(), QStringLiteral("No File"));
    QTest::mouseClick(&columns().view(1).textView(), Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_EQ(columns().activeColumnIndex(), 1u);
    EXPECT_EQ(status(), QStringLiteral("Text"));
}

TEST_F(EditorColumnsTest, WithoutTerminalsToMakeTogglingChangesNothingInSight)
{
    columns().toggleTerminal();
    EXPECT_FALSE(columns().column(0).isTerminalVisible());
    EXPECT_TRUE(columns().currentView().textView().hasFocus());
    columns().toggleTerminal();
    EXPECT_FALSE(columns().isTerminalVisible());
}

/// A base, so that it outlives the window of another base, whose terminals read it.
struct TerminalHome {
    test::ConfigTestHome home;
};

class EditorColumnsTerminalTest : protected TerminalHome, public EditorColumnsTest {
protected:
    EditorColumnsTerminalTest()
    {
        home.store.load();
        columns().setTerminalServices({.makeTerminal = [this] {
            return std::make_unique<TerminalViewController>(TerminalServices{
                mainQueue, home.store, Environment(), home.home.path(), "/bin/sh"});
        }});
        columns().toggleTerminal();
    }
    TerminalGridView& grid(std::size_t index)
    {
        return columns().column(index).terminalPanel()->gridView();
    }
};

TEST_F(EditorColumnsTerminalTest, AColumnThatNoLongerFitsGivesTheKeysOfItsTerminalBack)
{
    ASSERT_EQ(columns().visibleColumnCount(), 2u);
    EXPECT_TRUE(grid(0).hasFocus());
    // The terminal has the keys, and the other column is the active one.
    columns().column(1).focusTerminal();
    EXPECT_TRUE(grid(1).hasFocus());
    ASSERT_EQ(columns().activeColumnIndex(), 0u);
    setWidth(700);
    ASSERT_EQ(columns().visibleColumnCount(), 1u);
    EXPECT_TRUE(columns().view(0).textView().hasFocus());
}

TEST_F(EditorColumnsTerminalTest, ATerminalThatStaysInSightKeepsTheKeys)
{
    setWidth(700);
    ASSERT_EQ(columns().visibleColumnCount(), 1u);
    EXPECT_TRUE(grid(0).hasFocus());
}

TEST_F(EditorColumnsTest, ANewViewSharesTheDocument)
{
    pane(0).openLocation(file("a.txt", "one\n"));
    run("newView");
    EXPECT_EQ(columns().activeColumnIndex(), 1u);
    EXPECT_EQ(status(), QStringLiteral("Viewing a.txt in editor 2"));
    EXPECT_EQ(&pane(0).document(), &pane(1).document());
    pane(0).setSelectedRange({2, 0});
    type("new ");
    EXPECT_EQ(text(0), u"new one\n");
    EXPECT_EQ(pane(0).selectedRange(), (TextRange{6, 0}));
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_EQ(columns().view(i).tabScrollView().tabView(0).face().title,
                  QStringLiteral("\u2022 a.txt"));
    EXPECT_EQ(columns().documents().size(), 1u);
}

TEST_F(EditorColumnsTest, WithoutAFileThereIsNoNewView)
{
    run("newView");
    EXPECT_EQ(status(), QStringLiteral("No file to view in another editor"));
    EXPECT_EQ(columns().activeColumnIndex(), 0u);
    setWidth(900);
    window.statusLine().setText(u"as it was");
    run("newView");
    EXPECT_EQ(status(), QStringLiteral("as it was"));
}

TEST_F(EditorColumnsTest, ATabMovesToAnotherColumnInItsState)
{
    pane(0).openLocation(file("a.txt", "one two"));
    pane(0).setSelectedRange({4, 3});
    pane(0).runCommand({"moveToEditor", {{"editor", CSONValue(std::int64_t{2})}}});
    EXPECT_EQ(columns().activeColumnIndex(), 1u);
    EXPECT_EQ(text(1), u"one two");
    EXPECT_EQ(pane(1).selectedRange(), (TextRange{4, 3}));
    EXPECT_EQ(columns().view(0).tabScrollView().tabView(0).face().title, QStringLiteral("No File"));
}

TEST_F(EditorColumnsTest, AColumnThatIsHiddenGivesTheKeysAway)
{
    const std::filesystem::path path = file("a.txt", "old");
    run("editor2");
    pane(1).openLocation(path);
    type("new ");
    setWidth(900);
    EXPECT_EQ(columns().activeColumnIndex(), 0u);
    EXPECT_TRUE(columns().view(0).textView().isFirstResponder());
    EXPECT_EQ(contentsOf(path), "new old");
    setWidth(1500);
    EXPECT_EQ(text(1), u"new old");
}

TEST_F(EditorColumnsTest, ClosingOneOfTwoViewsDoesNotAsk)
{
    pane(0).openLocation(file("a.txt", "one"));
    run("newView");
    type("x");
    run("closeFile");
    EXPECT_TRUE(dialogs_->alerts.empty());
    run("editor1");
    dialogs_->answer = 1;
    run("closeFile");
    ASSERT_EQ(dialogs_->alerts.size(), 1u);
    EXPECT_EQ(dialogs_->alerts[0].message, u"Close a.txt");
    EXPECT_EQ(dialogs_->alerts[0].buttons, (std::vector<std::u16string>{u"Close", u"Cancel"}));
    EXPECT_EQ(dialogs_->alerts[0].escapeButton, 1u);
    EXPECT_EQ(text(0), u"xone");
    dialogs_->answer = 0;
    run("closeFile");
    EXPECT_EQ(text(0), u"");
}

TEST_F(EditorColumnsTest, ClosingAllAsksOncePerDocumentUntilRefused)
{
    Preferences preferences = defaultPreferences();
    preferences.autoSaveOnFocusLoss = false;
    window.applyPreferences(preferences);
    for (const char* name : {"a.txt", "b.txt", "c.txt"}) {
        window.pane().openLocation(file(name, name));
        type("x");
    }
    run("newView");
    dialogs_->whileAsking = [this] { dialogs_->answer = dialogs_->alerts.size() == 2 ? 1 : 0; };
    run("closeAllFiles");
    EXPECT_EQ(dialogs_->alerts.size(), 2u);
    EXPECT_EQ(pane(0).tabs().size() + pane(1).tabs().size(), 3u);
    dialogs_->whileAsking = nullptr;
    dialogs_->alerts.clear();
    dialogs_->answer = 0;
    run("closeAllFiles");
    EXPECT_EQ(dialogs_->alerts.size(), 2u);
    EXPECT_TRUE(columns().documents().size() == 2 && columns().documents()[0]->isEmpty());
}

TEST_F(EditorColumnsTest, ClosingTheWindowAsksAboutEachDocumentOnce)
{
    Preferences preferences = defaultPreferences();
    preferences.autoSaveOnFocusLoss = false;
    window.applyPreferences(preferences);
    window.pane().openLocation(file("a.txt", "a"));
    type("x");
    run("newView");
    window.pane().openLocation(file("b.txt", "b"));
    type("x");
    dialogs_->whileAsking = [this] { dialogs_->answer = dialogs_->alerts.size() == 2 ? 1 : 0; };
    EXPECT_FALSE(window.close());
    ASSERT_EQ(dialogs_->alerts.size(), 2u);
    EXPECT_EQ(dialogs_->alerts[0].message, u"Close a.txt");
    EXPECT_EQ(dialogs_->alerts[1].message, u"Close b.txt");
    dialogs_->whileAsking = nullptr;
    dialogs_->alerts.clear();
    dialogs_->answer = 0;
    EXPECT_TRUE(window.close());
    EXPECT_EQ(dialogs_->alerts.size(), 2u);
}

TEST_F(EditorColumnsTest, ClosingTheWindowAsksAboutColumnsOutOfSightToo)
{
    pane(1).openLocation(file("other.txt", "text"));
    pane(1).showDocument(std::make_shared<EditorDocument>());
    pane(1).insertText(u"x");
    pane(1).selectTab(0);
    setWidth(900);
    ASSERT_EQ(columns().visibleColumnCount(), 1u);
    dialogs_->answer = 1;
    EXPECT_FALSE(window.close());
    ASSERT_EQ(dialogs_->alerts.size(), 1u);
    EXPECT_EQ(dialogs_->alerts[0].message, u"Close Untitled");
    EXPECT_EQ(columns().activeColumnIndex(), 0u);
}

TEST_F(EditorColumnsTest, AFileThatChangedOutsideIsReloadedOrAskedAbout)
{
    const std::filesystem::path path = file("a.txt", "old");
    pane(0).openLocation(path);
    run("newView");
    file("a.txt", "changed outside");
    columns().checkDisk();
    EXPECT_TRUE(dialogs_->alerts.empty());
    EXPECT_EQ(text(0), u"changed outside");
    EXPECT_EQ(text(1), u"changed outside");

    type("x");
    file("a.txt", "changed once more");
    dialogs_->whileAsking = [&] {
        // What a dialog of our own does to the focus saves nothing.
        columns().autosaveCurrent();
        EXPECT_EQ(contentsOf(path), "changed once more");
    };
    columns().checkDisk();
    columns().checkDisk();
    ASSERT_EQ(dialogs_->alerts.size(), 1u);
    EXPECT_EQ(dialogs_->alerts[0].message, u"a.txt changed on disk");
    EXPECT_EQ(dialogs_->alerts[0].buttons,
              (std::vector<std::u16string>{u"Keep Editor Version", u"Reload From Disk"}));
    EXPECT_EQ(dialogs_->alerts[0].escapeButton, 0u);
    EXPECT_EQ(text(0), u"xchanged outside");
    file("a.txt", "a third time");
    dialogs_->whileAsking = nullptr;
    dialogs_->answer = 1;
    columns().checkDisk();
    EXPECT_EQ(text(1), u"a third time");
}

TEST_F(EditorColumnsTest, AColumnMayComeWhileTheUserIsAsked)
{
    const std::filesystem::path first = file("a.txt", "a");
    const std::filesystem::path second = file("b.txt", "b");
    pane(0).openLocation(first);
    pane(1).openLocation(second);
    pane(0).insertText(u"x");
    pane(1).insertText(u"x");
    file("a.txt", "changed");
    file("b.txt", "changed");
    Preferences narrow = defaultPreferences();
    narrow.columnWidth = 10;
    dialogs_->whileAsking = [&] { window.applyPreferences(narrow); };
    dialogs_->answer = 1;
    columns().checkDisk();
    EXPECT_EQ(columns().columnCount(), 4u);
    EXPECT_EQ(dialogs_->alerts.size(), 2u);
    EXPECT_EQ(text(0), u"changed");
    EXPECT_EQ(text(1), u"changed");
}

TEST_F(EditorColumnsTest, AColumnMayComeWhileAllTabsAreClosed)
{
    pane(0).insertText(u"x");
    pane(1).insertText(u"y");
    Preferences narrow = defaultPreferences();
    narrow.columnWidth = 10;
    dialogs_->whileAsking = [&] { window.applyPreferences(narrow); };
    columns().closeAllTabs();
    EXPECT_EQ(columns().columnCount(), 4u);
    EXPECT_EQ(dialogs_->alerts.size(), 2u);
    EXPECT_EQ(text(0) + text(1), u"");
}

TEST_F(EditorColumnsTest, AClickInSearchResultsShowsWhatItNamesInTheOtherColumn)
{
    const std::filesystem::path found = file("found.txt", "one\ntwo\nthree\n");
    const std::string heading = found.string() + ":2:\n";
    const std::filesystem::path results = file("results.txt", heading + "> 2: two\n  3: three\n");
    pane(0).files().openSearchResults(results);
    TavrelTextView& view = columns().view(0).textView();
    const auto clickRow = [&](int row, Qt::KeyboardModifiers modifiers) {
        QTest::lastMouseTimestamp += 2000;
        const double height = view.editorFont().rowHeight();
        // A long path of the heading may take several rows, so rows are counted from the end.
        const double top = view.visibleRows()[view.visibleRows().size() - 1].top;
        QTest::mouseClick(&view, Qt::LeftButton, modifiers,
                          QPointF(30, top - (row - 0.5) * height).toPoint());
    };
    clickRow(2, Qt::ControlModifier);
    EXPECT_TRUE(pane(1).document().isEmpty());
    pane(0).clearSecondaryCursors();
    clickRow(2, {});
    EXPECT_EQ(text(1), u"one\ntwo\nthree\n");
    EXPECT_EQ(pane(1).selectedRange(), (TextRange{4, 3}));
    EXPECT_EQ(columns().activeColumnIndex(), 1u);
    clickRow(1, {});
    EXPECT_EQ(pane(1).selectedRange(), (TextRange{8, 5}));
    EXPECT_EQ(pane(1).tabs().size(), 1u);
}

TEST_F(EditorColumnsTest, ADoubleClickInSearchResultsIsOneClick)
{
    setWidth(900);
    const std::filesystem::path found = file("found.txt", "one\ntwo\nthree\nfour\n");
    pane(0).files().openSearchResults(file("results.txt", found.string() + ":2:\n"));
    TavrelTextView& view = columns().view(0).textView();
    const auto doubleClick = [&view] {
        QTest::lastMouseTimestamp += 2000;
        QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(20, 4));
        QTest::mouseDClick(&view, Qt::LeftButton, {}, QPoint(20, 4));
    };
    doubleClick();
    EXPECT_EQ(text(0), u"one\ntwo\nthree\nfour\n");
    EXPECT_EQ(pane(0).selectedRange(), (TextRange{4, 3}));
    doubleClick();
    EXPECT_EQ(pane(0).selectedRange(), (TextRange{0, 3}));
}

TEST_F(EditorColumnsTest, DroppedFilesMayHaveAnyName)
{
    const std::filesystem::path path = file("a\xff%41 \xc3\xa9.txt", "text");
    QMimeData data;
    const QByteArray base = QUrl::fromLocalFile(folder.path()).toEncoded();
    data.setUrls({QUrl::fromEncoded(base + "/a%FF%2541%20%C3%A9.txt")});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&columns().view(0).textView(), &enter);
    QDropEvent drop(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &drop);
    EXPECT_EQ(pane(0).document().url, path);
    EXPECT_EQ(text(0), u"text");
    std::filesystem::remove(path);  // The toolkit would not find it.
}

TEST_F(EditorColumnsTest, ClosingAllLeavesTheKeysInTheirColumn)
{
    pane(0).openLocation(file("a.txt", "a"));
    pane(1).openLocation(file("b.txt", "b"));
    press(Qt::Key_1, Qt::ControlModifier);
    run("closeAllFiles");
    EXPECT_EQ(columns().activeColumnIndex(), 0u);
    EXPECT_TRUE(columns().view(0).textView().isFirstResponder());
}

TEST_F(EditorColumnsTest, WhatResultsNameAndCannotBeOpenedIsSaidInTheStatusLine)
{
    const std::filesystem::path base = folder.path().toStdString();
    std::filesystem::create_directory(base / "folder");
    pane(0).files().openSearchResults(file("results.txt", (base / "folder").string() + ":1:\n"));
    EXPECT_FALSE(pane(0).clickedAt(0));
    EXPECT_EQ(status(), QStringLiteral("Could not open folder: Is a directory"));
    EXPECT_EQ(columns().activeColumnIndex(), 0u);
}

TEST_F(EditorColumnsTest, DroppedFilesAreOpened)
{
    const std::filesystem::path first = file("a.txt", "one");
    const std::filesystem::path second = file("b b.txt", "two");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(first.string())),
                  QUrl::fromLocalFile(QString::fromStdString(second.string()))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&columns().view(0).textView(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &drop);
    EXPECT_EQ(pane(0).tabs().size(), 2u);
    EXPECT_EQ(text(0), u"two");
    EXPECT_EQ(status(), QStringLiteral("Opened b b.txt"));
}

}  // namespace
}  // namespace tavrel
