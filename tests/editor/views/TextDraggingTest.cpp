#include "ViewTestSupport.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

#include <gtest/gtest.h>

namespace tavrel {
namespace {

// Drops as another program does.
bool drop(ShownPane& shown, const QMimeData& data, std::size_t location)
{
    const QPoint point = shown.pointAt(location) - QPoint(3, 0);
    QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(&shown.textView(), &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent event(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&shown.textView(), &event);
    return event.isAccepted();
}

TEST(TextDragging, TextOfAnotherProgramIsInsertedAndSelected)
{
    ShownPane shown(u"one two");
    QMimeData data;
    data.setText(QStringLiteral("new "));
    EXPECT_TRUE(drop(shown, data, 4));
    EXPECT_EQ(shown.text(), u"one new two");
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{4, 4}));
    shown.pane.undo();
    EXPECT_EQ(shown.text(), u"one two");
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{0, 0}));
}

TEST(TextDragging, FilesAreLeftToTheWindow)
{
    ShownPane shown(u"one two");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/etc/hosts"))});
    data.setText(QStringLiteral("/etc/hosts"));
    EXPECT_FALSE(drop(shown, data, 4));
    EXPECT_EQ(shown.text(), u"one two");
}

TEST(TextDragging, AnAddressIsText)
{
    ShownPane shown(u"one two");
    QMimeData data;
    data.setUrls({QUrl(QStringLiteral("https://example.org/"))});
    data.setText(QStringLiteral("https://example.org/"));
    EXPECT_TRUE(drop(shown, data, 0));
    EXPECT_EQ(shown.text(), u"https://example.org/one two");
}

TEST(TextDragging, ThePlaceOfTheDropShowsWhileItIsSought)
{
    ShownPane shown(u"one two");
    QMimeData data;
    data.setText(QStringLiteral("x"));
    const QPoint point = shown.pointAt(4) - QPoint(3, 0);
    QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&shown.textView(), &enter);
    EXPECT_EQ(shown.textView().decorations().primary, shown.textView().cursorRectAt(4));
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&shown.textView(), &leave);
    EXPECT_EQ(shown.textView().decorations().primary, shown.textView().cursorRectAt(0));
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(TextDragging, APressInsideTheSelectionWaits)
{
    ShownPane shown(u"one two three");
    shown.pane.setSelectedRange({4, 3});
    QTest::mousePress(&shown.textView(), Qt::LeftButton, {}, shown.pointAt(5));
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{4, 3}));
    QTest::mouseRelease(&shown.textView(), Qt::LeftButton, {}, shown.pointAt(5));
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{5, 0}));
}

TEST(TextDragging, APressBesideTheSelectionDoesNot)
{
    ShownPane shown(u"one two three");
    shown.pane.setSelectedRange({4, 3});
    QTest::mousePress(&shown.textView(), Qt::LeftButton, {}, shown.pointAt(9));
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{9, 0}));
    QTest::mouseRelease(&shown.textView(), Qt::LeftButton, {}, shown.pointAt(9));
}

}  // namespace
}  // namespace tavrel
