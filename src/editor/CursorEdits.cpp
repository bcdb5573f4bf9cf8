#include "editor/CursorEdits.h"

#include "editor/BlockLines.h"

namespace tavrel {

void applyAtOneCursor(EditorPane& pane, const MultiCursorEdit& edit)
{
    pane.clearSecondaryCursors();
    if (pane.text().slice(edit.range) == edit.replacement)
        return;
    const std::size_t behind = edit.range.location + edit.replacement.length();
    pane.replaceText(edit.range, edit.replacement,
                     TextRange{edit.cursorAfterLocation.value_or(behind), 0});
}

void replaceBlock(EditorPane& pane, TextRange block, std::vector<TextEdit> edits)
{
    const TextSnapshot replacement = editedBlock(pane.text(), block, std::move(edits));
    pane.replaceText(block, replacement, TextRange{block.location, replacement.length()});
}

}  // namespace tavrel
