#include "ViewTestSupport.h"

#include "editor/views/EditorAccessibility.h"

#include <QAccessible>

#include <gtest/gtest.h>

#include <vector>

namespace tavrel {
namespace {

struct Stretch {
    QString text;
    int start;
    int end;
    bool operator==(const Stretch&) const = default;
};

class EditorAccessibility : public testing::Test {
protected:
    QAccessibleInterface& interface()
    {
        return *QAccessible::queryAccessibleInterface(&shown.textView());
    }
    QAccessibleTextInterface& text() { return *interface().textInterface(); }
    Stretch at(int offset, QAccessible::TextBoundaryType boundary)
    {
        Stretch found{{}, 0, 0};
        found.text = text().textAtOffset(offset, boundary, &found.start, &found.end);
        return found;
    }
    Stretch before(int offset, QAccessible::TextBoundaryType boundary)
    {
        Stretch found{{}, 0, 0};
        found.text = text().textBeforeOffset(offset, boundary, &found.start, &found.end);
        return found;
    }
    Stretch after(int offset, QAccessible::TextBoundaryType boundary)
    {
        Stretch found{{}, 0, 0};
        found.text = text().textAfterOffset(offset, boundary, &found.start, &found.end);
        return found;
    }

    ShownPane shown{u"one two\nthree\n"};
};

TEST_F(EditorAccessibility, TheTextViewIsAnEditableText)
{
    EXPECT_EQ(interface().role(), QAccessible::EditableText);
    EXPECT_TRUE(interface().state().editable);
    EXPECT_TRUE(interface().state().multiLine);
    EXPECT_TRUE(interface().state().focused);
    EXPECT_TRUE(interface().editableTextInterface());
    EXPECT_EQ(text().characterCount(), 14);
    EXPECT_EQ(text().text(4, 7), QStringLiteral("two"));
    EXPECT_EQ(text().text(-5, 1'000'000'000), QStringLiteral("one two\nthree\n"));
}

TEST_F(EditorAccessibility, SelectionAndCursorAreThoseOfThePane)
{
    EXPECT_EQ(text().selectionCount(), 0);
    shown.pane.setSelectedRange({4, 3});
    int start = 0;
    int end = 0;
    text().selection(0, &start, &end);
    EXPECT_EQ(text().selectionCount(), 1);
    EXPECT_EQ(start, 4);
    EXPECT_EQ(end, 7);
    EXPECT_EQ(text().cursorPosition(), 7);
    text().setSelection(0, 0, 3);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{0, 3}));
    text().removeSelection(0);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{3, 0}));
    text().setCursorPosition(99);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{14, 0}));
}

TEST_F(EditorAccessibility, WordsRowsAndLinesHaveTheirEnds)
{
    EXPECT_EQ(at(5, QAccessible::CharBoundary), (Stretch{QStringLiteral("w"), 5, 6}));
    EXPECT_EQ(at(5, QAccessible::WordBoundary), (Stretch{QStringLiteral("two"), 4, 7}));
    EXPECT_EQ(at(5, QAccessible::LineBoundary), (Stretch{QStringLiteral("one two\n"), 0, 8}));
    EXPECT_EQ(at(9, QAccessible::ParagraphBoundary), (Stretch{QStringLiteral("three\n"), 8, 14}));
    EXPECT_EQ(at(14, QAccessible::LineBoundary), (Stretch{QString(), 14, 14}));
    EXPECT_EQ(before(9, QAccessible::LineBoundary), (Stretch{QStringLiteral("one two\n"), 0, 8}));
    EXPECT_EQ(before(3, QAccessible::LineBoundary), (Stretch{QString(), -1, -1}));
    EXPECT_EQ(after(0, QAccessible::WordBoundary), (Stretch{QStringLiteral(" "), 3, 4}));
    EXPECT_EQ(at(3, QAccessible::NoBoundary).text.size(), 14);
}

TEST_F(EditorAccessibility, APairOfSurrogatesIsOneCharacter)
{
    shown.setText(u"a\U0001F600b");
    EXPECT_EQ(at(1, QAccessible::CharBoundary), (Stretch{QStringLiteral("\U0001F600"), 1, 3}));
    EXPECT_EQ(at(2, QAccessible::CharBoundary).end, 3);
}

TEST_F(EditorAccessibility, AWrappedLineIsReadRowByRow)
{
    shown.setText(std::u16string(300, u'x'));
    const Stretch row = at(100, QAccessible::LineBoundary);
    EXPECT_GT(row.start, 0);
    EXPECT_LT(row.end, 300);
}

TEST_F(EditorAccessibility, CharactersHaveTheirPlacesOnTheScreen)
{
    const QRect first = text().characterRect(0);
    const QRect second = text().characterRect(1);
    EXPECT_EQ(first.top(), second.top());
    EXPECT_EQ(first.right() + 1, second.left());
    EXPECT_EQ(text().offsetAtPoint(second.center() - QPoint(2, 0)), 1);
    EXPECT_GT(text().characterRect(8).top(), first.top());
    EXPECT_TRUE(text().characterRect(14).isValid());
    EXPECT_EQ(text().offsetAtPoint(QPoint(-5000, 0)), -1);
    shown.setText(numberedLines(500));
    EXPECT_FALSE(text().characterRect(static_cast<int>(shown.text().size())).isValid());
    text().scrollToSubstring(static_cast<int>(shown.text().size()) - 2,
                             static_cast<int>(shown.text().size()));
    EXPECT_TRUE(text().characterRect(static_cast<int>(shown.text().size()) - 1).isValid());
}

TEST_F(EditorAccessibility, EditsAreEditsOfThePane)
{
    QAccessibleEditableTextInterface& editable = *interface().editableTextInterface();
    editable.replaceText(0, 3, QStringLiteral("two"));
    editable.insertText(3, QStringLiteral("!"));
    editable.deleteText(8, 9);
    EXPECT_EQ(shown.text(), u"two! twothree\n");
    EXPECT_TRUE(shown.pane.document().isModified);
    shown.pane.undo();
    EXPECT_NE(shown.text(), u"two! twothree\n");
}

// Keeps what is told of the next changes of a text.
class Announcements final : public TextStorageObserver {
public:
    explicit Announcements(TextStorage& storage) : storage_(storage), before_(storage.snapshot())
    {
        storage_.addObserver(this);
    }
    ~Announcements() override { storage_.removeObserver(this); }
    void storageDidChange(const TextStorage& storage, std::span<const TextChange> changes) override
    {
        told = textAnnouncements(before_, storage.snapshot(), changes);
        before_ = storage.snapshot();
    }

    std::vector<TextAnnouncement> told;

private:
    TextStorage& storage_;
    TextSnapshot before_;
};

TEST_F(EditorAccessibility, ChangesAreTold)
{
    Announcements announcements(shown.pane.document().textStorage());
    using List = std::vector<TextAnnouncement>;
    shown.click(3);
    shown.type("x");
    EXPECT_EQ(announcements.told, (List{{3, {}, QStringLiteral("x")}}));
    shown.press(Qt::Key_Backspace);
    EXPECT_EQ(announcements.told, (List{{3, QStringLiteral("x"), {}}}));
    shown.click(8, Qt::ControlModifier);
    shown.type("yy");
    EXPECT_EQ(announcements.told,
              (List{{4, {}, QStringLiteral("y")}, {11, {}, QStringLiteral("y")}}));
    shown.pane.replaceText({0, 0}, TextSnapshot(std::u16string(100000, u'y')));
    ASSERT_EQ(announcements.told.size(), 1u);
    EXPECT_EQ(announcements.told[0].inserted.size(), 4096);
}

TEST_F(EditorAccessibility, TabsAndTheScrollBarHaveNamesAndRoles)
{
    shown.pane.showDocument(std::make_shared<EditorDocument>(
        std::filesystem::path("/nowhere/a.txt"), TextSnapshot(u"text")));
    EditorTabScrollView& bar = shown.view.tabScrollView();
    const auto roleAndName = [](QWidget& widget) {
        QAccessibleInterface& found = *QAccessible::queryAccessibleInterface(&widget);
        return std::pair(found.role(), found.text(QAccessible::Name));
    };
    EXPECT_EQ(roleAndName(bar), std::pair(QAccessible::PageTabList, QStringLiteral("Tabs")));
    EXPECT_EQ(roleAndName(bar.tabView(1)),
              std::pair(QAccessible::PageTab, QStringLiteral("a.txt")));
    EXPECT_EQ(roleAndName(bar.tabView(1).closeMark()),
              std::pair(QAccessible::Button, QStringLiteral("Close a.txt")));
    EXPECT_EQ(roleAndName(shown.view.scrollBar()),
              std::pair(QAccessible::ScrollBar, QStringLiteral("Scroll bar")));
    EXPECT_EQ(roleAndName(shown.textView()),
              std::pair(QAccessible::EditableText, QStringLiteral("a.txt")));
    QAccessibleInterface& tab = *QAccessible::queryAccessibleInterface(&bar.tabView(0));
    EXPECT_FALSE(tab.state().selected);
    tab.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(tab.state().selected);
}

}  // namespace
}  // namespace tavrel
