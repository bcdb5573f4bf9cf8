// What each control sequence does, by its final byte.

#include "terminal/TerminalEmulator.h"

#include <algorithm>
#include <string>

namespace tavrel {

void TerminalEmulator::dispatch(char32_t final)
{
    const int first = csiParams_.first();
    const int n = std::max(first, 1);
    const auto [x, y] = screen_.cursor();
    switch (final) {
    case 'A':
        screen_.moveCursor(x, y - n);
        break;
    case 'B':
    case 'e':
        screen_.moveCursor(x, y + n);
        break;
    case 'C':
    case 'a':
        screen_.moveCursor(x + n, y);
        break;
    case 'D':
        screen_.moveCursor(x - n, y);
        break;
    case 'E':
        screen_.moveCursor(0, y + n);
        break;
    case 'F':
        screen_.moveCursor(0, y - n);
        break;
    case 'G':
    case '`':
        screen_.moveCursor(n - 1, y);
        break;
    case 'H':
    case 'f':
        screen_.setCursorPosition(std::max(csiParams_.second(), 1) - 1, n - 1);
        break;
    case 'd':
        screen_.setCursorPosition(x, n - 1);
        break;
    case 'J':
        screen_.eraseInDisplay(first);
        break;
    case 'K':
        screen_.eraseInLine(first);
        break;
    case 'L':
        screen_.insertLines(n);
        break;
    case 'M':
        screen_.deleteLines(n);
        break;
    case 'P':
        screen_.deleteCharacters(n);
        break;
    case '@':
        screen_.insertBlanks(n);
        break;
    case 'X':
        screen_.eraseCharacters(n);
        break;
    case 'S':
        screen_.scrollUp(n);
        break;
    case 'T':
        screen_.scrollDown(n);
        break;
    case 'm':
        screen_.pen = csiParams_.rendition();
        break;
    case 'h':
        setModes(true);
        break;
    case 'l':
        setModes(false);
        break;
    case 'r':
        setScrollRegion();
        break;
    case 'n':
        reportStatus();
        break;
    case 'c':
        respond("\x1B[?6c");
        break;
    case 'g':
        if (first == 3)
            screen_.clearAllTabStops();
        else
            screen_.clearTabStop();
        break;
    case 's':
        screen_.saveCursor();
        break;
    case 'u':
        screen_.restoreCursor();
        break;
    default:
        break;
    }
}

void TerminalEmulator::setModes(bool value)
{
    for (const std::int32_t mode : csiParams_.modes()) {
        if (csiPrivateMarker_ == '?')
            setPrivateMode(mode, value);
        else if (mode == 4)
            screen_.modes.insertMode = value;
    }
}

void TerminalEmulator::setPrivateMode(int mode, bool value)
{
    using Clearing = TerminalScreen::Clearing;
    using CursorSaving = TerminalScreen::CursorSaving;
    switch (mode) {
    case 1:
        screen_.modes.applicationCursorKeys = value;
        break;
    case 6:
        screen_.modes.originMode = value;
        screen_.setCursorPosition(0, 0);
        break;
    case 7:
        screen_.modes.autowrap = value;
        break;
    case 25:
        screen_.modes.cursorVisible = value;
        break;
    case 47:
        switchScreen(value, Clearing::no, CursorSaving::no);
        break;
    case 1047:
        switchScreen(value, Clearing::yes, CursorSaving::no);
        break;
    case 1048:
        if (value)
            screen_.saveMainCursor();
        else
            screen_.restoreMainCursor();
        break;
    case 1049:
        switchScreen(value, Clearing::yes, CursorSaving::yes);
        break;
    case 2004:
        screen_.modes.bracketedPaste = value;
        break;
    default:
        break;
    }
}

void TerminalEmulator::switchScreen(bool enter, TerminalScreen::Clearing clearing,
                                    TerminalScreen::CursorSaving saving)
{
    if (enter)
        screen_.enterAlternateScreen(clearing, saving);
    else
        screen_.leaveAlternateScreen(saving);
}

void TerminalEmulator::setScrollRegion()
{
    const int top = std::max(csiParams_.first(), 1) - 1;
    const int second = csiParams_.second();
    screen_.setScrollRegion(top, second > 0 ? second - 1 : rows() - 1);
}

void TerminalEmulator::reportStatus()
{
    if (csiParams_.first() == 5)
        respond("\x1B[0n");
    if (csiParams_.first() != 6)
        return;
    const int row = cursorY() - (originMode() ? scrollTop() : 0) + 1;
    respond("\x1B[" + std::to_string(row) + ";" + std::to_string(cursorX() + 1) + "R");
}

void TerminalEmulator::respond(std::string_view reply)
{
    if (onResponse)
        onResponse(reply);
}

}  // namespace tavrel
