#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tavrel {

/// Whether every unit is printable ASCII or a tab, so that a fixed-pitch font shows it in columns.
bool isColumnText(std::u16string_view text);

/// Where the rows of a column text begin, in units from its start; the first is 0.
///
/// Words stay whole: a row ends behind a blank, and the blanks at its end may hang over the edge.
/// A word longer than a row is broken where the row is full. A tab reaches to the next multiple of
/// `tabWidth` columns from the row's start. `columns` and `tabWidth` count as at least 1.
std::vector<std::uint32_t> wrapColumns(std::u16string_view text, std::size_t columns,
                                       std::size_t tabWidth);

/// The column behind a unit that starts in `column`.
constexpr std::size_t columnAfter(char16_t unit, std::size_t column, std::size_t tabWidth)
{
    return unit == u'\t' ? column + tabWidth - column % tabWidth : column + 1;
}

}  // namespace tavrel
