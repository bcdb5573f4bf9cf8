#include "editor/VerticalMotion.h"

#include <optional>

namespace tavrel {

namespace {

bool endsInTerminator(const TextSnapshot& text, TextRange row)
{
    return !row.isEmpty() && text.lineContentEnd(row.end() - 1) < row.end();
}

std::optional<TextRange> neighbour(const TextSnapshot& text, const RowLayout& layout, TextRange row,
                                   VerticalDirection direction)
{
    if (direction == VerticalDirection::up) {
        if (row.location == 0)
            return std::nullopt;
        return layout.rowAt(row.location - 1);
    }
    const bool isLast = row.end() >= text.length() && !endsInTerminator(text, row);
    return isLast ? std::nullopt : std::optional(layout.rowAt(row.end()));
}

}  // namespace

std::size_t verticallyMoved(const TextSnapshot& text, const RowLayout& layout, std::size_t location,
                            VerticalDirection direction, std::size_t rowCount, double x)
{
    TextRange row = layout.rowAt(location);
    for (std::size_t moved = 0; moved < rowCount; ++moved) {
        const std::optional<TextRange> next = neighbour(text, layout, row, direction);
        if (!next)
            return direction == VerticalDirection::up ? 0 : text.length();
        row = *next;
    }
    return layout.locationAt(row, x);
}

}  // namespace tavrel
