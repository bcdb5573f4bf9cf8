#pragma once

#include "editor/dispatch/DefaultKeyMap.h"
#include "editor/views/CodeEditorView.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/PosixFileSystem.h"

#include <QApplication>
#include <QImage>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace tavrel {

/// A pane with the default key map, shown in a window of its own that has the focus.
class ShownPane {
public:
    explicit ShownPane(std::u16string_view text = {}, QSize size = QSize(720, 320))
        : pane({clock, mainQueue, fileSystem, pasteboard, calendar}), view(pane)
    {
        pane.commandDispatcher().load(defaultKeyMapEntries());
        view.resize(size);
        view.show();
        view.setFocus();
        QApplication::setActiveWindow(&view);
        if (!text.empty())
            setText(text);
        settle();
    }

    void setText(std::u16string_view text)
    {
        pane.document().textStorage().replace({0, pane.text().length()}, text);
        pane.setSelectedRange({0, 0});
        view.setScrollOrigin({});
        settle();
    }

    void setLineDiff(std::optional<GitLineDiff> diff)
    {
        pane.document().gitLineDiff = std::move(diff);
        pane.document().postDidChangeGitLineDiff();
        settle();
    }

    /// Lets the window draw what is waiting to be drawn.
    void settle() { QCoreApplication::processEvents(); }

    TavrelTextView& textView() { return view.textView(); }
    std::u16string text() const { return pane.text().text(); }

    /// The middle of the character at `location`, which must be in sight.
    QPoint pointAt(std::size_t location)
    {
        const QRectF cursor = textView().cursorRectAt(location).value_or(QRectF());
        return QPointF(cursor.left() + 3, cursor.center().y()).toPoint();
    }

    void click(std::size_t location, Qt::KeyboardModifiers modifiers = {})
    {
        clickAt(pointAt(location), modifiers);
    }
    void clickAt(QPoint point, Qt::KeyboardModifiers modifiers = {})
    {
        // Far enough apart that two clicks are never taken for a double one.
        QTest::lastMouseTimestamp += 2000;
        QTest::mouseClick(&textView(), Qt::LeftButton, modifiers, point);
        settle();
    }
    void type(const char* text)
    {
        QTest::keyClicks(&textView(), QLatin1String(text));
        settle();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&textView(), key, modifiers);
        settle();
    }

    /// What is on the screen: the sum of all partial drawings so far.
    QImage shownPicture()
    {
        settle();
        QCoreApplication::sendPostedEvents();  // What a timer has asked to be drawn.
        return view.screen()
            ->grabWindow(view.winId())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }
    /// The same drawn anew.
    QImage freshPicture() { return view.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    /// Whether the screen shows what drawing everything anew would; tells where it does not.
    testing::AssertionResult showsWhatIsThere()
    {
        QImage shown = shownPicture();
        QImage fresh = freshPicture();
        if (shown != fresh) {
            // A timer may have come between the two. What nobody asked to be drawn stays missing.
            shown = shownPicture();
            fresh = freshPicture();
        }
        if (shown == fresh)
            return testing::AssertionSuccess();
        QRect different;
        for (int y = 0; y < std::min(shown.height(), fresh.height()); ++y) {
            for (int x = 0; x < std::min(shown.width(), fresh.width()); ++x) {
                if (shown.pixel(x, y) != fresh.pixel(x, y))
                    different |= QRect(x, y, 1, 1);
            }
        }
        return testing::AssertionFailure()
               << "the pictures differ from " << different.left() << "," << different.top()
               << " to " << different.right() << "," << different.bottom();
    }

    SimulatedClock clock;
    ManualMainQueue mainQueue{clock};
    PosixFileSystem fileSystem;
    MemoryPasteboard pasteboard;
    FixedCalendar calendar;
    EditorPane pane;
    CodeEditorView view;
};

/// `count` lines, "line 1" and so on.
inline std::u16string numberedLines(std::size_t count)
{
    std::u16string text;
    for (std::size_t i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        text += u"line ";
        text.append(number.begin(), number.end());
        text += u'\n';
    }
    return text;
}

}  // namespace tavrel
