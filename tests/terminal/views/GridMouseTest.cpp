#include "ShownGrid.h"

#include <QAbstractEventDispatcher>
#include <QMenu>
#include <QWheelEvent>

namespace tavrel {
namespace {

void turnWheel(ShownGrid& grid, int steps)
{
    const QPointF point(20, 20);
    QWheelEvent event(point, grid.view.mapToGlobal(point), {}, {0, steps * 120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&grid.view, &event);
    grid.settle();
}

std::string numberedLines(int count)
{
    std::string lines;
    for (int line = 0; line < count; ++line)
        lines += "line " + std::to_string(line) + (line + 1 < count ? "\r\n" : "");
    return lines;
}

TEST(GridMouse, ADragSelectsFromCellToCell)
{
    ShownGrid grid;
    grid.feed("hello world\r\nsecond");
    grid.drag(grid.pointAt(0, 6), grid.pointAt(1, 2));
    EXPECT_EQ(grid.view.selection(), (GridSelection{{0, 6}, {1, 2}}));
    EXPECT_EQ(grid.view.selectedText(), u"world\nsec");
}

TEST(GridMouse, ADragBackwardsSelectsTheSame)
{
    ShownGrid grid;
    grid.drag(grid.pointAt(1, 2), grid.pointAt(0, 6));
    EXPECT_EQ(grid.view.selection(), (GridSelection{{0, 6}, {1, 2}}));
}

TEST(GridMouse, ADragBeyondTheGridEndsAtItsEdge)
{
    ShownGrid grid(40, 8);
    grid.drag(grid.pointAt(0, 0), QPoint(grid.view.width() + 50, grid.view.height() + 50));
    EXPECT_EQ(grid.view.selection(), (GridSelection{{0, 0}, {7, 39}}));
}

bool hasTimers(ShownGrid& grid)
{
    return !QAbstractEventDispatcher::instance()->registeredTimers(&grid.view).isEmpty();
}

// Holds the left button over the first row and moves above the view.
void beginDragAbove(ShownGrid& grid)
{
    ShownGrid::apart();
    QTest::mousePress(&grid.view, Qt::LeftButton, {}, grid.pointAt(0, 3));
    QTest::mouseMove(&grid.view, QPoint(20, -40));
    ASSERT_TRUE(hasTimers(grid));
}

TEST(GridMouse, ADragOutsideScrollsUntilTheButtonIsReleased)
{
    ShownGrid grid(40, 8);
    grid.feed(numberedLines(108));
    beginDragAbove(grid);
    EXPECT_TRUE(QTest::qWaitFor([&] { return grid.view.scroll().top() < 95; }));
    EXPECT_EQ(grid.view.selection()->end, (GridPosition{100, 3}));
    EXPECT_EQ(grid.view.selection()->start.row, grid.view.scroll().top());
    QTest::mouseRelease(&grid.view, Qt::LeftButton, {}, QPoint(20, -40));
    EXPECT_FALSE(hasTimers(grid));
}

TEST(GridMouse, ADragEndsWithAnotherTerminalOrOutOfSight)
{
    ShownGrid grid(40, 8);
    grid.feed(numberedLines(108));
    TerminalEmulator other(40, 8);
    beginDragAbove(grid);
    grid.view.setEmulator(&other);
    EXPECT_FALSE(hasTimers(grid));
    grid.view.setEmulator(&grid.emulator);
    beginDragAbove(grid);
    grid.view.hide();
    EXPECT_FALSE(hasTimers(grid));
    grid.view.show();
    const auto selection = grid.view.selection();
    QTest::mouseMove(&grid.view, grid.pointAt(5, 5));
    EXPECT_EQ(grid.view.selection(), selection);
}

TEST(GridMouse, AClickClearsTheSelectionAndTakesTheKeys)
{
    ShownGrid grid;
    grid.view.setSelection(GridSelection{{0, 0}, {0, 3}});
    grid.view.clearFocus();
    grid.click(1, 1);
    EXPECT_EQ(grid.view.selection(), std::nullopt);
    EXPECT_TRUE(grid.view.hasFocus());
}

TEST(GridMouse, ADoubleClickSelectsTheWord)
{
    ShownGrid grid;
    grid.feed("cd /usr/share now");
    grid.doubleClick(0, 6);
    EXPECT_EQ(grid.view.selectedText(), u"/usr/share");
}

TEST(GridMouse, ADoubleClickOnNoWordClearsTheSelection)
{
    ShownGrid grid;
    grid.feed("a b");
    grid.view.setSelection(GridSelection{{0, 0}, {0, 0}});
    grid.doubleClick(0, 1);
    EXPECT_EQ(grid.view.selection(), std::nullopt);
}

TEST(GridMouse, ADoubleClickIsNotExtendedByDragging)
{
    ShownGrid grid;
    grid.feed("one two three");
    ShownGrid::apart();
    QTest::mouseClick(&grid.view, Qt::LeftButton, {}, grid.pointAt(0, 5));
    // The press of the second click, held while the mouse moves.
    QTest::mouseDClick(&grid.view, Qt::LeftButton, {}, grid.pointAt(0, 5));
    QTest::mouseMove(&grid.view, grid.pointAt(0, 11));
    EXPECT_EQ(grid.view.selectedText(), u"two");
}

TEST(GridMouse, ATripleClickSelectsTheRow)
{
    ShownGrid grid;
    grid.feed("one two\r\nthree");
    grid.doubleClick(0, 1);
    QTest::mouseClick(&grid.view, Qt::LeftButton, {}, grid.pointAt(0, 1));
    EXPECT_EQ(grid.view.selection(), (GridSelection{{0, 0}, {0, 39}}));
    EXPECT_EQ(grid.view.selectedText(), u"one two");
}

TEST(GridMouse, ACommandClickOpensALinkAndSelectsNothing)
{
    ShownGrid grid;
    grid.feed("see https://a.b/c.");
    grid.view.setSelection(GridSelection{{0, 0}, {0, 2}});
    grid.click(0, 10, Qt::ControlModifier);
    EXPECT_EQ(grid.opened, (std::vector<std::u16string>{u"https://a.b/c"}));
    EXPECT_TRUE(grid.view.selection().has_value());
}

TEST(GridMouse, AClickWithoutTheCommandKeyOpensNothing)
{
    ShownGrid grid;
    grid.feed("see https://a.b/c.");
    grid.click(0, 10);
    grid.click(0, 1, Qt::ControlModifier);
    EXPECT_TRUE(grid.opened.empty());
}

TEST(GridMouse, TheWheelScrollsTheHistoryByRows)
{
    ShownGrid grid(40, 8);
    grid.feed(numberedLines(108));
    EXPECT_EQ(grid.view.scroll().top(), 100);
    turnWheel(grid, 2);
    EXPECT_EQ(grid.view.scroll().top(), 94);
    EXPECT_FALSE(grid.view.scroll().isFollowing());
    turnWheel(grid, -50);
    EXPECT_EQ(grid.view.scroll().top(), 100);
    EXPECT_TRUE(grid.view.scroll().isFollowing());
}

TEST(GridMouse, ASelectionMadeInTheHistoryIsInAbsoluteRows)
{
    ShownGrid grid(40, 8);
    grid.feed(numberedLines(108));
    grid.view.scrollTo(20);
    grid.doubleClick(1, 6);
    EXPECT_EQ(grid.view.selection(), (GridSelection{{21, 5}, {21, 6}}));
    EXPECT_EQ(grid.view.selectedText(), u"21");
}

TEST(GridMouse, AReaderOfTheHistoryStaysWhileTheOldestRowsDrop)
{
    ShownGrid grid(40, 8);
    grid.emulator.setScrollbackLimit(100);
    grid.feed(numberedLines(108));
    grid.view.scrollTo(50);
    const QImage before = grid.picture();
    EXPECT_TRUE(grid.view.shownText().startsWith(QStringLiteral("line 50\n")));
    grid.feed("\r\nmore\r\nand more\r\nand more\r\n");
    EXPECT_EQ(grid.view.scroll().top(), 46);
    EXPECT_TRUE(grid.view.shownText().startsWith(QStringLiteral("line 50\n")));
    EXPECT_EQ(grid.picture(), before);
}

TEST(GridMouse, AWindowThatGrowsShowsMoreAndStillTheEnd)
{
    ShownGrid grid(40, 8);
    grid.feed(numberedLines(108));
    grid.view.resize(grid.sizeFor(40, 20));
    grid.settle();
    EXPECT_EQ(grid.view.scroll().shownCount(), 20);
    EXPECT_TRUE(grid.view.shownText().endsWith(QStringLiteral("line 107")));
}

QMenu* menuOf(ShownGrid& grid, QPoint point)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, grid.view.mapToGlobal(point));
    QApplication::sendEvent(&grid.view, &event);
    return grid.view.findChild<QMenu*>();
}

QStringList titlesOf(const QMenu& menu)
{
    QStringList titles;
    for (const QAction* action : menu.actions())
        titles.append(action->text());
    return titles;
}

TEST(GridMouse, TheMenuOfALinkOpensAndCopiesIt)
{
    ShownGrid grid;
    grid.feed("see https://a.b/c.");
    QMenu* menu = menuOf(grid, grid.pointAt(0, 10));
    ASSERT_TRUE(menu);
    ASSERT_EQ(titlesOf(*menu),
              (QStringList{QStringLiteral("Open Link"), QStringLiteral("Copy Link")}));
    menu->actions()[1]->trigger();
    EXPECT_EQ(grid.pasteboard.contents()->text, u"https://a.b/c");
    menu->actions()[0]->trigger();
    EXPECT_EQ(grid.opened, (std::vector<std::u16string>{u"https://a.b/c"}));
    menu->close();
}

TEST(GridMouse, TheMenuElsewhereCopiesAndPastes)
{
    ShownGrid grid;
    QMenu* menu = menuOf(grid, grid.pointAt(0, 10));
    ASSERT_TRUE(menu);
    ASSERT_EQ(titlesOf(*menu), (QStringList{QStringLiteral("Copy"), QStringLiteral("Paste")}));
    EXPECT_FALSE(menu->actions()[0]->isEnabled());
    menu->close();
}

}  // namespace
}  // namespace tavrel
