#include "editor/MotionCommands.h"

#include "editor/CursorEdits.h"
#include "editor/LineLimits.h"
#include "editor/WordRanges.h"

#include <cstdint>

namespace tavrel {

namespace {

/// `location` moved by `offset`, held within 0 to `length`. Any offset may come from a key map.
std::size_t movedBy(std::size_t location, std::int64_t offset, std::size_t length)
{
    if (offset < 0) {
        const std::size_t back = std::size_t{0} - static_cast<std::size_t>(offset);
        return location - std::min(location, back);
    }
    return location + std::min(static_cast<std::size_t>(offset), length - location);
}

VerticalDirection direction(const EditorCommand& command)
{
    return command.truth("down", true) ? VerticalDirection::down : VerticalDirection::up;
}

}  // namespace

void moveCursor(EditorPane& pane, const EditorCommand& command)
{
    const std::int64_t offset = command.integer("offset", 0);
    if (pane.collapseOccurrences(offset))
        return;
    const std::size_t length = pane.text().length();
    moveCursors(pane, [&](std::size_t location) { return movedBy(location, offset, length); });
}

void skipWord(EditorPane& pane, const EditorCommand& command)
{
    const bool forward = command.truth("forward", true);
    pane.collapseOccurrences(forward ? 1 : -1);
    const TextSnapshot text = pane.text();
    moveCursors(pane, [&](std::size_t location) {
        return forward ? wordBoundaryAfter(text, location) : wordBoundaryBefore(text, location);
    });
}

void lineBegin(EditorPane& pane, const EditorCommand&)
{
    const TextSnapshot text = pane.text();
    moveCursors(pane, [&](std::size_t location) { return lineStartOfText(text, location); });
}

void lineEnd(EditorPane& pane, const EditorCommand&)
{
    const TextSnapshot text = pane.text();
    moveCursors(pane, [&](std::size_t location) { return lineEndOfText(text, location); });
}

void setCursor(EditorPane& pane, const EditorCommand& command)
{
    const std::int64_t cursor = command.integer("cursor", 0);
    const std::size_t length = pane.text().length();
    pane.clearSecondaryCursors();
    pane.setSelectedRange({cursor < 0 ? length : movedBy(0, cursor, length), 0});
    pane.scrollToVisible(pane.selectedRange());
}

void line(EditorPane& pane, const EditorCommand& command)
{
    pane.clearSecondaryCursors();
    pane.moveVertically(direction(command), VerticalDistance::row);
}

void page(EditorPane& pane, const EditorCommand& command)
{
    pane.clearSecondaryCursors();
    pane.moveVertically(direction(command), VerticalDistance::page);
}

void selectAll(EditorPane& pane, const EditorCommand&)
{
    pane.clearSecondaryCursors();
    pane.setSelectedRange({0, pane.text().length()});
}

}  // namespace tavrel
