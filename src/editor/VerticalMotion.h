#pragma once

#include "editor/RowLayout.h"
#include "editor/TextSnapshot.h"

#include <cstddef>

namespace tavrel {

enum class VerticalDirection { up, down };
enum class VerticalDistance { row, page };

/// Where a cursor at `location` comes to stand `rowCount` rows further, at the distance `x` from
/// the left. Moving down from the last row goes to the end of the text, up from the first to its
/// start.
std::size_t verticallyMoved(const TextSnapshot& text, const RowLayout& layout, std::size_t location,
                            VerticalDirection direction, std::size_t rowCount, double x);

}  // namespace tavrel
