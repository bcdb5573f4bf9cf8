#pragma once

#include "terminal/TerminalGrid.h"
#include "terminal/TerminalHistory.h"
#include "terminal/TerminalRow.h"
#include "terminal/TerminalTabStops.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tavrel {

/// The place of a cell: column and row, each from 0.
struct TerminalPosition {
    int x = 0;
    int y = 0;
    bool operator==(const TerminalPosition&) const = default;
};

/// The parts of a terminal's state that a program sets and others read.
struct TerminalModes {
    bool cursorVisible = true;
    bool applicationCursorKeys = false;
    bool bracketedPaste = false;
    bool autowrap = true;
    bool originMode = false;
    bool insertMode = false;
    bool operator==(const TerminalModes&) const = default;
};

/// The memory of a terminal: the two grids, the history above the main one, cursor, margins and tab
/// stops, and what a program can do to them. It knows no bytes: `TerminalEmulator` calls it.
///
/// Columns and rows count from 0. Positions and counts out of range are limited, so nothing here
/// fails, and no count costs more than the grid, but for rows that go to the history. The cursor
/// always lies on the grid; both grids have exactly `rows()` rows of `columns()` cells.
class TerminalScreen {
public:
    static constexpr int leastSize = 2;
    /// The most columns and rows: what the size of a pseudo terminal can say.
    static constexpr int mostSize = 65'535;

    /// Both arguments are limited to `leastSize` and `mostSize`.
    TerminalScreen(int columns, int rows);

    int columns() const { return columns_; }
    int rows() const { return rows_; }
    TerminalPosition cursor() const { return cursor_; }
    bool usingAlternateScreen() const { return usingAlternateScreen_; }
    const TerminalGrid& screen() const { return screen_; }
    const TerminalGrid& alternateScreen() const { return alternateScreen_; }
    const TerminalHistory& scrollback() const { return scrollback_; }
    std::uint64_t droppedRowCount() const { return droppedRowCount_; }
    std::size_t scrollbackLimit() const { return scrollbackLimit_; }
    void setScrollbackLimit(std::size_t limit) { scrollbackLimit_ = limit; }
    TerminalPosition savedCursor() const { return savedCursor_; }
    TerminalPosition savedMainCursor() const { return savedMainCursor_; }
    bool pendingWrap() const { return pendingWrap_; }
    int scrollTop() const { return scrollTop_; }
    int scrollBottom() const { return scrollBottom_; }
    const TerminalTabStops& tabStops() const { return tabStops_; }

    /// What new cells look like; its background is that of erased ones.
    TerminalStyle pen;
    TerminalModes modes;

    // Printing. Every character takes one cell.

    void print(std::span<const std::uint8_t> ascii) { printAcrossRows(ascii); }
    void print(std::span<const char32_t> characters) { printAcrossRows(characters); }

    /// The first `count` of a block of characters, one at least.
    template<class Character>
    void printShort(const std::array<Character, 8>& characters, int count)
    {
        // Most runs end before the last column.
        if (count >= columns_ - cursor_.x || pendingWrap_ || modes.insertMode)
            return printAcrossRows(
                std::span<const Character>(characters.data(), static_cast<std::size_t>(count)));
        cursorRow().writeShort(cursor_.x, characters, count, pen, columns_);
        cursor_.x += count;
    }

    // Moving the cursor. Positions may lie as far outside as 2^30 and a grid.

    void moveCursor(int x, int y);
    void setCursorPosition(int x, int y);
    void backspace();
    void carriageReturn();
    void tabForward();
    void lineFeed();
    void reverseIndex();
    void saveCursor() { savedCursor_ = cursor_; }
    void restoreCursor();
    void saveMainCursor() { savedMainCursor_ = cursor_; }
    /// Leaves a pending wrap as it is.
    void restoreMainCursor() { cursor_ = limited(savedMainCursor_); }

    // Erasing and shifting. A mode out of range does nothing.

    void eraseInDisplay(int mode);
    void eraseInLine(int mode);
    void eraseCharacters(int count);
    void insertBlanks(int count);
    void deleteCharacters(int count);
    void insertLines(int count);
    void deleteLines(int count);
    void scrollUp(int count);
    void scrollDown(int count);

    // Margins, tab stops, screens.

    /// Ignored where `top` is not above `bottom`, or `bottom` not on the grid.
    void setScrollRegion(int top, int bottom);
    void setTabStop() { tabStops_.set(cursor_.x); }
    void clearTabStop() { tabStops_.clear(cursor_.x); }
    void clearAllTabStops() { tabStops_.clearAll(); }

    enum class Clearing { no, yes };
    enum class CursorSaving { no, yes };
    void enterAlternateScreen(Clearing clearing, CursorSaving saving);
    void leaveAlternateScreen(CursorSaving saving);
    void reset();

    // The window's own.

    /// Cuts and pads; text does not flow anew. Whether anything changed.
    bool resize(int columns, int rows);
    /// Drops the oldest rows over the limit. Whether there were any.
    bool trimScrollback();
    /// The row at `index` into the history, which the alternate screen has none of, and the grid
    /// behind it. Elsewhere a row of default cells.
    TerminalRow row(std::int64_t index) const;

private:
    TerminalPosition limited(TerminalPosition position) const;
    TerminalScreenRow& cursorRow() { return screen_.row(cursor_.y); }
    bool feedsScrollback() const { return !usingAlternateScreen_ && scrollTop_ == 0; }
    template<class Character>
    void printAcrossRows(std::span<const Character> characters);
    void scrollUpOnce();
    void scrollDownOnce(int top);
    void appendToScrollback(TerminalScreenRow& row);
    void dropOldest(std::size_t count);
    void clearScrollback() { dropOldest(scrollback_.rowCount()); }
    void resetScrollRegion();
    int adjustRows(TerminalGrid& grid, int newRows, int cursorRow);

    int columns_;
    int rows_;
    TerminalPosition cursor_;
    bool usingAlternateScreen_ = false;
    // The grid now shown, and the one now hidden: entering and leaving swap them.
    TerminalGrid screen_;
    TerminalGrid alternateScreen_;
    TerminalHistory scrollback_;
    std::size_t scrollbackLimit_ = 10'000;
    std::uint64_t droppedRowCount_ = 0;
    // Both may lie outside the grid after a resize, and are limited when they are restored.
    TerminalPosition savedCursor_;
    TerminalPosition savedMainCursor_;
    bool pendingWrap_ = false;  // The last column was written, and the wrap has not happened yet.
    int scrollTop_ = 0;
    int scrollBottom_;  // Inclusive.
    TerminalTabStops tabStops_;
};

}  // namespace tavrel
