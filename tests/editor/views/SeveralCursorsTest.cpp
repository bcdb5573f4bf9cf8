#include "ViewTestSupport.h"

#include "platform/Pasteboard.h"

#include <QInputMethodEvent>

#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(SeveralCursors, TypingAfterSelectingOccurrencesWritesBehindEach)
{
    ShownPane shown(u"foo food foo_ foo\nfoo");
    for (int press = 0; press < 3; ++press)
        shown.press(Qt::Key_F8);
    EXPECT_EQ(shown.textView().decorations().selection.size(), 3u);
    EXPECT_TRUE(shown.textView().decorations().cursors.empty());
    shown.type("x");
    EXPECT_EQ(shown.text(), u"foox food foo_ foox\nfoox");
    EXPECT_EQ(shown.textView().decorations().cursors.size(), 3u);
    shown.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown.text(), u"foo food foo_ foo\nfoo");
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(SeveralCursors, InputMethodsAndPasteReachAll)
{
    ShownPane shown(u"a\nb\nc");
    shown.click(0);
    shown.click(2, Qt::ControlModifier);
    shown.click(4, Qt::ControlModifier);
    QInputMethodEvent commit;
    commit.setCommitString(QString::fromUtf16(u"\u00E9"));
    QCoreApplication::sendEvent(&shown.textView(), &commit);
    EXPECT_EQ(shown.text(), u"\u00E9a\n\u00E9b\n\u00E9c");
    shown.clock.advance(std::chrono::seconds(5));
    shown.pasteboard.setContents({u"--", false});
    shown.press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown.text(), u"\u00E9--a\n\u00E9--b\n\u00E9--c");
    EXPECT_TRUE(shown.showsWhatIsThere());
    shown.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown.text(), u"\u00E9a\n\u00E9b\n\u00E9c");
    shown.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown.text(), u"a\nb\nc");
}

TEST(SeveralCursors, SelectingSidewaysKeepsThemAndMovingByRowsDoesNot)
{
    ShownPane shown(u"one two\nthree four\nfive");
    const auto place = [&] {
        shown.click(1);
        shown.click(10, Qt::ControlModifier);
    };
    place();
    shown.press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{1, 1}));
    EXPECT_EQ(shown.pane.secondaryCursorLocations(), (std::vector<std::size_t>{10}));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown}) {
        place();
        ASSERT_TRUE(shown.pane.hasSecondaryCursors());
        shown.press(key, Qt::ShiftModifier);
        EXPECT_FALSE(shown.pane.hasSecondaryCursors()) << key;
    }
}

TEST(SeveralCursors, ForwardDeleteDropsTheOthersFirst)
{
    ShownPane shown(u"one two three");
    shown.click(0);
    shown.click(4, Qt::ControlModifier);
    shown.press(Qt::Key_Delete);
    EXPECT_EQ(shown.text(), u"ne two three");
    EXPECT_FALSE(shown.pane.hasSecondaryCursors());

    // Also where nothing is left to delete.
    shown.press(Qt::Key_End);
    shown.click(4, Qt::ControlModifier);
    ASSERT_TRUE(shown.pane.hasSecondaryCursors());
    shown.press(Qt::Key_Delete);
    EXPECT_FALSE(shown.pane.hasSecondaryCursors());
    EXPECT_EQ(shown.text(), u"ne two three");

    ShownPane occurrences(u"foo foo");
    occurrences.press(Qt::Key_F8);
    occurrences.press(Qt::Key_F8);
    occurrences.press(Qt::Key_Delete);
    EXPECT_EQ(occurrences.text(), u" foo");
    EXPECT_FALSE(occurrences.pane.hasSecondaryCursors());
    occurrences.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(occurrences.text(), u"foo foo");
}

TEST(SeveralCursors, SelectingByRowsKeepsItsColumn)
{
    ShownPane shown(u"abcdef\nx\nabcdef\nab");
    shown.click(5);
    shown.press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{5, 3}));
    shown.press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{5, 9}));
    shown.press(Qt::Key_Down, Qt::ShiftModifier);
    shown.press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{5, 13}));
    shown.press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{5, 9}));
    // A motion of another kind makes another column.
    shown.press(Qt::Key_Left, Qt::ShiftModifier);
    shown.press(Qt::Key_Left, Qt::ShiftModifier);
    shown.press(Qt::Key_Left, Qt::ShiftModifier);
    shown.press(Qt::Key_Left, Qt::ShiftModifier);
    shown.press(Qt::Key_Up, Qt::ShiftModifier);
    shown.press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{1, 4}));
}

TEST(SeveralCursors, AltTypesNoLetter)
{
    ShownPane shown(u"one");
    QTest::keyClick(&shown.textView(), 'q', Qt::AltModifier);
    EXPECT_EQ(shown.text(), u"one");
    EXPECT_FALSE(shown.pane.lastActionWasTyping());
    // What AltGr makes of a key is text.
    QKeyEvent altGr(QEvent::KeyPress, Qt::Key_At, Qt::GroupSwitchModifier, QStringLiteral("@"));
    QCoreApplication::sendEvent(&shown.textView(), &altGr);
    EXPECT_EQ(shown.text(), u"@one");
}

TEST(SeveralCursors, OnlyThoseInSightBecomeRectangles)
{
    ShownPane shown(numberedLines(20000));
    std::vector<std::size_t> cursors;
    for (std::size_t at = 1; at < 150000; at += 3)
        cursors.push_back(at);
    shown.pane.storeCursors(std::move(cursors));
    const std::size_t drawn = shown.textView().decorations().cursors.size();
    EXPECT_GT(drawn, 20u);
    EXPECT_LT(drawn, 100u);
    shown.textView().setScrollOrigin({100000, 0});
    EXPECT_GT(shown.textView().decorations().cursors.size(), 20u);
    EXPECT_TRUE(shown.showsWhatIsThere());
    shown.type("x");
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(SeveralCursors, TheMarkerStandsOutOfItsRow)
{
    ShownPane shown(numberedLines(30));
    shown.click(18);
    const QRectF cursor = *shown.textView().cursorRectAt(18);
    shown.press(Qt::Key_F5);
    const QRectF marker = shown.textView().decorations().marker.value();
    EXPECT_EQ(marker.width(), 2);
    EXPECT_EQ(marker.center().x(), std::floor(cursor.left()) + 0.5);
    EXPECT_EQ(marker.top(), cursor.top() - 4);
    EXPECT_EQ(marker.bottom(), cursor.bottom() + 4);
    EXPECT_TRUE(shown.showsWhatIsThere());
    shown.textView().scrollBy(cursor.top() + 3);
    EXPECT_TRUE(shown.showsWhatIsThere());
    shown.textView().scrollBy(cursor.height());
    EXPECT_FALSE(shown.textView().decorations().marker.has_value());
    EXPECT_TRUE(shown.showsWhatIsThere());
    shown.textView().scrollBy(-cursor.height());
    EXPECT_TRUE(shown.showsWhatIsThere());
}

}  // namespace
}  // namespace tavrel
