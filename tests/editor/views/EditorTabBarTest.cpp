#include "ViewTestSupport.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace tavrel {
namespace {

std::shared_ptr<EditorDocument> documentNamed(const std::string& name)
{
    return std::make_shared<EditorDocument>(std::filesystem::path("/nowhere") / name,
                                            TextSnapshot(u"text of a file"));
}

class EditorTabBar : public testing::Test {
protected:
    EditorTabScrollView& bar() { return shown.view.tabScrollView(); }
    void open(int count)
    {
        for (int i = 0; i < count; ++i)
            shown.pane.showDocument(documentNamed("file" + std::to_string(i) + ".cpp"));
        shown.settle();
    }
    void wheel(QPoint pixels, QPoint angle)
    {
        QWheelEvent event(QPointF(20, 10), bar().mapToGlobal(QPointF(20, 10)), pixels, angle,
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&bar(), &event);
    }
    QRect tab(int index) { return bar().tabView(index).geometry(); }

    ShownPane shown;
};

class PaintCounter : public QObject {
public:
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

TEST_F(EditorTabBar, AnEmptyTabIsTitledNoFileAndCannotBeClosed)
{
    ASSERT_EQ(bar().tabCount(), 1);
    EXPECT_EQ(bar().tabView(0).face().title, QStringLiteral("No File"));
    EXPECT_FALSE(bar().tabView(0).closeMark().isVisible());
}

TEST_F(EditorTabBar, TabsHaveTheirHeightAndDistance)
{
    open(3);
    ASSERT_EQ(bar().tabCount(), 3);
    EXPECT_EQ(tab(0).height(), 24);
    EXPECT_EQ(tab(1).left() - (tab(0).right() + 1), 4);
    const QRect mark = bar().tabView(1).closeMark().geometry();
    EXPECT_EQ(mark.size(), QSize(18, 18));
    EXPECT_EQ(mark.left(), 5);
    EXPECT_EQ(EditorTabDragView::titleFont(true).pixelSize(), 11);
    EXPECT_EQ(EditorTabDragView::titleFont(true).weight(), QFont::DemiBold);
    EXPECT_EQ(EditorTabDragView::titleFont(false).weight(), QFont::Normal);
}

TEST_F(EditorTabBar, AClickSelectsATab)
{
    open(3);
    EXPECT_EQ(shown.pane.activeTabIndex(), 2u);
    QTest::mousePress(&bar().tabView(0), Qt::LeftButton, {}, QPoint(40, 12));
    EXPECT_EQ(shown.pane.activeTabIndex(), 0u);
    EXPECT_TRUE(bar().tabView(0).face().isActive);
    EXPECT_FALSE(bar().tabView(2).face().isActive);
    EXPECT_TRUE(shown.textView().isFirstResponder());
}

TEST_F(EditorTabBar, TheCloseMarkClosesWhenTheMouseGoesUp)
{
    open(3);
    EditorTabCloseMark& mark = bar().tabView(0).closeMark();
    QTest::mousePress(&mark, Qt::LeftButton);
    EXPECT_EQ(shown.pane.tabs().size(), 3u);
    QTest::mouseRelease(&mark, Qt::LeftButton);
    EXPECT_EQ(shown.pane.tabs().size(), 2u);
    EXPECT_EQ(bar().tabCount(), 2);
    EXPECT_EQ(bar().tabView(0).face().title, QStringLiteral("file1.cpp"));
}

TEST_F(EditorTabBar, ClosingTheLastTabLeavesAnEmptyOne)
{
    open(1);
    QTest::mouseClick(&bar().tabView(0).closeMark(), Qt::LeftButton);
    ASSERT_EQ(bar().tabCount(), 1);
    EXPECT_EQ(bar().tabView(0).face().title, QStringLiteral("No File"));
}

TEST_F(EditorTabBar, AModifiedTabIsMarkedAndOnlyThenDrawnAnew)
{
    open(2);
    QCoreApplication::processEvents();
    PaintCounter counter;
    bar().tabView(0).installEventFilter(&counter);
    bar().tabView(1).installEventFilter(&counter);
    bar().installEventFilter(&counter);
    shown.type("a");
    EXPECT_EQ(bar().tabView(1).face().title, QStringLiteral("\u2022 file1.cpp"));
    EXPECT_GT(counter.count, 0);
    counter.count = 0;
    shown.type("bcd");
    shown.press(Qt::Key_Left);
    EXPECT_EQ(counter.count, 0);
}

TEST_F(EditorTabBar, TheActiveTabIsScrolledIntoSight)
{
    open(30);
    EXPECT_LE(tab(29).right(), bar().width());
    EXPECT_GT(bar().scrollOffset(), 0);
    shown.pane.selectTab(0);
    EXPECT_GE(tab(0).left(), 0);
    shown.pane.selectTab(15);
    EXPECT_GE(tab(15).left(), 0);
    EXPECT_LE(tab(15).right(), bar().width());
}

TEST_F(EditorTabBar, TheWheelMovesTheRowSidewaysByTheLargerOfBothMovements)
{
    open(30);
    bar().setScrollOffset(0);
    wheel({}, {0, -120});
    EXPECT_EQ(bar().scrollOffset(), 16 * QApplication::wheelScrollLines());
    bar().setScrollOffset(0);
    wheel({-7, 3}, {});
    EXPECT_EQ(bar().scrollOffset(), 7);
    wheel({0, 1000}, {});
    EXPECT_EQ(bar().scrollOffset(), 0);
    wheel({0, -100000}, {});
    EXPECT_EQ(tab(29).right() + 1 + 4, bar().width());
}

TEST_F(EditorTabBar, ALongTitleIsCutInItsMiddle)
{
    shown.pane.showDocument(documentNamed(std::string(100, 'n') + ".cpp"));
    EXPECT_LE(tab(0).width(), 240);
    EXPECT_TRUE(bar().tabView(0).shownTitle().endsWith(QStringLiteral(".cpp")));
    EXPECT_EQ(bar().tabView(0).toolTip().size(), 104);
}

TEST_F(EditorTabBar, AFileNameIsNoMarkup)
{
    shown.pane.showDocument(documentNamed("<b>" + std::string(100, 'n') + "<b>.cpp"));
    EXPECT_TRUE(bar().tabView(0).toolTip().contains(QStringLiteral("&lt;b&gt;n")));
    EXPECT_FALSE(bar().tabView(0).toolTip().contains(QStringLiteral("<b>")));
}

TEST_F(EditorTabBar, ATabIsDraggedOnceTheMouseHasGoneFarEnough)
{
    open(2);
    int drags = 0;
    bar().didStartDrag = [&drags](int index, QPoint grip) {
        ++drags;
        EXPECT_EQ(index, 0);
        EXPECT_EQ(grip, QPoint(40, 12));
    };
    EditorTabDragView& view = bar().tabView(0);
    const auto moveTo = [&view](QPoint point) {
        QMouseEvent event(QEvent::MouseMove, point, view.mapToGlobal(point), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
    };
    QTest::mousePress(&view, Qt::LeftButton, {}, QPoint(40, 12));
    moveTo({43, 12});
    EXPECT_EQ(drags, 0);
    moveTo({44, 12});
    EXPECT_EQ(drags, 1);
    moveTo({80, 12});
    EXPECT_EQ(drags, 1);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, QPoint(80, 12));
}

TEST_F(EditorTabBar, ADraggedTabLeavesAnEmptyPlace)
{
    open(2);
    bar().tabView(1).setHiddenForDrag(true);
    const QImage picture = bar().grab().toImage();
    EXPECT_EQ(picture.pixel(tab(1).center()), shown.textView().theme().panelBackground);
    bar().tabView(1).setHiddenForDrag(false);
    EXPECT_TRUE(bar().tabView(1).closeMark().isVisible());
    EXPECT_NE(bar().grab().toImage(), picture);
}

// Holds a tab over a column, and lets it go there. Answers whether it was taken.
bool dropTab(CodeEditorView& target, const std::string& token)
{
    QMimeData data;
    data.setData(QLatin1String("com.tavrel-code.editor-tab"), QByteArray::fromStdString(token));
    // The text view does not take it, so it comes up to the column.
    QDragEnterEvent enter(QPoint(50, 50), Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&target.textView(), &enter);
    QDropEvent drop(QPoint(50, 50), Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&target, &drop);
    EXPECT_EQ(enter.isAccepted(), drop.isAccepted());
    return drop.isAccepted();
}

TEST_F(EditorTabBar, ATabMovesToAnotherColumnButNotToItsOwn)
{
    open(2);
    ShownPane other(u"other");
    EditorTabDrag tabDrag;
    shown.view.setTabDrag(&tabDrag);
    other.view.setTabDrag(&tabDrag);
    const std::string token = tabDrag.begin(shown.pane, 0);
    EXPECT_FALSE(dropTab(shown.view, token));
    EXPECT_FALSE(dropTab(other.view, "another"));
    EXPECT_EQ(shown.pane.tabs().size(), 2u);
    EXPECT_TRUE(dropTab(other.view, token));
    EXPECT_EQ(shown.pane.tabs().size(), 1u);
    EXPECT_EQ(bar().tabCount(), 1);
    EXPECT_EQ(other.view.tabScrollView().tabView(1).face().title, QStringLiteral("file0.cpp"));
    EXPECT_TRUE(other.view.tabScrollView().tabView(1).face().isActive);
    EXPECT_FALSE(dropTab(other.view, token));
}

TEST(FieldEditor, ShowsTheTextAlone)
{
    SimulatedClock clock;
    ManualMainQueue mainQueue{clock};
    PosixFileSystem fileSystem;
    MemoryPasteboard pasteboard;
    FixedCalendar calendar;
    EditorPane pane({clock, mainQueue, fileSystem, pasteboard, calendar}, {},
                    EditorPaneKind::fieldEditor);
    CodeEditorView view(pane);
    view.resize(200, 24);
    view.show();
    EXPECT_FALSE(view.tabScrollView().isVisible());
    EXPECT_FALSE(view.lineNumberGutterView().isVisible());
    EXPECT_FALSE(view.scrollBar().isVisible());
    EXPECT_EQ(view.textView().geometry(), QRect(2, 3, 196, 18));
    pane.document().textStorage().replace({0, 0}, std::u16string(500, u'w'));
    EXPECT_EQ(view.textView().visibleRows().size(), 1u);
}

}  // namespace
}  // namespace tavrel
