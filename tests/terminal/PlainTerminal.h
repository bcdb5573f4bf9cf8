#pragma once

#include "terminal/TerminalEmulator.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavrel {

/// A terminal as plain as can be, to hold the emulator against: lists of lists of cells, one
/// character after another, the parameters kept as text.
///
/// It is for inputs of some kilobytes.
class PlainTerminal {
public:
    using Row = std::vector<TerminalCell>;
    using Grid = std::vector<Row>;
    using State = TerminalEmulator::ParserState;

    PlainTerminal(int newColumns, int newRows)
        : columns(std::max(newColumns, 2)), rows(std::max(newRows, 2)), screen(freshGrid()),
          alternateScreen(freshGrid()), scrollBottom(rows - 1)
    {
        resetTabStops();
    }

    void feed(std::string_view bytes)
    {
        for (const char byte : bytes)
            decode(static_cast<std::uint8_t>(byte));
    }

    void resize(int newColumns, int newRows)
    {
        newColumns = std::max(newColumns, 2);
        newRows = std::max(newRows, 2);
        if (newColumns == columns && newRows == rows)
            return;
        if (newColumns != columns) {
            for (Grid* grid : {&screen, &alternateScreen, &scrollback})
                for (Row& row : *grid)
                    row.resize(static_cast<std::size_t>(newColumns));
            cursorX = std::min(newColumns - 1, cursorX);
        }
        columns = newColumns;
        if (usingAlternateScreen) {
            setRowCount(screen, newRows);
            cursorY = std::min(newRows - 1, cursorY);
            adjustRows(alternateScreen, newRows, savedMainCursor.y);
            savedMainCursor.x = std::min(columns - 1, savedMainCursor.x);
        } else {
            adjustRows(screen, newRows, cursorY);
            setRowCount(alternateScreen, newRows);
        }
        rows = newRows;
        resetScrollRegion();
        pendingWrap = false;
        resetTabStops();
    }

    void applyScrollbackLimit()
    {
        while (scrollback.size() > scrollbackLimit)
            scrollback.erase(scrollback.begin());
    }

    int columns;
    int rows;
    int cursorX = 0;
    int cursorY = 0;
    bool cursorVisible = true;
    bool usingAlternateScreen = false;
    bool applicationCursorKeys = false;
    bool bracketedPaste = false;
    Grid screen;
    Grid alternateScreen;
    Grid scrollback;
    std::size_t scrollbackLimit = 10'000;
    TerminalCell pen;
    TerminalPosition savedCursor;
    TerminalPosition savedMainCursor;
    bool autowrap = true;
    bool originMode = false;
    bool insertMode = false;
    bool pendingWrap = false;
    int scrollTop = 0;
    int scrollBottom;
    std::set<int> tabStops;
    State parserState = State::ground;
    std::size_t bells = 0;
    std::string replies;

private:
    Row freshRow() const { return Row(static_cast<std::size_t>(columns)); }
    Grid freshGrid() const { return Grid(static_cast<std::size_t>(rows), freshRow()); }
    TerminalCell blank() const
    {
        TerminalCell cell;
        cell.background = pen.background;
        return cell;
    }
    Row blankRow() const { return Row(static_cast<std::size_t>(columns), blank()); }
    Row& cursorRow() { return screen[static_cast<std::size_t>(cursorY)]; }

    // Bytes to code points.

    void decode(std::uint8_t byte)
    {
        pending.push_back(byte);
        const std::uint8_t lead = pending[0];
        std::size_t length = 0;
        if (lead < 0x80)
            length = 1;
        else if (lead >> 5 == 0b110)
            length = 2;
        else if (lead >> 4 == 0b1110)
            length = 3;
        else if (lead >> 3 == 0b11110)
            length = 4;
        if (length == 0) {
            pending.clear();
            step(0xFFFD);
            return;
        }
        if (pending.size() > 1 && byte >> 6 != 0b10) {
            pending = {byte};
            step(0xFFFD);
            if (byte < 0x80) {
                pending.clear();
                step(byte);
            }
            return;
        }
        if (pending.size() < length)
            return;
        char32_t value = length == 1 ? lead : lead & (0xFFu >> (length + 1));
        for (std::size_t i = 1; i < length; ++i)
            value = value * 64 + (pending[i] & 0x3Fu);
        pending.clear();
        step((value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF ? 0xFFFD : value);
    }

    // Code points to operations.

    void step(char32_t c)
    {
        switch (parserState) {
        case State::ground:
            ground(c);
            break;
        case State::escape:
            parserState = State::ground;
            escape(c);
            break;
        case State::escapeIntermediate:
            parserState = State::ground;
            if (intermediate == '(')
                charsets[0] = c == '0';
            if (intermediate == ')')
                charsets[1] = c == '0';
            break;
        case State::osc:
            if (c == 7)
                parserState = State::ground;
            if (c == 0x1B)
                parserState = State::oscEscape;
            break;
        case State::oscEscape:
            parserState = c == '\\' ? State::ground : State::osc;
            break;
        case State::consumeUntilST:
            if (c == 0x1B)
                parserState = State::consumeUntilSTEscape;
            break;
        case State::consumeUntilSTEscape:
            parserState = c == '\\' ? State::ground : State::consumeUntilST;
            break;
        case State::csi:
            if (csiParams.empty() && marker == 0 && c >= '<' && c <= '?') {
                marker = c;
            } else if (c >= 0x30 && c <= 0x3B) {
                csiParams.push_back(static_cast<char>(c));
            } else if (c < 0x20 || c > 0x2F) {
                parserState = State::ground;
                dispatch(c);
            }
        }
    }

    void ground(char32_t c)
    {
        if (c == 0x1B)
            parserState = State::escape;
        else if (c == 0x07)
            ++bells;
        else if (c == 0x08)
            moveX(std::max(cursorX - 1, 0));
        else if (c == 0x09)
            tab();
        else if (c >= 0x0A && c <= 0x0C)
            lineFeed();
        else if (c == 0x0D)
            moveX(0);
        else if (c == 0x0E || c == 0x0F)
            activeCharset = c == 0x0E ? 1 : 0;
        else if (c >= 0x20 && c != 0x7F)
            put(charsets[activeCharset] ? special(c) : c);
    }

    static char32_t special(char32_t c)
    {
        static const std::map<char32_t, char32_t> table{
            {'j', 0x2518}, {'k', 0x2510}, {'l', 0x250C}, {'m', 0x2514}, {'n', 0x253C},
            {'q', 0x2500}, {'t', 0x251C}, {'u', 0x2524}, {'v', 0x2534}, {'w', 0x252C},
            {'x', 0x2502}, {'|', 0x2260}, {'a', 0x2592}, {'`', 0x25C6}, {'f', 0x00B0},
            {'g', 0x00B1}, {'~', 0x00B7}, {'o', 0x23BA}, {'s', 0x23BD}, {'0', 0x2588},
            {'y', 0x2264}, {'z', 0x2265}, {'{', 0x03C0}, {'}', 0x00A3}};
        const auto found = table.find(c);
        return found == table.end() ? c : found->second;
    }

    void escape(char32_t c)
    {
        if (c == '(' || c == ')' || c == '*' || c == '+') {
            parserState = State::escapeIntermediate;
            intermediate = c;
        } else if (c == '7') {
            savedCursor = {cursorX, cursorY};
        } else if (c == '8') {
            restoreCursor();
        } else if (c == 'D') {
            lineFeed();
        } else if (c == 'E') {
            moveX(0);
            lineFeed();
        } else if (c == 'H') {
            tabStops.insert(cursorX);
        } else if (c == 'M') {
            pendingWrap = false;
            if (cursorY == scrollTop)
                scrollDown(scrollTop);
            else if (cursorY > 0)
                --cursorY;
        } else if (c == 'P' || c == 'X' || c == '^' || c == '_') {
            parserState = State::consumeUntilST;
        } else if (c == '[') {
            csiParams.clear();
            marker = 0;
            parserState = State::csi;
        } else if (c == ']') {
            parserState = State::osc;
        } else if (c == 'c') {
            reset();
        }
    }

    std::vector<std::int64_t> params(std::int64_t absent) const
    {
        std::vector<std::int64_t> list;
        for (std::size_t begin = 0; begin <= csiParams.size();) {
            const std::size_t end = std::min(csiParams.find(';', begin), csiParams.size());
            std::int64_t value = 0;
            const char* const last = csiParams.data() + end;
            const auto read = std::from_chars(csiParams.data() + begin, last, value);
            list.push_back(read.ec == std::errc() && read.ptr == last ? value : absent);
            begin = end + 1;
        }
        return list;
    }

    static int small(std::int64_t value)
    {
        return static_cast<int>(std::min<std::int64_t>(value, 1'000'000));
    }

    void dispatch(char32_t final)
    {
        const int n = std::max(small(params(1)[0]), 1);
        const int first = small(params(0)[0]);
        const int x = cursorX;
        const int y = cursorY;
        switch (final) {
        case 'A':
            moveCursor(x, y - n);
            break;
        case 'B':
        case 'e':
            moveCursor(x, y + n);
            break;
        case 'C':
        case 'a':
            moveCursor(x + n, y);
            break;
        case 'D':
            moveCursor(x - n, y);
            break;
        case 'E':
            moveCursor(0, y + n);
            break;
        case 'F':
            moveCursor(0, y - n);
            break;
        case 'G':
        case '`':
            moveCursor(n - 1, y);
            break;
        case 'H':
        case 'f': {
            const auto list = params(1);
            const int column = list.size() > 1 ? std::max(small(list[1]), 1) : 1;
            setCursorPosition(column - 1, std::max(small(list[0]), 1) - 1);
            break;
        }
        case 'd':
            setCursorPosition(x, n - 1);
            break;
        case 'J':
            eraseInDisplay(first);
            break;
        case 'K':
            eraseInLine(first);
            break;
        case 'L':
        case 'M':
            insertOrDeleteLines(final == 'L', n);
            break;
        case 'P':
        case '@': {
            Row& row = cursorRow();
            for (int i = std::min(n, columns - x); i > 0; --i) {
                if (final == '@')
                    row.pop_back();
                row.insert(final == '@' ? row.begin() + x : row.end(), blank());
                if (final == 'P')
                    row.erase(row.begin() + x);
            }
            pendingWrap = false;
            break;
        }
        case 'X':
            for (int i = x; i < std::min(x + n, columns); ++i)
                cursorRow()[static_cast<std::size_t>(i)] = blank();
            break;
        case 'S':
            for (int i = std::min(n, rows + static_cast<int>(scrollbackLimit)); i > 0; --i)
                scrollUp();
            break;
        case 'T':
            for (int i = std::min(n, rows); i > 0; --i)
                scrollDown(scrollTop);
            break;
        case 'm':
            rendition();
            break;
        case 'h':
        case 'l':
            for (const std::int64_t mode : params(0))
                setMode(mode, final == 'h');
            break;
        case 'r': {
            const auto list = params(0);
            const int top = std::max(first, 1) - 1;
            const int bottom = list.size() > 1 && list[1] > 0 ? small(list[1]) - 1 : rows - 1;
            if (top < bottom && bottom < rows) {
                scrollTop = top;
                scrollBottom = bottom;
                setCursorPosition(0, 0);
            }
            break;
        }
        case 'n':
            if (first == 5)
                replies += "\x1B[0n";
            if (first == 6)
                replies += "\x1B[" + std::to_string(y + 1 - (originMode ? scrollTop : 0)) + ";" +
                           std::to_string(x + 1) + "R";
            break;
        case 'c':
            replies += "\x1B[?6c";
            break;
        case 'g':
            if (first == 3)
                tabStops.clear();
            else
                tabStops.erase(cursorX);
            break;
        case 's':
            savedCursor = {cursorX, cursorY};
            break;
        case 'u':
            restoreCursor();
            break;
        default:
            break;
        }
    }

    void setFlag(TerminalCellFlags flag, bool on)
    {
        const int bits = pen.flags.rawValue;
        pen.flags.rawValue =
            static_cast<std::uint8_t>(on ? bits | flag.rawValue : bits & ~flag.rawValue);
    }

    void rendition()
    {
        const auto list = params(0);
        const std::size_t count = list.size();
        for (std::size_t i = 0; i < count; ++i) {
            const int code = small(list[i]);
            if (code == 0)
                pen = TerminalCell();
            else if (code == 1)
                setFlag(TerminalCellFlags::bold, true);
            else if (code == 2)
                setFlag(TerminalCellFlags::dim, true);
            else if (code == 3 || code == 23)
                setFlag(TerminalCellFlags::italic, code == 3);
            else if (code == 4 || code == 24)
                setFlag(TerminalCellFlags::underline, code == 4);
            else if (code == 7 || code == 27)
                setFlag(TerminalCellFlags::inverse, code == 7);
            else if (code == 22)
                setFlag(TerminalCellFlags::bold | TerminalCellFlags::dim, false);
            else if (code >= 30 && code <= 37)
                pen.foreground = TerminalColor::palette(code - 30);
            else if (code == 39)
                pen.foreground = TerminalColor::defaultForeground();
            else if (code >= 40 && code <= 47)
                pen.background = TerminalColor::palette(code - 40);
            else if (code == 49)
                pen.background = TerminalColor::defaultBackground();
            else if (code >= 90 && code <= 97)
                pen.foreground = TerminalColor::palette(code - 82);
            else if (code >= 100 && code <= 107)
                pen.background = TerminalColor::palette(code - 92);
            if ((code != 38 && code != 48) || i + 1 >= count)
                continue;
            TerminalColor& color = code == 38 ? pen.foreground : pen.background;
            if (list[i + 1] == 2 && i + 4 < count) {
                color =
                    TerminalColor::rgb(small(list[i + 2]), small(list[i + 3]), small(list[i + 4]));
                i += 4;
            } else if (list[i + 1] == 5 && i + 2 < count) {
                color = TerminalColor::palette(small(list[i + 2]));
                i += 2;
            }
        }
    }

    void setMode(std::int64_t mode, bool value)
    {
        if (marker != '?') {
            if (mode == 4)
                insertMode = value;
            return;
        }
        if (mode == 1)
            applicationCursorKeys = value;
        if (mode == 6) {
            originMode = value;
            setCursorPosition(0, 0);
        }
        if (mode == 7)
            autowrap = value;
        if (mode == 25)
            cursorVisible = value;
        if (mode == 47)
            switchScreen(value, false, false);
        if (mode == 1047)
            switchScreen(value, true, false);
        if (mode == 1048 && value)
            savedMainCursor = {cursorX, cursorY};
        if (mode == 1048 && !value)
            restoreMainCursor();
        if (mode == 1049)
            switchScreen(value, true, true);
        if (mode == 2004)
            bracketedPaste = value;
    }

    // Operations.

    void moveX(int x)
    {
        cursorX = x;
        pendingWrap = false;
    }

    void moveCursor(int x, int y)
    {
        const int upper = cursorY > scrollBottom ? rows - 1 : scrollBottom;
        const int lower = cursorY < scrollTop ? 0 : scrollTop;
        moveX(std::clamp(x, 0, columns - 1));
        cursorY = std::max(lower, std::min(y, upper));
    }

    void setCursorPosition(int x, int y)
    {
        moveX(std::clamp(x, 0, columns - 1));
        cursorY = originMode ? std::clamp(scrollTop + y, scrollTop, scrollBottom)
                             : std::clamp(y, 0, rows - 1);
    }

    void restoreCursor()
    {
        moveX(std::min(columns - 1, savedCursor.x));
        cursorY = std::min(rows - 1, savedCursor.y);
    }

    void restoreMainCursor()
    {
        cursorX = std::min(columns - 1, savedMainCursor.x);
        cursorY = std::min(rows - 1, savedMainCursor.y);
    }

    void tab()
    {
        int x = cursorX + 1;
        while (x < columns - 1 && !tabStops.contains(x))
            ++x;
        moveX(std::min(x, columns - 1));
    }

    void resetTabStops()
    {
        tabStops.clear();
        for (int column = 8; column < columns; column += 8)
            tabStops.insert(column);
    }

    void lineFeed()
    {
        pendingWrap = false;
        if (cursorY == scrollBottom)
            scrollUp();
        else if (cursorY < rows - 1)
            ++cursorY;
    }

    void scrollUp()
    {
        if (!usingAlternateScreen && scrollTop == 0) {
            scrollback.push_back(screen[0]);
            applyScrollbackLimit();
        }
        screen.erase(screen.begin() + scrollTop);
        screen.insert(screen.begin() + scrollBottom, blankRow());
    }

    void scrollDown(int top)
    {
        screen.erase(screen.begin() + scrollBottom);
        screen.insert(screen.begin() + top, blankRow());
    }

    void put(char32_t c)
    {
        if (pendingWrap && autowrap) {
            cursorX = 0;
            lineFeed();
        }
        pendingWrap = false;
        TerminalCell cell = pen;
        cell.character = c;
        Row& row = cursorRow();
        if (insertMode && cursorX < columns - 1) {
            row.pop_back();
            row.insert(row.begin() + cursorX, cell);
        } else {
            row[static_cast<std::size_t>(cursorX)] = cell;
        }
        if (cursorX >= columns - 1)
            pendingWrap = true;
        else
            ++cursorX;
    }

    void eraseInDisplay(int mode)
    {
        if (mode == 0 || mode == 1) {
            eraseInLine(mode);
            for (int y = mode == 0 ? cursorY + 1 : 0; y < (mode == 0 ? rows : cursorY); ++y)
                screen[static_cast<std::size_t>(y)] = blankRow();
        }
        if (mode == 3)
            scrollback.clear();
        if (mode == 2 || mode == 3)
            screen.assign(static_cast<std::size_t>(rows), blankRow());
    }

    void eraseInLine(int mode)
    {
        if (mode < 0 || mode > 2)
            return;
        Row& row = cursorRow();
        std::fill(mode == 0 ? row.begin() + cursorX : row.begin(),
                  mode == 1 ? row.begin() + cursorX + 1 : row.end(), blank());
    }

    void insertOrDeleteLines(bool inserts, int n)
    {
        if (cursorY < scrollTop || cursorY > scrollBottom)
            return;
        for (int i = std::min(n, scrollBottom - cursorY + 1); i > 0; --i) {
            if (inserts) {
                scrollDown(cursorY);
            } else {
                screen.erase(screen.begin() + cursorY);
                screen.insert(screen.begin() + scrollBottom, blankRow());
            }
        }
        moveX(0);
    }

    void resetScrollRegion()
    {
        scrollTop = 0;
        scrollBottom = rows - 1;
    }

    void switchScreen(bool enter, bool clear, bool saveCursor)
    {
        if (enter == usingAlternateScreen)
            return;
        if (enter && saveCursor)
            savedMainCursor = {cursorX, cursorY};
        if (enter && clear)
            alternateScreen = freshGrid();
        usingAlternateScreen = enter;
        std::swap(screen, alternateScreen);
        if (enter)
            cursorX = cursorY = 0;
        else if (saveCursor)
            restoreMainCursor();
        resetScrollRegion();
        pendingWrap = false;
    }

    void reset()
    {
        PlainTerminal fresh(columns, rows);
        fresh.scrollbackLimit = scrollbackLimit;
        fresh.savedCursor = savedCursor;
        fresh.savedMainCursor = savedMainCursor;
        fresh.bells = bells;
        fresh.replies = replies;
        fresh.pending = pending;
        *this = fresh;
    }

    void setRowCount(Grid& grid, int count) const
    {
        grid.resize(static_cast<std::size_t>(count), freshRow());
    }

    void adjustRows(Grid& grid, int newRows, int& cursorRowIndex)
    {
        const int count = static_cast<int>(grid.size());
        if (newRows > count) {
            while (!scrollback.empty() && static_cast<int>(grid.size()) < newRows) {
                grid.insert(grid.begin(), scrollback.back());
                scrollback.pop_back();
                ++cursorRowIndex;
            }
            setRowCount(grid, newRows);
        } else if (newRows < count) {
            int excess = count - newRows;
            while (excess > 0 && cursorRowIndex != static_cast<int>(grid.size()) - 1 &&
                   isEmpty(grid.back())) {
                grid.pop_back();
                --excess;
            }
            for (; excess > 0 && !grid.empty(); --excess) {
                scrollback.push_back(grid.front());
                grid.erase(grid.begin());
                cursorRowIndex = std::max(cursorRowIndex - 1, 0);
            }
            applyScrollbackLimit();
        }
        cursorRowIndex = std::clamp(cursorRowIndex, 0, newRows - 1);
    }

    static bool isEmpty(const Row& row)
    {
        return std::ranges::all_of(row, [](const TerminalCell& cell) {
            return cell.character == U' ' && cell.background == TerminalColor::defaultBackground();
        });
    }

    std::vector<std::uint8_t> pending;
    std::string csiParams;
    char32_t marker = 0;
    char32_t intermediate = 0;
    bool charsets[2] = {false, false};  // Whether each draws lines.
    int activeCharset = 0;
};

/// Where the two differ, or nothing.
inline std::optional<std::string> difference(const TerminalEmulator& emulator,
                                             const PlainTerminal& plain)
{
    const auto rowDiffers = [&](const TerminalRow& row, const PlainTerminal::Row& cells) {
        std::vector<TerminalCell> copied(cells.size());
        row.copyCells(copied);
        if (copied != cells || row.columns() != plain.columns)
            return true;
        for (int x = 0; x < plain.columns; ++x)
            if (row.cell(x) != cells[static_cast<std::size_t>(x)])
                return true;
        return false;
    };
    const auto at = [](const char* what, std::size_t index) {
        return what + std::to_string(index);
    };
    if (emulator.columns() != plain.columns || emulator.rows() != plain.rows)
        return "size";
    for (std::size_t y = 0; y < plain.screen.size(); ++y) {
        const int row = static_cast<int>(y);
        if (rowDiffers(emulator.screenRow(row), plain.screen[y]))
            return at("screen row ", y);
        if (rowDiffers(emulator.alternateScreenRow(row), plain.alternateScreen[y]))
            return at("alternate screen row ", y);
    }
    if (emulator.scrollbackLength() != plain.scrollback.size())
        return at("history length ", emulator.scrollbackLength());
    for (std::size_t y = 0; y < plain.scrollback.size(); ++y)
        if (rowDiffers(emulator.scrollbackRow(y), plain.scrollback[y]))
            return at("history row ", y);
    if (emulator.cursorX() != plain.cursorX || emulator.cursorY() != plain.cursorY)
        return "cursor";
    if (emulator.cursorVisible() != plain.cursorVisible ||
        emulator.usingAlternateScreen() != plain.usingAlternateScreen ||
        emulator.applicationCursorKeys() != plain.applicationCursorKeys ||
        emulator.bracketedPaste() != plain.bracketedPaste ||
        emulator.autowrap() != plain.autowrap || emulator.originMode() != plain.originMode ||
        emulator.insertMode() != plain.insertMode)
        return "modes";
    if (emulator.pendingWrap() != plain.pendingWrap)
        return "pending wrap";
    if (emulator.currentForeground() != plain.pen.foreground ||
        emulator.currentBackground() != plain.pen.background ||
        emulator.currentFlags() != plain.pen.flags)
        return "pen";
    if (emulator.savedCursor() != plain.savedCursor ||
        emulator.savedMainCursor() != plain.savedMainCursor)
        return "saved cursors";
    if (emulator.scrollTop() != plain.scrollTop || emulator.scrollBottom() != plain.scrollBottom)
        return "scroll region";
    const std::vector<int> tabStops = emulator.tabStops();
    if (std::set<int>(tabStops.begin(), tabStops.end()) != plain.tabStops)
        return "tab stops";
    if (emulator.parserState() != plain.parserState)
        return "parser state";
    return std::nullopt;
}

}  // namespace tavrel
