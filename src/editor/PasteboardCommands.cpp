#include "editor/PasteboardCommands.h"

#include "editor/CursorEdits.h"
#include "platform/Pasteboard.h"

#include <optional>
#include <string>

namespace tavrel {

namespace {

TextRange lineAt(const TextSnapshot& text, std::size_t location)
{
    return text.lineRange({location, 0});
}

void addFinalLineFeed(std::u16string& text)
{
    if (!text.ends_with(u'\n'))
        text += u'\n';
}

std::u16string lineText(const TextSnapshot& text, TextRange line)
{
    std::u16string copied = text.text(line);
    addFinalLineFeed(copied);
    return copied;
}

/// What "cut" removes of the line at `location`: the line, or on an empty last line the terminator
/// before it.
TextRange removalRange(const TextSnapshot& text, std::size_t location)
{
    const TextRange line = lineAt(text, location);
    if (!line.isEmpty() || line.location == 0)
        return line;
    const std::size_t terminator = text.lineContentEnd(line.location - 1);
    return {terminator, line.location - terminator};
}

/// The lines that the cursors stand in, each once and each ending in a line feed.
std::u16string linesOfCursors(const EditorPane& pane)
{
    const TextSnapshot& text = pane.text();
    std::u16string lines;
    std::optional<std::size_t> lastStart;
    for (const std::size_t cursor : pane.allCursorLocations()) {
        const TextRange line = lineAt(text, cursor);
        if (lastStart != line.location)
            lines += lineText(text, line);
        lastStart = line.location;
    }
    return lines;
}

}  // namespace

void copy(EditorPane& pane, const EditorCommand&)
{
    Pasteboard& pasteboard = pane.services().pasteboard;
    const TextRange selection = pane.selectedRange();
    if (selection.isEmpty()) {
        pasteboard.setContents({linesOfCursors(pane), true});
        return;
    }
    pane.clearSecondaryCursors();
    pasteboard.setContents({pane.text().text(selection), false});
}

void cut(EditorPane& pane, const EditorCommand& command)
{
    copy(pane, command);
    if (!pane.selectedRange().isEmpty()) {
        pane.replaceText(pane.selectedRange(), {});
        return;
    }
    const TextSnapshot text = pane.text();
    editAtEveryLine(pane, [&](std::size_t cursor, TextRange) {
        const TextRange removed = removalRange(text, cursor);
        return MultiCursorEdit{removed, {}, removed.location};
    });
}

void paste(EditorPane& pane, const EditorCommand&)
{
    std::optional<PasteboardContents> pasted = pane.services().pasteboard.contents();
    if (!pasted)
        return;
    pane.collapseOccurrences(1);
    if (pane.insertAtCursors(TextSnapshot(pasted->text), pane.selectedRange()))
        return;
    const TextRange selection = pane.selectedRange();
    if (selection.isEmpty() && pasted->isWholeLines) {
        addFinalLineFeed(pasted->text);
        const std::size_t lineStart = lineAt(pane.text(), selection.location).location;
        const std::size_t behind = lineStart + pasted->text.size();
        pane.replaceText({lineStart, 0}, TextSnapshot(pasted->text), TextRange{behind, 0});
        return;
    }
    pane.replaceText(selection, TextSnapshot(pasted->text));
}

}  // namespace tavrel
