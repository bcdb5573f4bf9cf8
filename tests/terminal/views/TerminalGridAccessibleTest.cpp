#include "terminal/views/TerminalGridAccessible.h"
#include "ShownGrid.h"

#include <QAccessible>

namespace tavrel {
namespace {

class AccessibleGrid : public testing::Test {
protected:
    AccessibleGrid() : interface(QAccessible::queryAccessibleInterface(&grid.view)) {}

    QAccessibleTextInterface& text() { return *interface->textInterface(); }

    ShownGrid grid;
    QAccessibleInterface* interface;
};

TEST_F(AccessibleGrid, IsATerminalWithAName)
{
    ASSERT_TRUE(interface);
    EXPECT_EQ(interface->role(), QAccessible::Terminal);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Terminal"));
    ASSERT_TRUE(interface->textInterface());
}

TEST_F(AccessibleGrid, TheRowsInSightAreItsText)
{
    grid.feed("one\r\ntwo");
    EXPECT_EQ(text().text(0, text().characterCount()), QStringLiteral("one\ntwo\n\n\n\n\n\n"));
    EXPECT_EQ(text().text(4, 7), QStringLiteral("two"));
    EXPECT_EQ(text().text(-5, 3), QStringLiteral("one"));
    EXPECT_EQ(text().text(6, 2), QString());
}

TEST_F(AccessibleGrid, TheCursorHasItsPlaceInTheText)
{
    grid.feed("one\r\ntwo");
    EXPECT_EQ(text().cursorPosition(), 7);
    grid.feed("\x1b[1;2H");
    EXPECT_EQ(text().cursorPosition(), 1);
}

TEST_F(AccessibleGrid, TheSelectionGoesBothWays)
{
    grid.feed("one\r\ntwo");
    EXPECT_EQ(text().selectionCount(), 0);
    text().addSelection(4, 6);
    EXPECT_EQ(grid.view.selectedText(), u"tw");
    int start = 0;
    int end = 0;
    text().selection(0, &start, &end);
    EXPECT_EQ(start, 4);
    EXPECT_EQ(end, 6);
    text().removeSelection(0);
    EXPECT_EQ(text().selectionCount(), 0);
}

TEST_F(AccessibleGrid, APlaceOnTheScreenIsAPlaceInTheText)
{
    grid.feed("one\r\ntwo");
    const QRect rect = text().characterRect(5);
    EXPECT_EQ(rect.topLeft(), grid.view.mapToGlobal(grid.view.cellRect({1, 1}).toRect().topLeft()));
    EXPECT_EQ(text().offsetAtPoint(rect.center()), 5);
}

TEST(ReaderUpdate, IsTheStretchThatChanged)
{
    const auto update = [](const char* before, const char* after) {
        return readerUpdate(QLatin1String(before), QLatin1String(after));
    };
    const auto expected = [](int position, const char* removed, const char* inserted) {
        return ReaderUpdate{position, QLatin1String(removed), QLatin1String(inserted)};
    };
    EXPECT_EQ(update("one\ntwo", "one\ntwo more"), expected(7, "", " more"));
    EXPECT_EQ(update("one\ntwo", "ONE\ntwo"), expected(0, "one", "ONE"));
    EXPECT_EQ(update("aaa", "aaaa"), expected(3, "", "a"));
    EXPECT_EQ(update("aaaa", "aa"), expected(2, "aa", ""));
    EXPECT_EQ(update("", "x"), expected(0, "", "x"));
    EXPECT_EQ(update("same", "same"), expected(4, "", ""));
}

}  // namespace
}  // namespace tavrel
