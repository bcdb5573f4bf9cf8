#include "editor/views/RowWrap.h"

#include <algorithm>

namespace tavrel {

bool isColumnText(std::u16string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char16_t unit) {
        return (unit >= 0x20 && unit < 0x7F) || unit == u'\t';
    });
}

std::vector<std::uint32_t> wrapColumns(std::u16string_view text, std::size_t columns,
                                       std::size_t tabWidth)
{
    columns = std::max<std::size_t>(columns, 1);
    tabWidth = std::max<std::size_t>(tabWidth, 1);
    std::vector<std::uint32_t> starts{0};
    std::size_t column = 0;
    std::size_t breakAt = 0;  // Behind the last blank of this row.
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u' ' || text[i] == u'\t') {
            column = columnAfter(text[i], column, tabWidth);
            breakAt = i + 1;
            continue;
        }
        if (column >= columns && i > starts.back()) {
            // Between the break and here there is no blank, so each unit takes one column.
            const std::size_t start = breakAt > starts.back() ? breakAt : i;
            starts.push_back(static_cast<std::uint32_t>(start));
            column = i - start;
        }
        ++column;
    }
    return starts;
}

}  // namespace tavrel
