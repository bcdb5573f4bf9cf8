#include "editor/LineBreakCommands.h"

#include "editor/CursorEdits.h"
#include "editor/LineLimits.h"
#include "editor/TextCursor.h"
#include "platform/Unicode.h"

#include <string>
#include <string_view>

namespace tavrel {

namespace {

/// The characters behind which a new line is indented once more.
constexpr std::u16string_view indentingEnds = u"{[(:";

/// The last unit of the line at `location` before that location that is no blank, or 0.
char16_t lastTextUnitBefore(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const std::size_t start = text.lineRange({location, 0}).location;
    for (std::size_t place = location; place > start; --place) {
        const char16_t unit = cursor.unitAt(place - 1);
        if (!isWhitespaceOrNewline(unit))
            return unit;
    }
    return 0;
}

TextSnapshot breakText(const TextSnapshot& text, std::size_t location, int tabWidth)
{
    std::u16string broken = u"\n" + text.text(leadingBlanks(text, location));
    const char16_t last = lastTextUnitBefore(text, location);
    if (last != 0 && indentingEnds.find(last) != std::u16string_view::npos)
        broken.append(static_cast<std::size_t>(tabWidth), u' ');
    return TextSnapshot(broken);
}

}  // namespace

void newLine(EditorPane& pane, const EditorCommand&)
{
    pane.collapseOccurrences(1);
    const TextSnapshot text = pane.text();
    const int tabWidth = pane.settings().tabWidth;
    if (pane.actsAtEveryCursor()) {
        applyAtEveryCursor(pane, [&](std::size_t cursor) {
            return MultiCursorEdit{{cursor, 0}, breakText(text, cursor, tabWidth), {}};
        });
        return;
    }
    pane.clearSecondaryCursors();
    const TextRange selection = pane.selectedRange();
    pane.replaceText(selection, breakText(text, selection.location, tabWidth));
}

}  // namespace tavrel
