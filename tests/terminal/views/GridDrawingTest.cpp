#include "ShownGrid.h"

#include <QPaintEvent>

#include <random>

namespace tavrel {
namespace {

/// Counts what a widget is asked to draw.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

    QRegion region;
};

TEST(GridDrawing, APlainBlankShowsTheBackgroundAlone)
{
    ShownGrid grid;
    grid.feed("a\x1b[2;1H");
    EXPECT_TRUE(grid.isFilledWith(0, 1, ShownGrid::rgb(grid.colors().defaultBackground)));
    EXPECT_FALSE(grid.isFilledWith(0, 0, ShownGrid::rgb(grid.colors().defaultBackground)));
}

TEST(GridDrawing, AnUnderlinedBlankShowsItsLine)
{
    ShownGrid grid;
    grid.feed("\x1b[4m  \x1b[0m\x1b[2;1H");
    EXPECT_GT(grid.pixels(0, 0, ShownGrid::rgb(grid.colors().defaultForeground)), 0);
}

TEST(GridDrawing, BackgroundsFillTheirCellsWithoutSeams)
{
    ShownGrid grid;
    grid.feed("\x1b[48;2;10;200;30m    \x1b[0m\x1b[3;1H");
    for (int column = 0; column < 4; ++column)
        EXPECT_TRUE(grid.isFilledWith(0, column, qRgb(10, 200, 30)));
    EXPECT_TRUE(grid.isFilledWith(0, 4, ShownGrid::rgb(grid.colors().defaultBackground)));
}

TEST(GridDrawing, TheSelectionCoversTheBackground)
{
    ShownGrid grid;
    grid.feed("\x1b[41m   \x1b[0m\x1b[3;1H");
    grid.view.setSelection(GridSelection{{0, 1}, {0, 1}});
    EXPECT_TRUE(grid.isFilledWith(0, 1, ShownGrid::rgb(grid.colors().selection)));
    EXPECT_TRUE(grid.isFilledWith(0, 0, ShownGrid::rgb(paletteColor(1))));
    grid.view.clearSelection();
    EXPECT_TRUE(grid.isFilledWith(0, 1, ShownGrid::rgb(paletteColor(1))));
}

TEST(GridDrawing, InverseSwapsTheColours)
{
    ShownGrid grid;
    grid.feed("\x1b[7m \x1b[0m\x1b[3;1H");
    EXPECT_TRUE(grid.isFilledWith(0, 0, ShownGrid::rgb(grid.colors().defaultForeground)));
}

TEST(GridDrawing, BoldDimAndItalicLookDifferent)
{
    ShownGrid grid;
    grid.feed("x\x1b[1mx\x1b[0;2mx\x1b[0;3mx\x1b[0m\x1b[3;1H");
    const QImage plain = grid.cellPicture(0, 0);
    for (int column = 1; column <= 3; ++column)
        EXPECT_NE(grid.cellPicture(0, column), plain) << column;
}

TEST(GridDrawing, ALinkIsUnderlinedInItsColour)
{
    ShownGrid grid;
    grid.feed("https://a.b/c x\x1b[3;1H");
    EXPECT_GT(grid.pixels(0, 4, ShownGrid::rgb(grid.colors().link)), 0);
    EXPECT_EQ(grid.pixels(0, 14, ShownGrid::rgb(grid.colors().link)), 0);
}

TEST(GridDrawing, TheCursorIsABlockWithTheFocusAndNothingWithoutIt)
{
    ShownGrid grid;
    const QRgb background = ShownGrid::rgb(grid.colors().defaultBackground);
    EXPECT_EQ(grid.pixels(0, 0, background), 0);
    grid.view.clearFocus();
    grid.settle();
    EXPECT_TRUE(grid.isFilledWith(0, 0, background));
    grid.view.setFocus();
    grid.settle();
    EXPECT_EQ(grid.pixels(0, 0, background), 0);
}

TEST(GridDrawing, AHiddenCursorIsNotDrawn)
{
    ShownGrid grid;
    grid.feed("\x1b[?25l");
    EXPECT_TRUE(grid.isFilledWith(0, 0, ShownGrid::rgb(grid.colors().defaultBackground)));
}

TEST(GridDrawing, TheCursorStaysWithItsRowInTheHistory)
{
    ShownGrid grid(40, 4);
    grid.feed("1\r\n2\r\n3\r\n4\r\n5\r\n6");
    grid.view.scrollBy(-2);
    const QRgb background = ShownGrid::rgb(grid.colors().defaultBackground);
    for (int row = 0; row < 4; ++row)
        EXPECT_TRUE(grid.isFilledWith(row, 1, background)) << row;
}

TEST(GridDrawing, ACharacterUnderTheCursorIsDrawnOverIt)
{
    ShownGrid grid;
    grid.feed("M\x1b[1;1H");
    const QImage withLetter = grid.cellPicture(0, 0);
    grid.feed(" \x1b[1;1H");
    EXPECT_NE(grid.cellPicture(0, 0), withLetter);
}

TEST(GridDrawing, OnlyRowsThatChangedAreDrawn)
{
    ShownGrid grid;
    grid.feed("one\r\ntwo\r\nthree\r\n");
    PaintWatch watch(grid.view);
    grid.feed("\x1b[2;1HTWO\x1b[4;1H");
    EXPECT_EQ(watch.region.boundingRect().top(), grid.view.cellRect({1, 0}).toAlignedRect().top());
    EXPECT_EQ(watch.region.boundingRect().height(), static_cast<int>(grid.view.cellHeight()));
}

// What is on the screen is the sum of all partial drawings, and must be what one of all gives.
TEST(GridDrawing, PartialDrawingsAddUp)
{
    ShownGrid grid(40, 10);
    std::minstd_rand random(20);
    const auto below = [&](std::size_t end) { return static_cast<std::int64_t>(random() % end); };
    const std::vector<std::string> pieces = {
        "word ",        "\r\n",           "\x1b[31m",     "\x1b[0m",
        "\x1b[7;1H",    "\x1b[44mblue",   "\x1b[2K",      "\x1b[3L",
        "\x1b[2M",      "https://a.b/c ", "\xE2\x94\x82", "\xE6\x97\xA5\xC3\xA9",
        "\x1b[1;3;4mX", "\x1b[?25l",      "\x1b[?25h",    "\x1b[?1049h",
        "\x1b[?1049l",  "\x1b[5;20H",     "\x1b[7m inv ", "\x1bM",
    };
    for (int step = 0; step < 300; ++step) {
        for (int i = 0; i < 4; ++i)
            grid.emulator.feed(pieces[random() % pieces.size()]);
        if (random() % 5 == 0)
            grid.view.setSelection(
                selectionBetween({below(12), below(40)}, {below(12), below(40)}));
        if (random() % 7 == 0)
            grid.view.scrollBy(below(9) - 4);
        grid.view.refresh();
        grid.settle();
        ASSERT_EQ(grid.shownPicture(), grid.picture()) << "after step " << step;
    }
}

TEST(GridDrawing, NothingIsDrawnWhereNothingChanged)
{
    ShownGrid grid;
    grid.feed("one");
    PaintWatch watch(grid.view);
    grid.feed("\rone");
    EXPECT_TRUE(watch.region.isEmpty());
}

TEST(GridDrawing, AFloodIsDrawnOnceAtFirstAndOnceWhenItsTimeHasCome)
{
    ShownGrid grid;
    grid.emulator.feed("a");
    grid.view.refreshSoon();
    EXPECT_TRUE(grid.view.shownText().startsWith(QLatin1Char('a')));
    for (int i = 0; i < 100; ++i) {
        grid.emulator.feed("b");
        grid.view.refreshSoon();
    }
    EXPECT_FALSE(grid.view.shownText().contains(QLatin1Char('b')));
    EXPECT_TRUE(QTest::qWaitFor([&] { return grid.view.shownText().contains(QLatin1Char('b')); }));
}

TEST(GridDrawing, LinesJoinAcrossCells)
{
    ShownGrid grid;
    grid.feed("\xE2\x94\x80\xE2\x94\x80\xE2\x94\x80\x1b[5;1H");  // Three level lines.
    const QImage picture = grid.picture();
    const QRect first = grid.view.cellRect({0, 0}).toAlignedRect();
    int y = first.top();
    const QRgb color = ShownGrid::rgb(grid.colors().defaultForeground);
    while (y < first.bottom() && picture.pixel(first.left(), y) != color)
        ++y;
    for (int x = first.left(); x < first.left() + 3 * first.width(); ++x)
        EXPECT_EQ(picture.pixel(x, y), color) << x;
}

TEST(GridDrawing, WhatTheFontLacksStaysInItsCell)
{
    ShownGrid grid;
    // Wide characters and a picture, then blanks that they must not reach.
    grid.feed("\xE6\x97\xA5 \xF0\x9F\x98\x80 \xE0\xA4\x95 x\x1b[3;1H");
    const QRgb background = ShownGrid::rgb(grid.colors().defaultBackground);
    EXPECT_FALSE(grid.isFilledWith(0, 0, background));
    EXPECT_TRUE(grid.isFilledWith(0, 1, background));
    EXPECT_TRUE(grid.isFilledWith(0, 3, background));
    EXPECT_TRUE(grid.isFilledWith(0, 5, background));
}

TEST(GridDrawing, OtherColoursAreSeenAtOnce)
{
    ShownGrid grid;
    TerminalAppearance appearance;
    appearance.colors.defaultBackground = {0.2, 0.4, 0.6};
    grid.view.setAppearance(appearance);
    EXPECT_TRUE(grid.isFilledWith(3, 3, qRgb(51, 102, 153)));
}

TEST(GridDrawing, ABiggerFontHasFewerCells)
{
    ShownGrid grid;
    const TerminalSize before = grid.view.gridSize(QSize(600, 400));
    TerminalAppearance appearance;
    appearance.fontSize = 24;
    grid.view.setAppearance(appearance);
    const TerminalSize after = grid.view.gridSize(QSize(600, 400));
    EXPECT_LT(after.columns, before.columns);
    EXPECT_LT(after.rows, before.rows);
}

TEST(GridDrawing, WithoutATerminalThereIsOnlyTheBackground)
{
    ShownGrid grid;
    grid.feed("text");
    grid.view.setEmulator(nullptr);
    EXPECT_TRUE(grid.isFilledWith(0, 0, ShownGrid::rgb(grid.colors().defaultBackground)));
    EXPECT_EQ(grid.view.shownText(), QString());
    EXPECT_EQ(grid.view.selectedText(), std::nullopt);
    grid.click(0, 0);
    grid.doubleClick(0, 0);
    EXPECT_EQ(grid.view.selection(), std::nullopt);
}

}  // namespace
}  // namespace tavrel
