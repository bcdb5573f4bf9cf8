#include "ViewTestSupport.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

std::vector<std::size_t> numbersOf(ShownPane& shown)
{
    std::vector<std::size_t> values;
    for (const auto& number : shown.view.lineNumberGutterView().numbers())
        values.push_back(number.value);
    return values;
}

TEST(EditorLineNumberGutterView, AnEmptyTextShowsTheNumberOne)
{
    ShownPane shown;
    EXPECT_EQ(numbersOf(shown), (std::vector<std::size_t>{1}));
}

TEST(EditorLineNumberGutterView, TheEmptyLastLineHasTheNextNumber)
{
    ShownPane shown(u"one\ntwo\n");
    EXPECT_EQ(numbersOf(shown), (std::vector<std::size_t>{1, 2, 3}));
}

TEST(EditorLineNumberGutterView, AWrappedLineShowsOneNumber)
{
    ShownPane shown(std::u16string(200, u'x') + u"\nnext");
    EXPECT_EQ(numbersOf(shown), (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(shown.view.lineNumberGutterView().numbers()[1].top,
              3 * shown.textView().editorFont().rowHeight());
}

TEST(EditorLineNumberGutterView, OnlyLinesThatEndAtALineFeedCount)
{
    ShownPane shown(u"a\rb\u2028c\nd");
    EXPECT_EQ(shown.textView().visibleRows().size(), 4u);
    EXPECT_EQ(numbersOf(shown), (std::vector<std::size_t>{1, 2}));
}

TEST(EditorLineNumberGutterView, NumbersFollowEditsAndScrolling)
{
    ShownPane shown(numberedLines(300));
    shown.press(Qt::Key_Return);
    EXPECT_EQ(numbersOf(shown)[0], 1u);
    shown.textView().scrollBy(10 * shown.textView().editorFont().rowHeight());
    EXPECT_EQ(numbersOf(shown)[0], 11u);
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(EditorLineNumberGutterView, IsWideEnoughForTheNumbers)
{
    ShownPane shown(u"x");
    EXPECT_EQ(shown.view.lineNumberGutterView().width(), 52);
    shown.setText(std::u16string(1'200'000, u'\n'));
    const double advance = shown.textView().editorFont().advance();
    EXPECT_GE(shown.view.lineNumberGutterView().width(), 7 * advance + 9);
}

using Mark = EditorLineNumberGutterView::Mark;
using MarkKind = EditorLineNumberGutterView::MarkKind;

TEST(EditorLineNumberGutterView, ChangedLinesHaveABarAtTheRightEdge)
{
    ShownPane shown(u"one\ntwo\n" + std::u16string(200, u'x') + u"\nlast");
    GitLineDiff diff;
    diff.changedLines = {{1, 1, GitLineChangeKind::added}, {3, 1, GitLineChangeKind::modified}};
    shown.setLineDiff(diff);
    EditorLineNumberGutterView& gutter = shown.view.lineNumberGutterView();
    const double row = shown.textView().editorFont().rowHeight();
    const std::vector<Mark> expected{{0, MarkKind::added},
                                     {2 * row, MarkKind::modified},
                                     {3 * row, MarkKind::modified},
                                     {4 * row, MarkKind::modified}};
    ASSERT_EQ(gutter.marks(), expected);
    EXPECT_EQ(gutter.markRect(expected[1]), QRectF(gutter.width() - 3.0, 2 * row, 3.0, row));
    const QImage picture = gutter.grab().toImage();
    const ViewTheme& theme = shown.textView().theme();
    EXPECT_EQ(picture.pixel(gutter.width() - 1, 2), theme.color(SyntaxToken::gitAdded));
    EXPECT_EQ(picture.pixel(gutter.width() - 3, static_cast<int>(2 * row)),
              theme.color(SyntaxToken::gitModified));
    EXPECT_EQ(picture.pixel(gutter.width() - 1, static_cast<int>(row) + 2), theme.background);
}

TEST(EditorLineNumberGutterView, WhatIsMissingIsMarkedBetweenTheLines)
{
    ShownPane shown(u"one\ntwo\nlast");
    GitLineDiff diff;
    diff.deletedAfterLines = {0, 1, 3};
    shown.setLineDiff(diff);
    EditorLineNumberGutterView& gutter = shown.view.lineNumberGutterView();
    const double row = shown.textView().editorFont().rowHeight();
    const std::vector<Mark> expected{
        {-1, MarkKind::removed}, {row - 1, MarkKind::removed}, {3 * row - 3, MarkKind::removed}};
    ASSERT_EQ(gutter.marks(), expected);
    EXPECT_EQ(gutter.markRect(expected[2]), QRectF(gutter.width() - 12.0, 3 * row - 3, 12.0, 2.0));
}

TEST(EditorLineNumberGutterView, BehindALastLineFeedTheMarkStandsAboveTheEmptyLine)
{
    ShownPane shown(u"one\ntwo\n");
    GitLineDiff diff;
    diff.deletedAfterLines = {2};
    shown.setLineDiff(diff);
    const double row = shown.textView().editorFont().rowHeight();
    EXPECT_EQ(shown.view.lineNumberGutterView().marks(),
              (std::vector<Mark>{{2 * row - 1, MarkKind::removed}}));
}

TEST(EditorLineNumberGutterView, MarksScrollWithTheirLinesAndOnlyWhatChangedIsDrawn)
{
    ShownPane shown(numberedLines(300));
    GitLineDiff diff;
    for (std::int64_t line = 3; line < 300; line += 7)
        diff.changedLines.push_back({line, 2, GitLineChangeKind::modified});
    diff.deletedAfterLines = {11, 12, 40};
    shown.setLineDiff(diff);
    EXPECT_TRUE(shown.showsWhatIsThere());
    for (const double distance : {5.0, 100.0, -30.0, 2000.0, -7.0}) {
        shown.textView().scrollBy(distance);
        EXPECT_TRUE(shown.showsWhatIsThere()) << distance;
    }
    diff.changedLines.erase(diff.changedLines.begin() + 3);
    shown.setLineDiff(diff);
    EXPECT_TRUE(shown.showsWhatIsThere());
    shown.setLineDiff(std::nullopt);
    EXPECT_TRUE(shown.view.lineNumberGutterView().marks().empty());
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(EditorScrollBar, EndsAreExactAndTheMiddleIsNear)
{
    ShownPane shown(numberedLines(3000));
    EditorScrollBar& bar = shown.view.scrollBar();
    ASSERT_TRUE(QTest::qWaitFor([&bar] { return bar.maximum() > 2000; }));
    bar.setValue(bar.maximum());
    EXPECT_EQ(shown.textView().scrollOrigin(), shown.textView().scrolling().end());
    bar.setValue(0);
    EXPECT_EQ(shown.textView().scrollOrigin(), (ScrollOrigin{}));
    bar.setValue(bar.maximum() / 2);
    const double part = static_cast<double>(shown.textView().scrollOrigin().location) /
                        static_cast<double>(shown.pane.text().length());
    EXPECT_NEAR(part, 0.5, 0.05);
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(EditorScrollBar, AClickBesideTheThumbMovesAPage)
{
    ShownPane shown(numberedLines(3000));
    EditorScrollBar& bar = shown.view.scrollBar();
    ASSERT_TRUE(QTest::qWaitFor([&bar] { return bar.maximum() > 2000; }));
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(5, bar.height() - 3));
    const std::size_t rows = shown.textView().rows().rowsPerPage();
    EXPECT_EQ(shown.pane.text().lineIndexAt(shown.textView().scrollOrigin().location), rows);
    QTest::mousePress(&bar, Qt::LeftButton, {}, bar.thumbRect().center());
    QTest::mouseMove(&bar, QPoint(5, bar.height() + 50));
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, QPoint(5, bar.height() + 50));
    EXPECT_EQ(shown.textView().scrollOrigin(), shown.textView().scrolling().end());
}

}  // namespace
}  // namespace tavrel
