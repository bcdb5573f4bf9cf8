#include "app/EditorColumn.h"
#include "../config/ConfigTestSupport.h"
#include "app/ColumnSplit.h"
#include "app/ModalDialogs.h"
#include "editor/EditorPane.h"
#include "editor/views/CodeEditorView.h"
#include "editor/views/EditorAppearance.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Environment.h"
#include "platform/Pasteboard.h"
#include "platform/qt/QtMainQueue.h"
#include "terminal/TerminalViewController.h"
#include "terminal/views/TerminalGridView.h"
#include "terminal/views/TerminalPanel.h"
#include "terminal/views/TerminalTabBar.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(ColumnSplit, TheTerminalHasItsPreferredHeightAtFirst)
{
    const ColumnSplit split;
    EXPECT_EQ(split.position(800), 610);
    EXPECT_EQ(split.position(190), 0);
    EXPECT_EQ(split.position(100), 0);
    EXPECT_EQ(split.position(0), 0);
    EXPECT_EQ(split.position(-5), 0);
}

TEST(ColumnSplit, AMovedDividerKeepsItsDistanceFromTheTop)
{
    ColumnSplit split;
    split.moveTo(300, 800);
    EXPECT_EQ(split.position(800), 300);
    EXPECT_EQ(split.position(1000), 300);
    EXPECT_EQ(split.position(200), 200);
    EXPECT_EQ(split.position(800), 300);
}

TEST(ColumnSplit, TheDividerStaysInTheColumn)
{
    ColumnSplit split;
    split.moveTo(-40, 800);
    EXPECT_EQ(split.position(800), 0);
    split.moveTo(5000, 800);
    EXPECT_EQ(split.position(800), 800 - ColumnSplit::dividerThickness);
}

/// Answers as it was told, and remembers what it was asked.
class AnsweringDialogs final : public ModalDialogs {
public:
    std::size_t ask(const EditorPaneAlert& alert) override
    {
        alerts.push_back(alert);
        return 0;
    }
    std::optional<std::u16string> askForText(const EditorPaneAlert& alert,
                                             std::u16string_view) override
    {
        alerts.push_back(alert);
        return text;
    }
    std::vector<std::filesystem::path> filesToOpen(const std::filesystem::path&) override
    {
        return {};
    }
    std::optional<std::filesystem::path> saveLocation(const std::filesystem::path&) override
    {
        return std::nullopt;
    }

    std::optional<std::u16string> text;
    std::vector<EditorPaneAlert> alerts;
};

class EditorColumnTest : public testing::Test {
protected:
    EditorColumnTest()
        : script(home.home.write("shell", "#!/bin/sh\nprintf 'ready '\nexec cat\n")),
          pane({clock, queue, home.fileSystem, pasteboard, calendar}),
          column(pane, pasteboard, nullptr, EditorAppearance())
    {
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
        home.store.load();
        column.setServices({
            .makeTerminal = [this] { return makeTerminal(); },
            .runMenuShortcut =
                [this](const KeyEvent& event) {
                    menuKeys.push_back(event);
                    return true;
                },
            .isMenuChord = [](std::string_view chord) { return chord == "cmd+v"; },
            .dialogs = [this]() -> ModalDialogs& { return dialogs; },
            .wantsEditorFocus = [this](std::size_t index) { focusWishes.push_back(index); },
            .terminalTabsDidChange = [this] { ++tabChanges; },
        });
        column.resize(700, 500);
        column.show();
        QApplication::setActiveWindow(&column);
        column.setFocus();
        QCoreApplication::processEvents();
    }

    std::unique_ptr<TerminalViewController> makeTerminal()
    {
        ++terminalsMade;
        Environment environment;
        environment.set("PATH", "/usr/bin:/bin");
        return std::make_unique<TerminalViewController>(
            TerminalServices{queue, home.store, environment, home.home.path(), script.string()});
    }
    void showTerminal()
    {
        column.setTerminalVisible(true);
        column.focusTerminal();
    }
    TerminalGridView& grid() { return column.terminalPanel()->gridView(); }
    bool showsSoon(const char* text)
    {
        return QTest::qWaitFor([&] { return grid().shownText().contains(QLatin1String(text)); });
    }

    test::ConfigTestHome home;
    std::filesystem::path script;
    SteadyClock clock;
    QtMainQueue queue;
    MemoryPasteboard pasteboard;
    FixedCalendar calendar;
    AnsweringDialogs dialogs;
    EditorPane pane;
    EditorColumn column;
    int terminalsMade = 0;
    int tabChanges = 0;
    std::vector<KeyEvent> menuKeys;
    std::vector<std::size_t> focusWishes;
};

TEST_F(EditorColumnTest, ThereIsNoTerminalBeforeItIsShown)
{
    EXPECT_EQ(terminalsMade, 0);
    EXPECT_EQ(column.terminalPanel(), nullptr);
    EXPECT_EQ(column.terminal(), nullptr);
    EXPECT_FALSE(column.isTerminalVisible());
    EXPECT_EQ(column.editorView().geometry(), column.rect());
}

TEST_F(EditorColumnTest, TheTerminalStandsUnderTheEditorAndTakesTheKeys)
{
    showTerminal();
    EXPECT_TRUE(column.isTerminalVisible());
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(column.editorView().geometry(), QRect(0, 0, 700, 310));
    EXPECT_EQ(column.terminalPanel()->geometry(), QRect(0, 315, 700, 185));
    EXPECT_TRUE(showsSoon("ready"));
}

TEST_F(EditorColumnTest, TheFirstShellStartsAtTheSizeOfItsPlace)
{
    /// Remembers how large the panel is when it comes into sight, where its shell starts.
    class ShownSize final : public QObject {
    public:
        explicit ShownSize(EditorColumn& column) : column_(column) {}
        bool eventFilter(QObject* object, QEvent* event) override
        {
            if (event->type() == QEvent::Show && object == column_.terminalPanel() && !size)
                size = column_.terminalPanel()->size();
            return false;
        }
        std::optional<QSize> size;

    private:
        EditorColumn& column_;
    } shown(column);
    qApp->installEventFilter(&shown);
    showTerminal();
    qApp->removeEventFilter(&shown);
    EXPECT_EQ(shown.size, QSize(700, 185));
}

TEST_F(EditorColumnTest, AHiddenTerminalGivesTheKeysBackAndKeepsItsShell)
{
    showTerminal();
    ASSERT_TRUE(showsSoon("ready"));
    column.setTerminalVisible(false);
    EXPECT_FALSE(column.isTerminalVisible());
    EXPECT_TRUE(column.editorView().textView().hasFocus());
    EXPECT_EQ(column.editorView().geometry(), column.rect());
    showTerminal();
    EXPECT_EQ(terminalsMade, 1);
    EXPECT_TRUE(grid().shownText().startsWith(QStringLiteral("ready")));
}

TEST_F(EditorColumnTest, ANewTabTakesTheKeys)
{
    column.newTerminalTab();
    EXPECT_EQ(column.terminal(), nullptr);  // There is none while it is hidden.
    showTerminal();
    EXPECT_EQ(column.terminal()->tabCount(), 1u);
    column.setFocus();
    column.newTerminalTab();
    EXPECT_EQ(column.terminal()->tabCount(), 2u);
    EXPECT_EQ(tabChanges, 1);
    EXPECT_TRUE(grid().hasFocus());
}

TEST_F(EditorColumnTest, TheDividerIsDraggedFromItsOwnPlace)
{
    showTerminal();
    QTest::mousePress(&column, Qt::LeftButton, {}, {100, 312});
    QTest::mouseMove(&column, {100, 202});
    QTest::mouseRelease(&column, Qt::LeftButton, {}, {100, 202});
    EXPECT_EQ(column.split().chosen(), 200);
    EXPECT_EQ(column.editorView().height(), 200);
}

TEST_F(EditorColumnTest, TheDividerIsTakenHoldOfOverTheEdgesOfItsNeighbours)
{
    showTerminal();
    // The divider stands from 310 to 315.
    QWidget& text = column.editorView().textView();
    QTest::mousePress(&text, Qt::LeftButton, {}, text.mapFrom(&column, QPoint(100, 305)));
    QTest::mouseMove(&text, text.mapFrom(&column, QPoint(100, 255)));
    QTest::mouseRelease(&text, Qt::LeftButton, {}, text.mapFrom(&column, QPoint(100, 255)));
    EXPECT_EQ(column.split().chosen(), 260);
    QTest::mousePress(&grid(), Qt::LeftButton, {}, {100, 4});
    QTest::mouseMove(&grid(), {100, 24});
    QTest::mouseRelease(&grid(), Qt::LeftButton, {}, {100, 24});
    EXPECT_EQ(column.split().chosen(), 280);
}

TEST_F(EditorColumnTest, ADividerThatGoesAwayIsHeldNoMore)
{
    showTerminal();
    QTest::mousePress(&column, Qt::LeftButton, {}, {100, 312});
    column.setTerminalVisible(false);
    showTerminal();
    QTest::mouseMove(&column, {100, 202});
    EXPECT_EQ(column.split().chosen(), std::nullopt);
}

TEST_F(EditorColumnTest, FartherFromTheDividerTheMouseBelongsToTheViews)
{
    showTerminal();
    QTest::mousePress(&grid(), Qt::LeftButton, {}, {100, 40});
    QTest::mouseMove(&grid(), {200, 70});
    QTest::mouseRelease(&grid(), Qt::LeftButton, {}, {200, 70});
    EXPECT_EQ(column.split().chosen(), std::nullopt);
    EXPECT_TRUE(grid().selection().has_value());
}

TEST_F(EditorColumnTest, AnEditorNumberGivesTheKeysToThatEditor)
{
    showTerminal();
    QTest::keyClick(&grid(), Qt::Key_1, Qt::ControlModifier);
    QTest::keyClick(&grid(), Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(focusWishes, (std::vector<std::size_t>{0, 2}));
}

TEST_F(EditorColumnTest, WhatTheTerminalDoesNotKnowGoesToTheMenus)
{
    showTerminal();
    QTest::keyClick(&grid(), Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(menuKeys.size(), 1u);
    EXPECT_EQ(menuKeys[0].modifierFlags, commandModifier);
}

TEST_F(EditorColumnTest, CopyAndPasteOfTheMenuGoToTheViewWithTheKeys)
{
    EXPECT_FALSE(column.runInTerminal("copy"));
    showTerminal();
    ASSERT_TRUE(showsSoon("ready"));
    grid().setSelection(GridSelection{{0, 0}, {0, 2}});
    EXPECT_TRUE(column.runInTerminal("copy"));
    EXPECT_EQ(pasteboard.contents()->text, u"rea");
    pasteboard.setContents({u"pasted"});
    EXPECT_TRUE(column.runInTerminal("paste"));
    EXPECT_TRUE(showsSoon("ready pasted"));
    EXPECT_TRUE(column.runInTerminal("undo"));
}

TEST_F(EditorColumnTest, ATabIsNamedThroughTheDialogs)
{
    showTerminal();
    dialogs.text = u"  server ";
    column.terminal()->renameTab(0);
    ASSERT_EQ(dialogs.alerts.size(), 1u);
    EXPECT_EQ(dialogs.alerts[0].message, u"Terminal Tab Name");
    EXPECT_EQ(dialogs.alerts[0].buttons, (std::vector<std::u16string>{u"Set Name", u"Cancel"}));
    ASSERT_EQ(column.terminalPanel()->tabBar().tabs().size(), 1u);
    EXPECT_EQ(column.terminalPanel()->tabBar().tabs()[0]->title(), QStringLiteral("server"));
    EXPECT_FALSE(column.terminalPanel()->tabBar().isHidden());
}

TEST_F(EditorColumnTest, WithoutATerminalToMakeNothingHappens)
{
    column.setServices({});
    showTerminal();
    EXPECT_FALSE(column.isTerminalVisible());
    column.newTerminalTab();
    EXPECT_EQ(column.terminalPanel(), nullptr);
}

}  // namespace
}  // namespace tavrel
