#include "terminal/views/TerminalTabBar.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace tavrel {
namespace {

class TabBar : public testing::Test {
protected:
    TabBar() : bar({}, nullptr)
    {
        bar.resize(300, TerminalTabBar::barHeight);
        bar.onSelect = [this](std::size_t index) {
            did.push_back("select " + std::to_string(index));
        };
        bar.onRename = [this](std::size_t index) {
            did.push_back("rename " + std::to_string(index));
        };
        bar.onClose = [this](std::size_t index) {
            did.push_back("close " + std::to_string(index));
        };
        bar.setTabs({QStringLiteral("1"), QStringLiteral("build"), QStringLiteral("3")}, 1);
        bar.show();
    }

    TerminalTabBar bar;
    std::vector<std::string> did;
};

TEST_F(TabBar, ShowsATabForEachTitle)
{
    ASSERT_EQ(bar.tabs().size(), 3u);
    EXPECT_EQ(bar.tabs()[1]->title(), QStringLiteral("build"));
    EXPECT_FALSE(bar.tabs()[0]->isActive());
    EXPECT_TRUE(bar.tabs()[1]->isActive());
    EXPECT_EQ(bar.tabs()[1]->x(), bar.tabs()[0]->geometry().right() + 1 + 4);
}

TEST_F(TabBar, AClickSelectsARightClickRenamesTheButtonCloses)
{
    QTest::mouseClick(bar.tabs()[2], Qt::LeftButton, {}, {bar.tabs()[2]->width() - 4, 8});
    QTest::mouseClick(bar.tabs()[0], Qt::RightButton);
    QTest::mouseClick(&bar.tabs()[1]->closeButton(), Qt::LeftButton);
    EXPECT_EQ(did, (std::vector<std::string>{"select 2", "rename 0", "close 1"}));
}

TEST_F(TabBar, TheTabsMayBeReplacedByWhatAClickDoes)
{
    bar.onClose = [this](std::size_t) { bar.setTabs({QStringLiteral("only")}, 0); };
    QTest::mouseClick(&bar.tabs()[1]->closeButton(), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(bar.tabs().size(), 1u);
    EXPECT_EQ(bar.tabs()[0]->title(), QStringLiteral("only"));
}

TEST_F(TabBar, TheActiveTabIsInSightWhereThereAreTooMany)
{
    const std::vector<QString> titles(60, QStringLiteral("a title"));
    bar.setTabs(titles, 59);
    EXPECT_TRUE(bar.rect().contains(bar.tabs()[59]->geometry()));
    bar.setTabs(titles, 0);
    EXPECT_TRUE(bar.rect().contains(bar.tabs()[0]->geometry()));
}

TEST_F(TabBar, TheActiveTabHasTheColourOfTheSelection)
{
    const QImage picture = bar.grab().toImage();
    const QColor selection = QColor::fromRgbF(0.2F, 0.26F, 0.37F);
    const auto groundOf = [&](const TerminalTabView& tab) {
        return picture.pixelColor(tab.geometry().right() - 3, tab.geometry().center().y());
    };
    EXPECT_EQ(groundOf(*bar.tabs()[1]).rgb(), selection.rgb());
    EXPECT_NE(groundOf(*bar.tabs()[0]).rgb(), selection.rgb());
}

}  // namespace
}  // namespace tavrel
