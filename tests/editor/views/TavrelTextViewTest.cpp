#include "ViewTestSupport.h"

#include <QInputMethodEvent>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(TavrelTextView, TypingInsertsAtTheCursor)
{
    ShownPane shown;
    shown.type("hello");
    EXPECT_EQ(shown.text(), u"hello");
    EXPECT_TRUE(shown.pane.lastActionWasTyping());
    shown.press(Qt::Key_Return);
    shown.type("x ");
    EXPECT_FALSE(shown.pane.lastActionWasTyping());
    EXPECT_EQ(shown.text(), u"hello\nx ");
    shown.press(Qt::Key_Backspace);
    EXPECT_EQ(shown.text(), u"hello\nx");
    shown.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(shown.text(), u"hello\nx");
}

TEST(TavrelTextView, TheInterceptorComesBeforeTheKeyMap)
{
    ShownPane shown(u"one");
    int seen = 0;
    shown.textView().keyInterceptor = [&seen](const KeyEvent& event) {
        ++seen;
        return event.characters == u"q";
    };
    shown.type("qw");
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(shown.text(), u"wone");
}

TEST(TavrelTextView, MenuShortcutsComeBehindTheKeyMapAndBeforeText)
{
    ShownPane shown(u"one");
    std::vector<int> offered;
    shown.textView().menuShortcut = [&offered](const QKeyEvent& event) {
        offered.push_back(event.key());
        return event.key() == Qt::Key_S;
    };
    shown.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(offered.empty());
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{0, 3}));
    shown.press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(offered, (std::vector<int>{Qt::Key_S}));
    EXPECT_EQ(shown.text(), u"one");
}

TEST(TavrelTextView, ClaimsEveryKeyBeforeAShortcutCan)
{
    ShownPane shown(u"one");
    for (const Qt::Key key : {Qt::Key_Alt, Qt::Key_F10, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_S}) {
        QKeyEvent event(QEvent::ShortcutOverride, key, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&shown.textView(), &event);
        EXPECT_TRUE(event.isAccepted()) << key;
    }
}

TEST(TavrelTextView, TabAndBacktabKeepTheFocus)
{
    ShownPane shown(u"one");
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Alt, Qt::Key_F10}) {
        shown.press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        EXPECT_TRUE(shown.textView().isFirstResponder()) << key;
    }
}

TEST(TavrelTextView, AClickPutsTheCursorAtTheNearerEdge)
{
    ShownPane shown(u"abc\ndef");
    const double advance = shown.textView().editorFont().advance();
    const QRectF first = *shown.textView().cursorRectAt(0);
    const QPoint leftHalf = QPointF(first.left() + advance * 1.25, first.center().y()).toPoint();
    const QPoint rightHalf = QPointF(first.left() + advance * 1.75, first.center().y()).toPoint();
    shown.clickAt(leftHalf);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{1, 0}));
    shown.clickAt(rightHalf);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{2, 0}));
    // On the right half of the line's last character, and far behind it.
    shown.clickAt(QPointF(first.left() + advance * 2.75, first.center().y()).toPoint());
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{3, 0}));
    shown.clickAt(QPointF(first.left() + advance * 30, first.center().y()).toPoint());
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{3, 0}));
}

TEST(TavrelTextView, AClickBelowTheLastLineGoesToTheEnd)
{
    for (const std::u16string_view text : {u"abc\ndef", u"abc\ndef\n"}) {
        ShownPane shown(text);
        shown.clickAt({10, shown.textView().height() - 5});
        EXPECT_EQ(shown.pane.selectedRange(), (TextRange{text.size(), 0}));
    }
    ShownPane empty;
    empty.clickAt({100, 100});
    EXPECT_EQ(empty.pane.selectedRange(), (TextRange{0, 0}));
}

TEST(TavrelTextView, ClicksSelectWordsAndLines)
{
    ShownPane shown(u"one two three\nnext");
    QTest::lastMouseTimestamp += 2000;
    const QPoint point = shown.pointAt(5);
    QTest::mouseClick(&shown.textView(), Qt::LeftButton, {}, point);
    QTest::mouseDClick(&shown.textView(), Qt::LeftButton, {}, point);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{4, 3}));
    QTest::mousePress(&shown.textView(), Qt::LeftButton, {}, point);
    QTest::mouseRelease(&shown.textView(), Qt::LeftButton, {}, point);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{0, 14}));
}

TEST(TavrelTextView, ShiftClickAndDragExtend)
{
    ShownPane shown(u"one two three\nnext");
    shown.click(4);
    shown.click(10, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{4, 6}));
    shown.click(1, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{1, 3}));

    shown.click(15);
    QTest::lastMouseTimestamp += 2000;
    QTest::mousePress(&shown.textView(), Qt::LeftButton, {}, shown.pointAt(2));
    QTest::mouseMove(&shown.textView(), shown.pointAt(9));
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{2, 7}));
    QTest::mouseMove(&shown.textView(), shown.pointAt(0));
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{0, 2}));
    QTest::mouseRelease(&shown.textView(), Qt::LeftButton, {}, shown.pointAt(0));
}

TEST(TavrelTextView, CommandClickTogglesACursorAndAPlainClickDropsAll)
{
    ShownPane shown(u"one two three");
    shown.click(0);
    shown.click(4, Qt::ControlModifier);
    EXPECT_EQ(shown.pane.allCursorLocations().size(), 2u);
    EXPECT_EQ(shown.textView().decorations().cursors.size(), 2u);
    const auto before = shown.pane.allCursorLocations();
    shown.click(shown.pane.selectedRange().location, Qt::ControlModifier);
    EXPECT_EQ(shown.pane.allCursorLocations(), before);
    shown.click(8);
    EXPECT_FALSE(shown.pane.hasSecondaryCursors());
    EXPECT_FALSE(shown.pane.lastActionWasTyping());
}

TEST(TavrelTextView, ShiftWithArrowsSelects)
{
    ShownPane shown(u"one two\nthree");
    shown.click(4);
    shown.press(Qt::Key_Right, Qt::ShiftModifier);
    shown.press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{4, 2}));
    shown.press(Qt::Key_Left, Qt::ShiftModifier);
    shown.press(Qt::Key_Left, Qt::ShiftModifier);
    shown.press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{3, 1}));
    shown.click(1);
    shown.press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{1, 8}));
    shown.press(Qt::Key_Delete);
    EXPECT_EQ(shown.text(), u"ohree");
    shown.press(Qt::Key_Delete);
    EXPECT_EQ(shown.text(), u"oree");
}

TEST(TavrelTextView, InputMethodsShowAPreeditAndCommit)
{
    ShownPane shown(u"one");
    const QImage plain = shown.freshPicture();
    QInputMethodEvent composing(QString::fromUtf16(u"\u306B"), {});
    QCoreApplication::sendEvent(&shown.textView(), &composing);
    EXPECT_EQ(shown.text(), u"one");
    EXPECT_NE(shown.freshPicture(), plain);
    QInputMethodEvent done;
    done.setCommitString(QString::fromUtf16(u"\u65E5\u672C"));
    QCoreApplication::sendEvent(&shown.textView(), &done);
    EXPECT_EQ(shown.text(), u"\u65E5\u672Cone");
    QInputMethodEvent replacing;
    replacing.setCommitString(QStringLiteral("x"), -1, 1);
    QCoreApplication::sendEvent(&shown.textView(), &replacing);
    EXPECT_EQ(shown.text(), u"\u65E5xone");
    EXPECT_TRUE(shown.showsWhatIsThere());
}

// The part of a picture right of `x`, in the row at the top.
QImage rowFrom(ShownPane& shown, double x, double width)
{
    const TavrelTextView& view = shown.textView();
    return shown.textView().grab().toImage().copy(
        QRectF(x, 0, width, view.editorFont().rowHeight()).toRect());
}

TEST(TavrelTextView, ComposedTextMakesRoomForItselfInItsRow)
{
    for (const char16_t* script : {u"abc", u"\u306B\u307B", u"\u0634\u0645", u"\u05D0\u05D1"}) {
        ShownPane shown(u"one two");
        shown.pane.setSelectedRange({4, 0});
        const QRectF cursor = *shown.textView().cursorRectAt(4);
        const double rest = 3 * shown.textView().editorFont().advance();
        const QImage before = rowFrom(shown, cursor.left() + 2, rest - 2);
        QInputMethodEvent composing(QString::fromUtf16(script), {});
        QCoreApplication::sendEvent(&shown.textView(), &composing);
        const QRectF end = shown.textView().inputMethodQuery(Qt::ImCursorRectangle).toRectF();
        EXPECT_GT(std::abs(end.left() - cursor.left()) + shown.textView().preedit().width(), 4);
        const double width = shown.textView().preedit().width();
        ASSERT_EQ(width, std::floor(width));  // In this font; else the pictures cannot be compared.
        EXPECT_EQ(rowFrom(shown, cursor.left() + width + 2, rest - 2), before);
        EXPECT_EQ(shown.text(), u"one two");
        QInputMethodEvent done;
        QCoreApplication::sendEvent(&shown.textView(), &done);
        EXPECT_EQ(shown.textView().inputMethodQuery(Qt::ImCursorRectangle).toRectF(), cursor);
        EXPECT_TRUE(shown.showsWhatIsThere());
    }
}

TEST(TavrelTextView, TheEndOfComposedTextStaysInSight)
{
    ShownPane shown(std::u16string(60, u'w'));
    shown.pane.setSelectedRange({60, 0});
    QInputMethodEvent composing(QString(70, QLatin1Char('m')), {});
    QCoreApplication::sendEvent(&shown.textView(), &composing);
    const QRectF end = shown.textView().inputMethodQuery(Qt::ImCursorRectangle).toRectF();
    EXPECT_LE(end.right(), shown.textView().width());
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(TavrelTextView, TheInputMethodSaysWhereItsCursorStands)
{
    ShownPane shown(u"");
    QList<QInputMethodEvent::Attribute> attributes{{QInputMethodEvent::Cursor, 1, 1, {}}};
    QInputMethodEvent composing(QStringLiteral("abc"), attributes);
    QCoreApplication::sendEvent(&shown.textView(), &composing);
    EXPECT_NEAR(shown.textView().preedit().cursorX(), shown.textView().editorFont().advance(), 0.5);
}

TEST(TavrelTextView, AnotherTabEndsWhatIsComposed)
{
    ShownPane shown(u"one");
    QInputMethodEvent composing(QStringLiteral("abc"), {});
    QCoreApplication::sendEvent(&shown.textView(), &composing);
    shown.pane.showDocument(std::make_shared<EditorDocument>(std::nullopt, TextSnapshot(u"two")));
    EXPECT_TRUE(shown.textView().preedit().isEmpty());
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(TavrelTextView, WhatHasNoFormOfItsOwnIsDrawnAndTakesTheCursor)
{
    for (const char16_t unit : {u'\x01', u'\x1B', u'\x7F', u'\x80', u'\u00AD', u'\u200B', u'\u202E',
                                u'\u2066', u'\uFEFF', u'\u200D'}) {
        ShownPane shown(std::u16string(u"ab") + unit + u"cd");
        const double before = shown.textView().cursorRectAt(2)->left();
        const double behind = shown.textView().cursorRectAt(3)->left();
        EXPECT_GE(behind - before, 4) << static_cast<unsigned>(unit);
        shown.click(2);
        EXPECT_EQ(shown.pane.selectedRange().location, 2u);
        shown.press(Qt::Key_Right);
        EXPECT_EQ(shown.pane.selectedRange().location, 3u);
        const QImage picture = rowFrom(shown, before + 2, behind - before - 2);
        bool isDrawn = false;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                isDrawn = isDrawn || picture.pixel(x, y) != shown.textView().theme().background;
        }
        EXPECT_TRUE(isDrawn) << static_cast<unsigned>(unit);
    }
}

TEST(TavrelTextView, WhatWouldRearrangeTheTextDoesNot)
{
    // Letters stand where they stand in the text, so nothing is hidden from whoever reads it.
    ShownPane shown(u"a\u202Ebcd");
    for (std::size_t i = 1; i <= 5; ++i)
        EXPECT_GT(shown.textView().cursorRectAt(i)->left(),
                  shown.textView().cursorRectAt(i - 1)->left());
}

TEST(TavrelTextView, JoinersWorkWhereTheyAreNeeded)
{
    ShownPane shown(u"\u0645\u06CC\u200C\u062E");
    ShownPane without(u"\u0645\u06CC\u25C6\u062E");
    EXPECT_NE(shown.textView().grab().toImage(), without.textView().grab().toImage());
}

TEST(TavrelTextView, InputMethodsSeeOnlyTheTextAroundTheCursor)
{
    ShownPane shown(std::u16string(100000, u'a'));
    shown.pane.setSelectedRange({50000, 10});
    const TavrelTextView& view = shown.textView();
    EXPECT_EQ(view.inputMethodQuery(Qt::ImSurroundingText).toString().size(), 2058);
    EXPECT_EQ(view.inputMethodQuery(Qt::ImCursorPosition).toInt(), 1024);
    EXPECT_EQ(view.inputMethodQuery(Qt::ImCurrentSelection).toString().size(), 10);
    EXPECT_TRUE(view.inputMethodQuery(Qt::ImEnabled).toBool());
    EXPECT_EQ(view.inputMethodQuery(Qt::ImCursorRectangle).toRectF(),
              view.cursorRectAt(50000).value_or(QRectF()));
}

TEST(TavrelTextView, WheelScrollsByRowsAndPixels)
{
    ShownPane shown(numberedLines(500));
    const auto wheel = [&shown](QPoint pixels, QPoint angle) {
        QWheelEvent event(QPointF(20, 20), QPointF(20, 20), pixels, angle, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&shown.textView(), &event);
    };
    wheel({}, {0, -120});
    EXPECT_EQ(shown.textView().scrollOrigin(), (ScrollOrigin{21, 0}));
    wheel({0, -5}, {0, -40});
    EXPECT_EQ(shown.textView().scrollOrigin(), (ScrollOrigin{21, 5}));
    EXPECT_TRUE(shown.showsWhatIsThere());
    wheel({0, 1000}, {});
    EXPECT_EQ(shown.textView().scrollOrigin(), (ScrollOrigin{0, 0}));
}

TEST(TavrelTextView, ResizingKeepsTheFirstRow)
{
    ShownPane shown(numberedLines(500));
    shown.textView().setScrollOrigin({1000, 0});
    const std::size_t first = shown.textView().scrollOrigin().location;
    EXPECT_EQ(shown.pane.text().unitAt(first - 1), u'\n');
    shown.view.resize(300, 200);
    shown.settle();
    EXPECT_EQ(shown.textView().scrollOrigin().location, first);
    shown.view.resize(900, 400);
    EXPECT_EQ(shown.textView().scrollOrigin().location, first);
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(TavrelTextView, RowsAreAsWideAsColumnWidth)
{
    ShownPane shown(std::u16string(1000, u'x'), QSize(2000, 300));
    EXPECT_EQ(shown.textView().visibleRows()[0].row.range(), (TextRange{0, 80}));
    shown.textView().setColumnWidth(100);
    EXPECT_EQ(shown.textView().visibleRows()[0].row.range(), (TextRange{0, 100}));
    EXPECT_EQ(shown.view.preferredWidth(),
              static_cast<int>(5 + 100 * shown.textView().editorFont().advance() + 52 + 14));
}

TEST(TavrelTextView, PagingShowsTheCursor)
{
    ShownPane shown(numberedLines(500));
    for (int i = 0; i < 5; ++i)
        shown.press(Qt::Key_PageDown);
    EXPECT_TRUE(shown.textView().decorations().primary.has_value());
    EXPECT_GT(shown.textView().scrollOrigin().location, 300u);
    EXPECT_TRUE(shown.showsWhatIsThere());
    shown.press(Qt::Key_End);
    EXPECT_EQ(shown.textView().visibleRows().back().row.start(), shown.pane.text().length());
    shown.press(Qt::Key_Home);
    EXPECT_EQ(shown.textView().scrollOrigin(), (ScrollOrigin{}));
}

}  // namespace
}  // namespace tavrel
