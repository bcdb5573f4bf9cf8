#include "ViewTestSupport.h"

#include "editor/views/CompletionListView.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace tavrel {
namespace {

constexpr std::u16string_view threeWords = u"\n\nalpha alpha alpine album\n";

QStringList words(std::initializer_list<const char*> words)
{
    QStringList result;
    for (const char* word : words)
        result.append(QLatin1String(word));
    return result;
}

CompletionListView* listIn(QWidget& window)
{
    for (QObject* child : window.children()) {
        if (auto* list = dynamic_cast<CompletionListView*>(child))
            return list;
    }
    return nullptr;
}

/// A view in which "al" has been typed at the start, and the list has been asked for.
class ShownList : public ShownPane {
public:
    explicit ShownList(std::u16string_view text = threeWords, QSize size = QSize(720, 320))
        : ShownPane(text, size)
    {
        click(0);
        type("al");
        press(Qt::Key_Tab);
    }

    CompletionListView& list() { return *listIn(view); }
    bool isShown() { return textView().isShowingCompletions() && list().isVisible(); }
    std::u16string withRest(std::u16string_view start)
    {
        return std::u16string(start).append(threeWords);
    }
};

/// 30 words, of which each counts once more than the one before it.
std::u16string manyWords()
{
    std::u16string text = u"\n\n";
    for (char16_t i = 0; i < 30; ++i) {
        for (char16_t count = 0; count <= i; ++count)
            text += std::u16string(u"al") + char16_t(u'a' + i / 5) + char16_t(u'a' + i % 5) + u' ';
        text += u'\n';
    }
    return text;
}

TEST(CompletionListView, TabOffersTheWordsAndLeavesTheTextAlone)
{
    ShownList shown;
    ASSERT_TRUE(shown.isShown());
    EXPECT_EQ(shown.list().words(), words({"alpha", "album", "alpine"}));
    EXPECT_EQ(shown.list().chosenIndex(), 0);
    EXPECT_EQ(shown.text(), shown.withRest(u"al"));
    EXPECT_TRUE(shown.pane.lastActionWasTyping());
    EXPECT_TRUE(shown.textView().isFirstResponder());
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(CompletionListView, ReturnAndTabTakeTheChosenWordAsOneChange)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab}) {
        ShownList shown;
        shown.clock.advance(std::chrono::seconds(5));
        shown.press(Qt::Key_Down);
        shown.press(key);
        EXPECT_FALSE(shown.isShown());
        EXPECT_EQ(shown.text(), shown.withRest(u"album"));
        EXPECT_EQ(shown.pane.selectedRange(), (TextRange{5, 0}));
        EXPECT_FALSE(shown.pane.lastActionWasTyping());
        shown.press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(shown.text(), shown.withRest(u"al"));
    }
}

TEST(CompletionListView, EscapeClosesAndChangesNothing)
{
    ShownList shown;
    shown.press(Qt::Key_Escape);
    EXPECT_FALSE(shown.isShown());
    EXPECT_EQ(shown.text(), shown.withRest(u"al"));
    EXPECT_TRUE(shown.pane.lastActionWasTyping());
    shown.press(Qt::Key_Tab);
    EXPECT_TRUE(shown.isShown());
}

TEST(CompletionListView, TypingGoesOnAndNarrowsUntilNoWordIsLeft)
{
    ShownList shown;
    shown.type("p");
    EXPECT_EQ(shown.list().words(), words({"alpha", "alpine"}));
    shown.press(Qt::Key_Backspace);
    EXPECT_EQ(shown.list().words(), words({"alpha", "album", "alpine"}));
    shown.type("b");
    EXPECT_EQ(shown.list().words(), words({"album"}));
    shown.type("x");
    EXPECT_FALSE(shown.isShown());
    EXPECT_EQ(shown.text(), shown.withRest(u"albx"));
}

TEST(CompletionListView, AnotherCharacterClosesAndIsTyped)
{
    ShownList shown;
    shown.type("(");
    EXPECT_FALSE(shown.isShown());
    EXPECT_EQ(shown.text(), shown.withRest(u"al("));
}

TEST(CompletionListView, AnInputMethodTypesOn)
{
    ShownList shown;
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("b"));
    QCoreApplication::sendEvent(&shown.textView(), &event);
    EXPECT_EQ(shown.list().words(), words({"album"}));
    EXPECT_TRUE(shown.isShown());
}

TEST(CompletionListView, OtherChordsCloseAndDoWhatTheyDo)
{
    ShownList shown;
    shown.press(Qt::Key_Shift);
    EXPECT_TRUE(shown.isShown());
    shown.press(Qt::Key_Left);
    EXPECT_FALSE(shown.isShown());
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{1, 0}));

    ShownList undoing;
    undoing.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(undoing.isShown());
    EXPECT_EQ(undoing.text(), threeWords);
}

TEST(CompletionListView, KeysChooseAndScrollWithinTheList)
{
    ShownList shown(manyWords());
    ASSERT_TRUE(shown.isShown());
    const CompletionListView& list = shown.list();
    EXPECT_EQ(list.words().size(), 30);
    EXPECT_EQ(list.shownRowCount(), CompletionListView::maximumRows);
    shown.press(Qt::Key_Up);
    EXPECT_EQ(list.chosenIndex(), 0);
    shown.press(Qt::Key_PageDown);
    EXPECT_EQ(list.chosenIndex(), 10);
    EXPECT_EQ(list.firstShownIndex(), 1);
    shown.press(Qt::Key_End);
    shown.press(Qt::Key_Down);
    EXPECT_EQ(list.chosenIndex(), 29);
    EXPECT_EQ(list.firstShownIndex(), 20);
    shown.press(Qt::Key_PageUp);
    EXPECT_EQ(list.chosenIndex(), 19);
    EXPECT_EQ(list.firstShownIndex(), 19);
    shown.press(Qt::Key_Home);
    EXPECT_EQ(list.chosenIndex(), 0);
    EXPECT_EQ(list.firstShownIndex(), 0);
    EXPECT_EQ(shown.pane.selectedRange(), (TextRange{2, 0}));
    EXPECT_TRUE(shown.showsWhatIsThere());
}

TEST(CompletionListView, TheWheelScrollsAndAClickTakesAWord)
{
    ShownList shown(manyWords());
    CompletionListView& list = shown.list();
    const auto wheel = [&](int angle) {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), {}, {0, angle}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&list, &event);
    };
    wheel(-240);
    EXPECT_EQ(list.firstShownIndex(), 6);
    wheel(-12000);
    EXPECT_EQ(list.firstShownIndex(), 20);
    EXPECT_EQ(list.chosenIndex(), 0);
    const QString word = list.words()[22];
    QTest::mouseClick(&list, Qt::LeftButton, {}, list.rowRect(22).center());
    EXPECT_FALSE(shown.isShown());
    EXPECT_EQ(shown.pane.text().text({0, 4}), word.toStdU16String());
    EXPECT_TRUE(shown.textView().isFirstResponder());
}

TEST(CompletionListView, AnyClickElsewhereClosesIt)
{
    ShownList shown;
    QTest::mouseClick(&shown.view.lineNumberGutterView(), Qt::LeftButton);
    EXPECT_FALSE(shown.isShown());

    ShownList inText;
    inText.clickAt({300, 250});
    EXPECT_FALSE(inText.isShown());
    EXPECT_FALSE(inText.pane.lastActionWasTyping());

    ShownList withOtherButton;
    QTest::mousePress(&withOtherButton.textView(), Qt::RightButton, {}, {300, 250});
    EXPECT_FALSE(withOtherButton.isShown());
}

TEST(CompletionListView, LosingTheKeyboardClosesIt)
{
    ShownList shown;
    QLineEdit other(&shown.view);
    other.show();
    other.setFocus();
    EXPECT_FALSE(shown.isShown());
}

TEST(CompletionListView, ChangesFromElsewhereCloseIt)
{
    ShownList scrolled(std::u16string(threeWords) + numberedLines(100));
    ASSERT_TRUE(scrolled.isShown());
    scrolled.textView().scrollBy(5);
    EXPECT_FALSE(scrolled.isShown());
    EXPECT_TRUE(scrolled.showsWhatIsThere());

    ShownList moved;
    moved.pane.setSelectedRange({4, 0});
    EXPECT_FALSE(moved.isShown());
    ShownList resized;
    resized.view.resize(600, 300);
    resized.settle();
    EXPECT_FALSE(resized.isShown());
}

TEST(CompletionListView, LiesUnderTheWordOrOverItInsideTheWindow)
{
    ShownList below;
    const QRect under = below.list().geometry();
    const QRectF cursor = *below.textView().cursorRectAt(0);
    EXPECT_EQ(under.top(), below.textView().y() + static_cast<int>(cursor.bottom()));
    EXPECT_TRUE(below.view.rect().contains(under));
    EXPECT_EQ(below.list().window(), &below.view);

    ShownPane low(std::u16string(18, u'\n') + u"alpha alpine ");
    low.press(Qt::Key_End);
    low.type("al");
    low.press(Qt::Key_Tab);
    ASSERT_TRUE(low.textView().isShowingCompletions());
    const QRect over = listIn(low.view)->geometry();
    const QRectF at = *low.textView().cursorRectAt(low.pane.selectedRange().location);
    EXPECT_EQ(over.bottom() + 1, low.textView().y() + static_cast<int>(at.top()));
    EXPECT_TRUE(low.view.rect().contains(over));
}

TEST(CompletionListView, LongWordsAreElidedAndNarrowWindowsHoldIt)
{
    ShownList shown(u"\n\nal" + std::u16string(300, u'x') + u"\n", QSize(360, 200));
    ASSERT_TRUE(shown.isShown());
    EXPECT_EQ(shown.list().width(), shown.textView().width());
    EXPECT_TRUE(shown.view.rect().contains(shown.list().geometry()));
    ShownList wide(u"\n\nal" + std::u16string(300, u'x') + u"\n");
    EXPECT_LE(wide.list().width(), 420);
}

TEST(CompletionListView, TabIndentsWhereThereIsNoCandidateOrNothingWasTyped)
{
    ShownPane shown(u"\nalpha");
    shown.type("q");
    shown.press(Qt::Key_Tab);
    EXPECT_FALSE(shown.textView().isShowingCompletions());
    EXPECT_NE(shown.text(), u"q\nalpha");

    ShownPane moved(u"\nalpha");
    moved.type("al");
    moved.press(Qt::Key_Left);
    moved.press(Qt::Key_Right);
    moved.press(Qt::Key_Tab);
    EXPECT_FALSE(moved.textView().isShowingCompletions());
    EXPECT_NE(moved.text(), u"al\nalpha");
}

}  // namespace
}  // namespace tavrel
