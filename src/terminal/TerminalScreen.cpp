#include "terminal/TerminalScreen.h"

#include <algorithm>

namespace tavrel {
namespace {

int limitedSize(int size)
{
    return std::clamp(size, TerminalScreen::leastSize, TerminalScreen::mostSize);
}

}  // namespace

TerminalScreen::TerminalScreen(int columns, int rows)
    : columns_(limitedSize(columns)), rows_(limitedSize(rows)), screen_(columns_, rows_),
      alternateScreen_(columns_, rows_), scrollBottom_(rows_ - 1), tabStops_(columns_)
{
}

TerminalPosition TerminalScreen::limited(TerminalPosition position) const
{
    return {std::min(columns_ - 1, position.x), std::min(rows_ - 1, position.y)};
}

// Printing.

template<class Character>
void TerminalScreen::printAcrossRows(std::span<const Character> characters)
{
    const int last = columns_ - 1;
    while (!characters.empty()) {
        if (pendingWrap_ && modes.autowrap) {
            cursor_.x = 0;
            lineFeed();
        }
        pendingWrap_ = false;
        const int room = columns_ - cursor_.x;
        int count = static_cast<int>(std::min<std::size_t>(characters.size(), room));
        TerminalScreenRow& row = cursorRow();
        // In the last column a character overwrites and shifts nothing.
        if (modes.insertMode && cursor_.x < last) {
            count = std::min(count, last - cursor_.x);
            row.insertBlanks(cursor_.x, count, pen, columns_);
        }
        if (count >= TerminalScreenRow::blockSize) {
            row.write(cursor_.x, characters.data(), count, pen, columns_);
        } else {
            std::array<Character, TerminalScreenRow::blockSize> block{};
            std::copy_n(characters.data(), count, block.begin());
            row.writeShort(cursor_.x, block, count, pen, columns_);
        }
        characters = characters.subspan(static_cast<std::size_t>(count));
        cursor_.x += count;
        if (cursor_.x > last) {
            cursor_.x = last;
            pendingWrap_ = true;
            // Without wrapping all further ones overwrite the last column, and the last one stays.
            if (!modes.autowrap && !characters.empty())
                characters = characters.last(1);
        }
    }
}

template void TerminalScreen::printAcrossRows(std::span<const std::uint8_t> characters);
template void TerminalScreen::printAcrossRows(std::span<const char32_t> characters);

// Moving the cursor.

void TerminalScreen::moveCursor(int x, int y)
{
    // Within the region the cursor stops at its margins; outside it moves freely on its own side.
    const int upper = cursor_.y > scrollBottom_ ? rows_ - 1 : scrollBottom_;
    const int lower = cursor_.y < scrollTop_ ? 0 : scrollTop_;
    cursor_.x = std::clamp(x, 0, columns_ - 1);
    cursor_.y = std::max(lower, std::min(y, upper));
    pendingWrap_ = false;
}

void TerminalScreen::setCursorPosition(int x, int y)
{
    cursor_.x = std::clamp(x, 0, columns_ - 1);
    cursor_.y = modes.originMode ? std::clamp(scrollTop_ + y, scrollTop_, scrollBottom_)
                                 : std::clamp(y, 0, rows_ - 1);
    pendingWrap_ = false;
}

void TerminalScreen::backspace()
{
    cursor_.x = std::max(cursor_.x - 1, 0);
    pendingWrap_ = false;
}

void TerminalScreen::carriageReturn()
{
    cursor_.x = 0;
    pendingWrap_ = false;
}

void TerminalScreen::tabForward()
{
    pendingWrap_ = false;
    cursor_.x = tabStops_.next(cursor_.x, columns_ - 1);
}

void TerminalScreen::lineFeed()
{
    pendingWrap_ = false;
    if (cursor_.y == scrollBottom_)
        scrollUpOnce();
    else if (cursor_.y < rows_ - 1)
        ++cursor_.y;
}

void TerminalScreen::reverseIndex()
{
    pendingWrap_ = false;
    if (cursor_.y == scrollTop_)
        scrollDownOnce(scrollTop_);
    else if (cursor_.y > 0)
        --cursor_.y;
}

void TerminalScreen::restoreCursor()
{
    cursor_ = limited(savedCursor_);
    pendingWrap_ = false;
}

// Erasing and shifting.

void TerminalScreen::eraseInDisplay(int mode)
{
    const TerminalStyle blank = pen.blank();
    switch (mode) {
    case 0:
        eraseInLine(0);
        screen_.clearRows(cursor_.y + 1, rows_, blank);
        break;
    case 1:
        eraseInLine(1);
        screen_.clearRows(0, cursor_.y, blank);
        break;
    case 3:
        clearScrollback();
        [[fallthrough]];
    case 2:
        screen_.clearRows(0, rows_, blank);
        break;
    default:
        break;
    }
}

void TerminalScreen::eraseInLine(int mode)
{
    const TerminalStyle blank = pen.blank();
    switch (mode) {
    case 0:
        cursorRow().erase(cursor_.x, columns_, blank, columns_);
        break;
    case 1:
        cursorRow().erase(0, cursor_.x + 1, blank, columns_);
        break;
    case 2:
        cursorRow().clear(blank);
        break;
    default:
        break;
    }
}

void TerminalScreen::eraseCharacters(int count)
{
    const int end = cursor_.x + std::min(count, columns_ - cursor_.x);
    cursorRow().erase(cursor_.x, end, pen.blank(), columns_);
}

void TerminalScreen::insertBlanks(int count)
{
    count = std::min(count, columns_ - cursor_.x);
    cursorRow().insertBlanks(cursor_.x, count, pen.blank(), columns_);
    pendingWrap_ = false;
}

void TerminalScreen::deleteCharacters(int count)
{
    count = std::min(count, columns_ - cursor_.x);
    cursorRow().removeCells(cursor_.x, count, pen.blank(), columns_);
    pendingWrap_ = false;
}

void TerminalScreen::insertLines(int count)
{
    if (cursor_.y < scrollTop_ || cursor_.y > scrollBottom_)
        return;
    for (int left = std::min(count, scrollBottom_ - cursor_.y + 1); left > 0; --left)
        scrollDownOnce(cursor_.y);
    carriageReturn();
}

void TerminalScreen::deleteLines(int count)
{
    if (cursor_.y < scrollTop_ || cursor_.y > scrollBottom_)
        return;
    for (int left = std::min(count, scrollBottom_ - cursor_.y + 1); left > 0; --left)
        screen_.rotateUp(cursor_.y, scrollBottom_).clear(pen.blank());
    carriageReturn();
}

void TerminalScreen::scrollUp(int count)
{
    // Behind the region's height there are only blanks to scroll.
    const int height = scrollBottom_ - scrollTop_ + 1;
    for (int left = std::min(count, height); left > 0; --left)
        scrollUpOnce();
    if (count <= height || !feedsScrollback())
        return;
    const auto blanks = static_cast<std::size_t>(count - height);
    const std::size_t kept = std::min(blanks, scrollbackLimit_);
    const std::size_t room = scrollbackLimit_ - kept;
    if (scrollback_.rowCount() > room)
        dropOldest(scrollback_.rowCount() - room);
    scrollback_.appendBlankRows(kept, pen.blank(), columns_);
    droppedRowCount_ += blanks - kept;
}

void TerminalScreen::scrollDown(int count)
{
    for (int left = std::min(count, scrollBottom_ - scrollTop_ + 1); left > 0; --left)
        scrollDownOnce(scrollTop_);
}

void TerminalScreen::scrollUpOnce()
{
    if (feedsScrollback())
        appendToScrollback(screen_.row(scrollTop_));
    screen_.rotateUp(scrollTop_, scrollBottom_).clear(pen.blank());
}

void TerminalScreen::scrollDownOnce(int top)
{
    screen_.rotateDown(top, scrollBottom_).clear(pen.blank());
}

// The history.

void TerminalScreen::appendToScrollback(TerminalScreenRow& row)
{
    if (scrollbackLimit_ == 0) {
        clearScrollback();
        ++droppedRowCount_;
        return;
    }
    // The oldest go first, so that the new row can have their room.
    if (scrollback_.rowCount() >= scrollbackLimit_)
        dropOldest(scrollback_.rowCount() - scrollbackLimit_ + 1);
    scrollback_.append(row, columns_);
}

void TerminalScreen::dropOldest(std::size_t count)
{
    scrollback_.dropOldest(count);
    droppedRowCount_ += count;
}

bool TerminalScreen::trimScrollback()
{
    if (scrollback_.rowCount() <= scrollbackLimit_)
        return false;
    dropOldest(scrollback_.rowCount() - scrollbackLimit_);
    return true;
}

TerminalRow TerminalScreen::row(std::int64_t index) const
{
    const auto history =
        usingAlternateScreen_ ? 0 : static_cast<std::int64_t>(scrollback_.rowCount());
    if (index < 0 || index >= history + rows_)
        return TerminalRow(columns_);
    if (index < history)
        return TerminalRow(columns_, scrollback_.row(static_cast<std::size_t>(index)));
    return TerminalRow(columns_, screen_.row(static_cast<int>(index - history)));
}

// Margins, tab stops, screens.

void TerminalScreen::setScrollRegion(int top, int bottom)
{
    if (top >= bottom || bottom >= rows_)
        return;
    scrollTop_ = top;
    scrollBottom_ = bottom;
    setCursorPosition(0, 0);
}

void TerminalScreen::resetScrollRegion()
{
    scrollTop_ = 0;
    scrollBottom_ = rows_ - 1;
}

void TerminalScreen::enterAlternateScreen(Clearing clearing, CursorSaving saving)
{
    if (usingAlternateScreen_)
        return;
    if (saving == CursorSaving::yes)
        saveMainCursor();
    usingAlternateScreen_ = true;
    if (clearing == Clearing::yes)
        alternateScreen_.clearRows(0, rows_, TerminalStyle());
    std::swap(screen_, alternateScreen_);
    cursor_ = {};
    resetScrollRegion();
    pendingWrap_ = false;
}

void TerminalScreen::leaveAlternateScreen(CursorSaving saving)
{
    if (!usingAlternateScreen_)
        return;
    std::swap(screen_, alternateScreen_);
    usingAlternateScreen_ = false;
    if (saving == CursorSaving::yes)
        restoreMainCursor();
    resetScrollRegion();
    pendingWrap_ = false;
}

void TerminalScreen::reset()
{
    screen_.clearRows(0, rows_, TerminalStyle());
    alternateScreen_.clearRows(0, rows_, TerminalStyle());
    clearScrollback();
    cursor_ = {};
    pen = TerminalStyle();
    modes = TerminalModes();
    usingAlternateScreen_ = false;
    pendingWrap_ = false;
    resetScrollRegion();
    tabStops_.reset(columns_);
}

// The window's own.

bool TerminalScreen::resize(int newColumns, int newRows)
{
    newColumns = limitedSize(newColumns);
    newRows = limitedSize(newRows);
    if (newColumns == columns_ && newRows == rows_)
        return false;
    if (newColumns != columns_) {
        screen_.setColumns(newColumns);
        alternateScreen_.setColumns(newColumns);
        if (newColumns < columns_)
            scrollback_.cut(newColumns);
        cursor_.x = std::min(newColumns - 1, cursor_.x);
        columns_ = newColumns;
    }
    if (usingAlternateScreen_) {
        screen_.adjustRows(0, 0, newRows);
        cursor_.y = std::min(newRows - 1, cursor_.y);
        savedMainCursor_.y = adjustRows(alternateScreen_, newRows, savedMainCursor_.y);
        savedMainCursor_.x = std::min(columns_ - 1, savedMainCursor_.x);
    } else {
        cursor_.y = adjustRows(screen_, newRows, cursor_.y);
        alternateScreen_.adjustRows(0, 0, newRows);
    }
    rows_ = newRows;
    resetScrollRegion();
    pendingWrap_ = false;
    tabStops_.reset(columns_);
    return true;
}

// Gives the main grid `newRows` rows: history flows back into a grid that grows; one that shrinks
// loses the empty rows below the cursor, and then its top to the history. Gives the cursor's row.
int TerminalScreen::adjustRows(TerminalGrid& grid, int newRows, int cursorRow)
{
    const int count = grid.rowCount();
    if (newRows > count) {
        const int returning = static_cast<int>(std::min<std::size_t>(
            scrollback_.rowCount(), static_cast<std::size_t>(newRows - count)));
        grid.adjustRows(0, returning, newRows);
        for (int y = returning - 1; y >= 0; --y)
            scrollback_.takeNewest(grid.row(y), columns_);
        cursorRow += returning;
    } else if (newRows < count) {
        int excess = count - newRows;
        int last = count - 1;
        for (; excess > 0 && cursorRow != last && grid.row(last).isEmpty(columns_); --last)
            --excess;
        for (int y = 0; y < excess; ++y)
            scrollback_.append(grid.row(y), columns_);
        cursorRow -= excess;
        grid.adjustRows(excess, 0, newRows);
        trimScrollback();
    }
    return std::clamp(cursorRow, 0, newRows - 1);
}

}  // namespace tavrel
