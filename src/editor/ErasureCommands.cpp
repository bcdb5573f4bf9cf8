#include "editor/ErasureCommands.h"

#include "editor/CursorEdits.h"
#include "editor/WordRanges.h"

namespace tavrel {

namespace {

/// Erases the range that `rangeBefore` gives for each cursor, or for the selection's location.
template<typename RangeBefore>
void eraseRangesBefore(EditorPane& pane, RangeBefore rangeBefore)
{
    pane.collapseOccurrences(1);
    const TextSnapshot text = pane.text();
    if (pane.actsAtEveryCursor()) {
        applyAtEveryCursor(pane, [&](std::size_t cursor) {
            const TextRange range = rangeBefore(text, cursor);
            return MultiCursorEdit{range, {}, range.location};
        });
        return;
    }
    pane.clearSecondaryCursors();
    const TextRange range = rangeBefore(text, pane.selectedRange().location);
    if (!range.isEmpty())
        pane.replaceText(range, {});
}

}  // namespace

void erase(EditorPane& pane, const EditorCommand&)
{
    pane.collapseOccurrences(1);
    if (pane.eraseAtCursors())
        return;
    const TextRange selection = pane.selectedRange();
    if (!selection.isEmpty())
        pane.replaceText(selection, {});
    else if (selection.location > 0)
        pane.replaceText({selection.location - 1, 1}, {});
}

void eraseWord(EditorPane& pane, const EditorCommand&)
{
    eraseRangesBefore(pane, wordPartBefore);
}

void eraseFullWord(EditorPane& pane, const EditorCommand&)
{
    eraseRangesBefore(pane, [](const TextSnapshot& text, std::size_t location) {
        return wordsBefore(text, location, 1);
    });
}

}  // namespace tavrel
