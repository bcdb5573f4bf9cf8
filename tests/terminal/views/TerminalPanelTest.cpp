#include "terminal/views/TerminalPanel.h"
#include "../../config/ConfigTestSupport.h"
#include "editor/views/EditorScrollBar.h"
#include "platform/Environment.h"
#include "platform/Pasteboard.h"
#include "platform/qt/QtMainQueue.h"
#include "terminal/TerminalEmulator.h"
#include "terminal/TerminalViewController.h"
#include "terminal/views/TerminalGridView.h"
#include "terminal/views/TerminalTabBar.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace tavrel {
namespace {

/// A panel in a window, on real shells that run a script.
class TerminalPanelViewTest : public testing::Test {
protected:
    TerminalPanelViewTest()
        : script(home.home.write("shell", "#!/bin/sh\nprintf 'ready '\nexec cat\n"))
    {
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
        Environment environment;
        environment.set("PATH", "/usr/bin:/bin");
        controller = std::make_unique<TerminalViewController>(
            TerminalServices{queue, home.store, environment, home.home.path(), script.string()});
        panel = std::make_unique<TerminalPanel>(*controller, pasteboard, nullptr);
        panel->resize(600, 300);
    }
    ~TerminalPanelViewTest() override { panel.reset(); }

    void show()
    {
        panel->show();
        panel->setFocus();
        QApplication::setActiveWindow(panel.get());
        QCoreApplication::processEvents();
    }
    bool showsSoon(const char* text)
    {
        return QTest::qWaitFor(
            [&] { return panel->gridView().shownText().contains(QLatin1String(text)); });
    }

    test::ConfigTestHome home;
    std::filesystem::path script;
    QtMainQueue queue;
    MemoryPasteboard pasteboard;
    std::unique_ptr<TerminalViewController> controller;
    std::unique_ptr<TerminalPanel> panel;
};

TEST_F(TerminalPanelViewTest, TheShellStartsWhenThePanelIsFirstShown)
{
    QCoreApplication::processEvents();
    EXPECT_EQ(panel->gridView().shownText().trimmed(), QString());
    show();
    EXPECT_TRUE(showsSoon("ready"));
}

TEST_F(TerminalPanelViewTest, TypingReachesTheShellAndComesBack)
{
    show();
    ASSERT_TRUE(showsSoon("ready"));
    QTest::keyClicks(&panel->gridView(), QStringLiteral("hello"));
    EXPECT_TRUE(showsSoon("ready hello"));
}

TEST_F(TerminalPanelViewTest, TheTerminalHasTheSizeThatFits)
{
    show();
    const TerminalSize size = panel->gridView().gridSize(panel->gridView().size());
    EXPECT_EQ(controller->activeEmulator()->columns(), size.columns);
    EXPECT_EQ(controller->activeEmulator()->rows(), size.rows);
    panel->resize(400, 500);
    const TerminalSize other = panel->gridView().gridSize(panel->gridView().size());
    EXPECT_NE(other, size);
    EXPECT_EQ(controller->activeEmulator()->columns(), other.columns);
    EXPECT_EQ(controller->activeEmulator()->rows(), other.rows);
}

TEST_F(TerminalPanelViewTest, AHiddenPanelCatchesUpWhenItIsShownAgain)
{
    show();
    ASSERT_TRUE(showsSoon("ready"));
    panel->hide();
    controller->print(u"meanwhile\n");
    QCoreApplication::processEvents();
    EXPECT_FALSE(panel->gridView().shownText().contains(QStringLiteral("meanwhile")));
    panel->show();
    EXPECT_TRUE(panel->gridView().shownText().contains(QStringLiteral("meanwhile")));
}

TEST_F(TerminalPanelViewTest, TheBarIsThereWithTwoTabs)
{
    show();
    EXPECT_TRUE(panel->tabBar().isHidden());
    const int rows = controller->activeEmulator()->rows();
    controller->newTab();
    EXPECT_FALSE(panel->tabBar().isHidden());
    EXPECT_EQ(panel->tabBar().height(), 22);
    EXPECT_EQ(panel->gridView().y(), 22);
    EXPECT_LT(controller->activeEmulator()->rows(), rows);
    ASSERT_EQ(panel->tabBar().tabs().size(), 2u);
    EXPECT_EQ(panel->tabBar().tabs()[1]->title(), QStringLiteral("2"));
    EXPECT_TRUE(panel->tabBar().tabs()[1]->isActive());
    QTest::mouseClick(panel->tabBar().tabs()[0], Qt::LeftButton, {},
                      {panel->tabBar().tabs()[0]->width() - 4, 8});
    EXPECT_EQ(controller->activeSessionIndex(), 0u);
    controller->closeTab(1);
    EXPECT_TRUE(panel->tabBar().isHidden());
    EXPECT_EQ(panel->gridView().y(), 0);
}

TEST_F(TerminalPanelViewTest, OutputClearsTheSelection)
{
    show();
    ASSERT_TRUE(showsSoon("ready"));
    panel->gridView().setSelection(GridSelection{{0, 0}, {0, 3}});
    controller->print(u"more\n");
    EXPECT_EQ(panel->gridView().selection(), std::nullopt);
}

TEST_F(TerminalPanelViewTest, TheScrollBarFollowsTheHistoryAndMovesIt)
{
    show();
    std::u16string lines;
    for (int i = 0; i < 300; ++i)
        lines += u"line\n";
    controller->print(lines);
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel->scrollBar().maximum() > 200; }));
    EXPECT_EQ(panel->scrollBar().value(), panel->scrollBar().maximum());
    panel->scrollBar().setValue(10);
    EXPECT_EQ(panel->gridView().scroll().top(), 10);
    EXPECT_FALSE(panel->gridView().scroll().isFollowing());
    QTest::keyClick(&panel->gridView(), Qt::Key_X);
    EXPECT_TRUE(panel->gridView().scroll().isFollowing());
}

TEST_F(TerminalPanelViewTest, AnotherFontIsAnotherSizeOfTheTerminal)
{
    show();
    const int columns = controller->activeEmulator()->columns();
    ASSERT_EQ(home.store.applyUserSettings("{terminal: {fontSize: 24}}"),
              PreferencesStore::Outcome::applied);
    controller->applyPreferences();
    EXPECT_LT(controller->activeEmulator()->columns(), columns);
    EXPECT_EQ(panel->gridView().appearance().fontSize, 24);
}

}  // namespace
}  // namespace tavrel
