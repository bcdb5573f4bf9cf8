#pragma once

#include "terminal/StoredRow.h"
#include "terminal/TerminalCell.h"

#include <span>
#include <string>
#include <variant>

namespace tavrel {

/// A look at one row of a terminal, on the screen or in the history: `columns()` cells, whatever
/// form they are kept in. Columns count from 0.
///
/// A small value, cheap to make and to copy. It is valid until its emulator changes.
class TerminalRow {
public:
    /// A row of `columns` default cells.
    explicit TerminalRow(int columns) : columns_(columns) {}
    TerminalRow(int columns, const TerminalScreenRow& row) : columns_(columns), row_(&row) {}
    TerminalRow(int columns, const StoredRow& row) : columns_(columns), row_(row) {}

    int columns() const { return columns_; }
    /// The cells from here to the end of the row are blanks of one style, that of
    /// `cell(contentEnd())`. Those before may be blanks as well.
    int contentEnd() const;

    /// Outside the row it is a default cell. Costs O(log runs) in the history.
    TerminalCell cell(int column) const;
    /// Copies the cells from the first on, as many as `cells` takes; those behind the row's end are
    /// default cells. The cheapest way to all of them.
    void copyCells(std::span<TerminalCell> cells) const;

    /// Neighbouring cells of one style.
    struct Run {
        int begin;
        int end;  // The column behind the last one.
        TerminalColor foreground;
        TerminalColor background;
        TerminalCellFlags flags;
    };
    /// The cells from `column`, which lies in the row, to the next of another style.
    Run runAt(int column) const;

    /// The characters from `begin` up to `end`, each limited to the row.
    std::u32string characters(int begin, int end) const;
    std::u32string characters() const { return characters(0, columns_); }

private:
    int columns_;
    // Nothing for a row of default cells.
    std::variant<std::monostate, const TerminalScreenRow*, StoredRow> row_;
};

}  // namespace tavrel
