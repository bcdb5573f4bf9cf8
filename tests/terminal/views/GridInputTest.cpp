#include "ShownGrid.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QShortcut>

#include <set>

namespace tavrel {
namespace {

TEST(GridInput, LettersGoToTheShell)
{
    ShownGrid grid;
    QTest::keyClicks(&grid.view, QStringLiteral("ls "));
    QKeyEvent accented(QEvent::KeyPress, Qt::Key_Eacute, {}, QStringLiteral("é"));
    QApplication::sendEvent(&grid.view, &accented);
    EXPECT_EQ(grid.input, "ls \xC3\xA9");
}

TEST(GridInput, NamedKeysSendTheirSequences)
{
    ShownGrid grid;
    grid.press(Qt::Key_Return);
    grid.press(Qt::Key_Tab);
    grid.press(Qt::Key_Backtab, Qt::ShiftModifier);
    grid.press(Qt::Key_Backspace);
    grid.press(Qt::Key_Escape);
    grid.press(Qt::Key_Up);
    EXPECT_EQ(grid.input, "\r\t\t\x7F\x1B\x1B[A");
}

TEST(GridInput, TheArrowsFollowTheModeOfTheProgram)
{
    ShownGrid grid;
    grid.feed("\x1b[?1h");
    grid.press(Qt::Key_Up);
    grid.press(Qt::Key_Home);
    EXPECT_EQ(grid.input, "\x1BOA\x1B[H");
}

TEST(GridInput, CtrlAndALetterIsAControlByteBeforeAnyShortcut)
{
    ShownGrid grid;
    int fired = 0;
    for (const char* key : {"Ctrl+C", "Ctrl+S", "Ctrl+Q", "Ctrl+W", "F10", "Tab"}) {
        auto* shortcut = new QShortcut(QKeySequence(QLatin1String(key)), &grid.view);
        QObject::connect(shortcut, &QShortcut::activated, [&] { ++fired; });
        QObject::connect(shortcut, &QShortcut::activatedAmbiguously, [&] { ++fired; });
    }
    grid.press(Qt::Key_C, Qt::ControlModifier);
    grid.press(Qt::Key_S, Qt::ControlModifier);
    grid.press(Qt::Key_Q, Qt::ControlModifier);
    grid.press(Qt::Key_W, Qt::ControlModifier);
    grid.press(Qt::Key_F10);
    grid.press(Qt::Key_Tab);
    EXPECT_EQ(grid.input, "\x03\x13\x11\x17\t");
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(grid.view.hasFocus());
}

TEST(GridInput, ALoneModifierSendsNothingAndIsNoCommand)
{
    ShownGrid grid;
    int asked = 0;
    grid.view.keyCommandHandler = [&](const KeyEvent&) { return ++asked > 0; };
    grid.press(Qt::Key_Alt);
    grid.press(Qt::Key_Control);
    grid.press(Qt::Key_Shift);
    EXPECT_EQ(grid.input, "");
    EXPECT_EQ(asked, 0);
}

TEST(GridInput, ACommandOfTheKeyMapEndsTheMatter)
{
    ShownGrid grid;
    grid.view.keyCommandHandler = [](const KeyEvent& event) { return event.keyCode == 18; };
    int menu = 0;
    grid.view.menuShortcut = [&](const KeyEvent&) { return ++menu > 0; };
    grid.press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(grid.input, "");
    EXPECT_EQ(menu, 0);
}

TEST(GridInput, CtrlShiftOffersTheCommandToTheMenus)
{
    ShownGrid grid;
    const std::set<std::string, std::less<>> bound = {"cmd+c", "cmd+v"};
    grid.view.isBoundChord = [&](std::string_view chord) { return bound.contains(chord); };
    std::vector<KeyEvent> offered;
    grid.view.menuShortcut = [&](const KeyEvent& event) {
        offered.push_back(event);
        return true;
    };
    grid.press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(grid.input, "");
    ASSERT_EQ(offered.size(), 1u);
    EXPECT_EQ(offered[0].keyCode, 8);
    EXPECT_EQ(offered[0].modifierFlags, commandModifier);
}

TEST(GridInput, WithACommandKeyOfItsOwnCtrlIsControl)
{
    TerminalAppearance appearance;
    appearance.commandKey = CommandKey::super;
    ShownGrid grid(40, 8, appearance);
    int offered = 0;
    grid.view.menuShortcut = [&](const KeyEvent&) { return ++offered > 0; };
    grid.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(grid.input, "\x03");
    grid.press(Qt::Key_V, Qt::MetaModifier);
    EXPECT_EQ(grid.input, "\x03");
    EXPECT_EQ(offered, 1);
}

TEST(GridInput, TypingClearsTheSelection)
{
    ShownGrid grid;
    grid.feed("hello");
    grid.view.setSelection(GridSelection{{0, 0}, {0, 3}});
    grid.press(Qt::Key_A);
    EXPECT_EQ(grid.view.selection(), std::nullopt);
}

TEST(GridInput, PastingSendsTheTextAndKeepsTheSelection)
{
    ShownGrid grid;
    grid.feed("hello");
    grid.view.setSelection(GridSelection{{0, 0}, {0, 3}});
    grid.pasteboard.setContents({u"a\r\nb\nc"});
    grid.view.paste();
    EXPECT_EQ(grid.input, "a\rb\rc");
    EXPECT_TRUE(grid.view.selection().has_value());
}

TEST(GridInput, APasteIsBracketedWhereTheProgramAskedForIt)
{
    ShownGrid grid;
    grid.feed("\x1b[?2004h");
    grid.pasteboard.setContents({u"a\x1b[201~b"});
    grid.view.paste();
    EXPECT_EQ(grid.input, "\x1b[200~ab\x1b[201~");
}

TEST(GridInput, WithoutTextThePasteDoesNothing)
{
    ShownGrid grid;
    grid.feed("\x1b[?2004h");
    grid.view.paste();
    EXPECT_EQ(grid.input, "");
}

TEST(GridInput, CopyingTakesTheTextOfTheSelection)
{
    ShownGrid grid;
    grid.feed("one\r\ntwo");
    grid.view.copy();
    EXPECT_EQ(grid.pasteboard.contents(), std::nullopt);
    grid.view.setSelection(GridSelection{{0, 0}, {1, 1}});
    grid.view.copy();
    EXPECT_EQ(grid.pasteboard.contents()->text, u"one\ntw");
}

TEST(GridInput, AnInputMethodSendsWhatItHasComposed)
{
    ShownGrid grid;
    QInputMethodEvent composing(QStringLiteral("に"), {});
    QApplication::sendEvent(&grid.view, &composing);
    EXPECT_EQ(grid.input, "");
    QInputMethodEvent committing;
    committing.setCommitString(QStringLiteral("日本"));
    QApplication::sendEvent(&grid.view, &committing);
    EXPECT_EQ(grid.input, "\xE6\x97\xA5\xE6\x9C\xAC");
}

TEST(GridInput, WhatIsBeingComposedStandsAtTheCursor)
{
    ShownGrid grid;
    grid.feed("ab");
    const QImage before = grid.cellPicture(0, 3);
    QInputMethodEvent composing(QStringLiteral("xyz"), {});
    QApplication::sendEvent(&grid.view, &composing);
    EXPECT_NE(grid.cellPicture(0, 3), before);
    QInputMethodEvent nothing;
    QApplication::sendEvent(&grid.view, &nothing);
    EXPECT_EQ(grid.cellPicture(0, 3), before);
}

TEST(GridInput, AnInputMethodIsToldWhereTheCursorIs)
{
    ShownGrid grid;
    grid.feed("one\r\ntwo");
    EXPECT_EQ(grid.view.inputMethodQuery(Qt::ImCursorRectangle).toRectF(),
              grid.view.cellRect({1, 3}));
    EXPECT_TRUE(grid.view.inputMethodQuery(Qt::ImEnabled).toBool());
}

TEST(GridInput, WithoutATerminalKeysAreStillEncoded)
{
    ShownGrid grid;
    grid.view.setEmulator(nullptr);
    grid.press(Qt::Key_Up);
    EXPECT_EQ(grid.input, "\x1B[A");
}

}  // namespace
}  // namespace tavrel
