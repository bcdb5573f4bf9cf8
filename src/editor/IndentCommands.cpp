#include "editor/IndentCommands.h"

#include "editor/BlockLines.h"
#include "editor/CursorEdits.h"
#include "editor/TextCursor.h"

#include <utility>
#include <vector>

namespace tavrel {

namespace {

std::size_t stepLength(const EditorPane& pane)
{
    return static_cast<std::size_t>(pane.settings().tabWidth);
}

TextSnapshot step(const EditorPane& pane)
{
    return TextSnapshot(std::u16string(stepLength(pane), u' '));
}

/// What a line that begins at `lineStart` loses by a step to the left: a whole step of spaces, else
/// one space or tab, else nothing.
TextRange removalAt(TextCursor& cursor, std::size_t lineStart, std::size_t stepLength)
{
    std::size_t spaces = 0;
    while (spaces < stepLength && cursor.unitAt(lineStart + spaces) == u' ')
        ++spaces;
    if (spaces == stepLength)
        return {lineStart, stepLength};
    const bool beginsWithBlank = spaces > 0 || cursor.unitAt(lineStart) == u'\t';
    return {lineStart, beginsWithBlank ? std::size_t{1} : std::size_t{0}};
}

std::size_t movedByRemoval(std::size_t cursor, TextRange removal)
{
    return cursor < removal.end() ? removal.location : cursor - removal.length;
}

std::vector<TextEdit> blockIndentation(const TextSnapshot& text, TextRange block,
                                       const TextSnapshot& step)
{
    std::vector<TextEdit> edits;
    for (const BlockLine& line : blockLines(text, block))
        edits.push_back({{line.content.location, 0}, step});
    return edits;
}

std::vector<TextEdit> blockUnindentation(const TextSnapshot& text, TextRange block,
                                         std::size_t stepLength)
{
    TextCursor cursor(text);
    std::vector<TextEdit> edits;
    for (const BlockLine& line : blockLines(text, block)) {
        const TextRange removal = removalAt(cursor, line.content.location, stepLength);
        if (!removal.isEmpty())
            edits.push_back({removal, {}});
    }
    return edits;
}

}  // namespace

void indent(EditorPane& pane, const EditorCommand&)
{
    pane.collapseOccurrences(1);
    const TextSnapshot text = pane.text();
    if (!pane.selectedRange().isEmpty()) {
        const TextRange block = text.lineRange(pane.selectedRange());
        replaceBlock(pane, block, blockIndentation(text, block, step(pane)));
        return;
    }
    const TextSnapshot inserted = step(pane);
    editAtEveryLine(pane, [&](std::size_t cursor, TextRange line) {
        return MultiCursorEdit{{line.location, 0}, inserted, cursor + inserted.length()};
    });
}

void unindent(EditorPane& pane, const EditorCommand&)
{
    pane.collapseOccurrences(1);
    const TextSnapshot text = pane.text();
    if (!pane.selectedRange().isEmpty()) {
        const TextRange block = text.lineRange(pane.selectedRange());
        replaceBlock(pane, block, blockUnindentation(text, block, stepLength(pane)));
        return;
    }
    TextCursor units(text);
    editAtEveryLine(pane, [&](std::size_t cursor, TextRange line) {
        const TextRange removal = removalAt(units, line.location, stepLength(pane));
        return MultiCursorEdit{removal, {}, movedByRemoval(cursor, removal)};
    });
}

}  // namespace tavrel
