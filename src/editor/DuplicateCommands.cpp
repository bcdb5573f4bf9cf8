#include "editor/DuplicateCommands.h"

#include "editor/BlockLines.h"
#include "editor/CursorEdits.h"

namespace tavrel {

namespace {

/// The line with its terminator, and with a line feed behind it unless it ends in one.
TextSnapshot endedLine(const TextSnapshot& text, TextRange line)
{
    if (!line.isEmpty() && text.unitAt(line.end() - 1) == u'\n')
        return text.slice(line);
    return editedBlock(text, line, {{{line.end(), 0}, TextSnapshot(u"\n")}});
}

}  // namespace

void duplicate(EditorPane& pane, const EditorCommand&)
{
    const TextSnapshot text = pane.text();
    const TextRange selection = pane.selectedRange();
    if (!selection.isEmpty()) {
        pane.replaceText({selection.end(), 0}, text.slice(selection),
                         TextRange{selection.end(), selection.length});
        return;
    }
    editAtEveryLine(pane, [&](std::size_t cursor, TextRange line) {
        const TextSnapshot copy = endedLine(text, line);
        return MultiCursorEdit{{line.location, 0}, copy, cursor + copy.length()};
    });
}

}  // namespace tavrel
