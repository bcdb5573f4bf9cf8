#include "ViewTestSupport.h"

#include <gtest/gtest.h>

#include <random>

namespace tavrel {
namespace {

std::u16string mixedText()
{
    std::u16string text;
    for (int i = 0; i < 80; ++i) {
        text +=
            u"\tif (value != other) return lookup[index]; // and so on, until the row is full\n";
        text += i % 3 ? u"caf\u00E9 \u4E2D\u6587\u5B57 \u05D0\u05D1\u05D2 tail\n" : u"\n";
        text += i % 5 ? u"x\n" : std::u16string(300, u'w') + u" end\n";
    }
    return text;
}

// Whatever happens, drawing what changed must leave the same picture as drawing everything.
TEST(ViewRepaint, PartialDrawingEqualsDrawingAnew)
{
    ShownPane shown(mixedText(), QSize(520, 260));
    std::mt19937 random(31);
    const std::vector<std::function<void()>> actions{
        [&] { shown.type("a"); },
        [&] { shown.type(" "); },
        [&] { shown.press(Qt::Key_Return); },
        [&] { shown.press(Qt::Key_Backspace); },
        [&] { shown.press(Qt::Key_Down); },
        [&] { shown.press(Qt::Key_Right); },
        [&] { shown.press(Qt::Key_PageDown); },
        [&] { shown.press(Qt::Key_PageUp); },
        [&] { shown.press(Qt::Key_Down, Qt::ShiftModifier); },
        [&] { shown.press(Qt::Key_Right, Qt::ShiftModifier); },
        [&] { shown.press(Qt::Key_Z, Qt::ControlModifier); },
        [&] { shown.press(Qt::Key_Y, Qt::ControlModifier); },
        [&] { shown.textView().scrollBy(static_cast<double>(random() % 80) - 40); },
        [&] {
            shown.clickAt(
                QPoint(static_cast<int>(random() % 300), static_cast<int>(random() % 250)));
        },
        [&] {
            shown.clickAt(
                QPoint(static_cast<int>(random() % 300), static_cast<int>(random() % 250)),
                Qt::ControlModifier);
        },
        [&] { shown.pane.setMarker(shown.pane.selectedRange().location); },
        [&] {
            shown.pane.document().textStorage().replace({random() % 500, random() % 60}, u"new\n");
        },
    };
    for (int step = 0; step < 400; ++step) {
        const std::size_t action = random() % actions.size();
        actions[action]();
        if (random() % 3)
            continue;  // Several changes between two drawings.
        ASSERT_TRUE(shown.showsWhatIsThere()) << "step " << step << " action " << action;
    }
}

TEST(ViewRepaint, ATypedLetterDrawsItsRowAlone)
{
    ShownPane shown(numberedLines(100));
    shown.click(9);
    class PaintRecorder : public QObject {
    public:
        QRegion region;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                region += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
    } recorder;
    shown.textView().installEventFilter(&recorder);
    const QRectF before = *shown.textView().cursorRectAt(9);
    shown.type("a");
    EXPECT_LE(recorder.region.boundingRect().height(), before.height());
    EXPECT_EQ(recorder.region.boundingRect().top(), before.top());

    recorder.region = {};
    shown.press(Qt::Key_Right);
    EXPECT_LE(recorder.region.boundingRect().width(), 16);
    EXPECT_LE(recorder.region.boundingRect().height(), before.height());
}

TEST(ViewRepaint, CursorsAreDrawnTwoWideInTheirColour)
{
    ShownPane shown(u"one");
    shown.click(1);
    const QRect cursor = shown.textView().decorations().primary->toRect();
    EXPECT_EQ(cursor.width(), 2);
    EXPECT_EQ(cursor.height(), shown.textView().editorFont().rowHeight());
    const QImage picture = shown.textView().grab().toImage();
    for (int y = cursor.top(); y <= cursor.bottom(); ++y) {
        EXPECT_EQ(picture.pixel(cursor.left(), y), shown.textView().theme().cursor);
        EXPECT_EQ(picture.pixel(cursor.right(), y), shown.textView().theme().cursor);
    }
}

TEST(ViewRepaint, ASelectedTerminatorShowsAsAStub)
{
    ShownPane shown(u"ab\n\ncd");
    shown.pane.setSelectedRange({1, 4});
    const auto& rects = shown.textView().decorations().selection;
    const double advance = shown.textView().editorFont().advance();
    ASSERT_EQ(rects.size(), 4u);
    EXPECT_EQ(rects[0].width(), advance);
    EXPECT_EQ(rects[1].width(), advance / 2);
    EXPECT_EQ(rects[1].left(), rects[0].right());
    EXPECT_EQ(rects[2].width(), advance / 2);
    EXPECT_EQ(rects[3].width(), advance);
    EXPECT_FALSE(shown.textView().decorations().primary.has_value());
}

}  // namespace
}  // namespace tavrel
