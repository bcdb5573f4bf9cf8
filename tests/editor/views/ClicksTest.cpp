#include "ViewTestSupport.h"

#include <QColorDialog>
#include <QContextMenuEvent>
#include <QMenu>

#include <gtest/gtest.h>

namespace tavrel {
namespace {

class Clicks : public testing::Test {
protected:
    Clicks()
    {
        shown.textView().openLink = [this](const QUrl& url) { opened.push_back(url.toString()); };
    }
    // The titles of the menu at a place of the text; "-" for a separator.
    QStringList menuAt(std::size_t location)
    {
        const QPoint point = shown.pointAt(location);
        QContextMenuEvent event(QContextMenuEvent::Mouse, point,
                                shown.textView().mapToGlobal(point));
        QCoreApplication::sendEvent(&shown.textView(), &event);
        menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QStringList titles;
        if (menu) {
            for (const QAction* action : menu->actions())
                titles.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        }
        return titles;
    }
    void choose(const char* title)
    {
        for (QAction* action : menu->actions()) {
            if (action->text() == QLatin1String(title))
                action->trigger();
        }
        menu->close();
    }
    void rightClick(std::size_t location)
    {
        QTest::mouseClick(&shown.textView(), Qt::RightButton, {}, shown.pointAt(location));
    }

    ShownPane shown{u"see https://example.org/a). and more"};
    QStringList opened;
    QPointer<QMenu> menu;
};

const QStringList plainMenu{QStringLiteral("Undo"), QStringLiteral("Redo"),
                            QStringLiteral("-"),    QStringLiteral("Cut"),
                            QStringLiteral("Copy"), QStringLiteral("Paste"),
                            QStringLiteral("-"),    QStringLiteral("Select All")};

TEST_F(Clicks, TheMenuHoldsTheCommandsOfTheText)
{
    EXPECT_EQ(menuAt(1), plainMenu);
    choose("Select All");
    EXPECT_EQ(shown.pane.selectedRange().length, shown.text().size());
}

TEST_F(Clicks, ALinkHasItemsOfItsOwnAbove)
{
    QStringList expected{QStringLiteral("Open Link"), QStringLiteral("Copy Link"),
                         QStringLiteral("-")};
    expected.append(plainMenu);
    ASSERT_EQ(menuAt(10), expected);
    choose("Open Link");
    EXPECT_EQ(opened, QStringList{QStringLiteral("https://example.org/a")});
    menuAt(10);
    choose("Copy Link");
    EXPECT_EQ(shown.pasteboard.contents()->text, u"https://example.org/a");
}

TEST_F(Clicks, ACommandClickOpensALinkAndElsewhereTogglesACursor)
{
    shown.click(10, Qt::ControlModifier);
    EXPECT_EQ(opened.size(), 1);
    EXPECT_FALSE(shown.pane.hasSecondaryCursors());
    shown.click(2, Qt::ControlModifier);
    EXPECT_EQ(opened.size(), 1);
    EXPECT_EQ(shown.pane.secondaryCursorLocations(), std::vector<std::size_t>{2});
    shown.click(0, Qt::ControlModifier);
    EXPECT_EQ(shown.pane.secondaryCursorLocations(), std::vector<std::size_t>{2});
    shown.click(2, Qt::ControlModifier);
    EXPECT_FALSE(shown.pane.hasSecondaryCursors());
}

TEST_F(Clicks, ARightClickOnAColourPicksOne)
{
    shown.setText(u"color: '#1F2430'; more");
    rightClick(10);
    QColorDialog* panel = shown.view.colorPanel();
    ASSERT_TRUE(panel && panel->isVisible());
    EXPECT_FALSE(panel->isModal());
    EXPECT_EQ(panel->currentColor(), QColor(0x1F, 0x24, 0x30));
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{8, 7}));
    EXPECT_TRUE(menuAt(10).isEmpty());
    panel->setCurrentColor(QColor(255, 0, 1));
    EXPECT_EQ(shown.text(), u"color: '#FF0001'; more");
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{8, 7}));
    panel->setCurrentColor(QColor(2, 3, 4));
    EXPECT_EQ(shown.text(), u"color: '#020304'; more");
    panel->reject();
    EXPECT_FALSE(shown.pane.colorPanelReplacementRange().has_value());
    EXPECT_EQ(menuAt(1), plainMenu);
    menu->close();
}

TEST_F(Clicks, TheColourPanelGoesWithTheTab)
{
    shown.setText(u"#1F2430");
    rightClick(2);
    ASSERT_TRUE(shown.view.colorPanel());
    shown.pane.showDocument(std::make_shared<EditorDocument>(std::nullopt, TextSnapshot(u"x")));
    EXPECT_FALSE(shown.view.colorPanel() && shown.view.colorPanel()->isVisible());
}

TEST_F(Clicks, WhatIsNoColourHasItsMenu)
{
    shown.setText(u"#12345G #1234567");
    rightClick(2);
    EXPECT_FALSE(shown.view.colorPanel());
    EXPECT_EQ(menuAt(2), plainMenu);
    menu->close();
}

}  // namespace
}  // namespace tavrel
