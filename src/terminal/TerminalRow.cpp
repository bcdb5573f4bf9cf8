#include "terminal/TerminalRow.h"

#include <algorithm>

namespace tavrel {
namespace {

int screenRunEnd(const TerminalScreenRow& row, int column, int columns)
{
    const auto styles = row.styles();
    const TerminalStyle style =
        column < row.length() ? styles[static_cast<std::size_t>(column)] : row.fill();
    while (column < row.length() && styles[static_cast<std::size_t>(column)] == style)
        ++column;
    return column >= row.length() && row.fill() == style ? columns : column;
}

int storedRunEnd(const StoredRow& row, int column, int columns)
{
    if (column >= row.length())
        return columns;
    const int end = row.runEnd(column);
    const bool isDefault = row.style(column) == TerminalStyle();
    return end == row.length() && isDefault ? columns : end;
}

}  // namespace

int TerminalRow::contentEnd() const
{
    if (const auto* row = std::get_if<const TerminalScreenRow*>(&row_))
        return (*row)->length();
    if (const auto* row = std::get_if<StoredRow>(&row_))
        return row->length();
    return 0;
}

TerminalCell TerminalRow::cell(int column) const
{
    if (column < 0 || column >= columns_)
        return TerminalCell();
    if (const auto* row = std::get_if<const TerminalScreenRow*>(&row_))
        return (*row)->cell(column);
    if (const auto* row = std::get_if<StoredRow>(&row_))
        return column < row->length() ? row->cell(column) : TerminalCell();
    return TerminalCell();
}

void TerminalRow::copyCells(std::span<TerminalCell> cells) const
{
    const int count = static_cast<int>(std::min<std::size_t>(cells.size(), columns_));
    std::size_t at = 0;
    for (int column = 0; column < count;) {
        const Run run = runAt(column);
        const TerminalCell blank{U' ', run.foreground, run.background, run.flags};
        for (; column < std::min(run.end, count); ++column)
            cells[at++] = blank;
    }
    const std::u32string characters = this->characters(0, count);
    for (std::size_t i = 0; i < characters.size(); ++i)
        cells[i].character = characters[i];
    std::fill(cells.begin() + count, cells.end(), TerminalCell());
}

TerminalRow::Run TerminalRow::runAt(int column) const
{
    int end = columns_;
    if (const auto* row = std::get_if<const TerminalScreenRow*>(&row_))
        end = screenRunEnd(**row, column, columns_);
    else if (const auto* stored = std::get_if<StoredRow>(&row_))
        end = storedRunEnd(*stored, column, columns_);
    const TerminalCell first = cell(column);
    return {column, end, first.foreground, first.background, first.flags};
}

std::u32string TerminalRow::characters(int begin, int end) const
{
    begin = std::clamp(begin, 0, columns_);
    end = std::clamp(end, begin, columns_);
    std::u32string text(static_cast<std::size_t>(end - begin), U' ');
    const int kept = std::min(end, contentEnd());
    if (kept <= begin)
        return text;
    if (const auto* row = std::get_if<const TerminalScreenRow*>(&row_))
        std::copy_n((*row)->characters().begin() + begin, kept - begin, text.begin());
    else if (const auto* stored = std::get_if<StoredRow>(&row_))
        for (int column = begin; column < kept; ++column)
            text[static_cast<std::size_t>(column - begin)] = stored->character(column);
    return text;
}

}  // namespace tavrel
