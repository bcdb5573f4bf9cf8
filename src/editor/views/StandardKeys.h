#pragma once

#include "editor/views/ViewRows.h"

#include <QKeySequence>

#include <cstddef>
#include <optional>

class QKeyEvent;

namespace tavrel {

/// Where a key that the key map leaves alone takes the cursor, as in any text field of the desktop.
struct StandardMotion {
    std::size_t location = 0;
    bool extendsSelection = false;
    /// Goes to another row, or to an end of the text, whatever row the cursor was in.
    bool isVertical = false;
    /// The distance from the left that a motion by rows has kept.
    std::optional<double> goalX;
};

/// What `event` does by the desktop's own conventions: arrows, Home and End, Page Up and Page Down,
/// with Ctrl by words and with Shift selecting. `head` is the moving end of `selection`, `goalX`
/// the distance from the left that a motion by rows before this one has kept. Nothing for any other
/// key.
std::optional<StandardMotion> standardMotion(const QKeyEvent& event, const ViewRows& rows,
                                             TextRange selection, std::size_t head,
                                             std::optional<double> goalX = {});

/// What Delete and its like erase with the cursor at `selection`, by the same conventions.
std::optional<TextRange> standardErasure(const QKeyEvent& event, const ViewRows& rows,
                                         TextRange selection);

}  // namespace tavrel
