#include "editor/StripCommands.h"

#include "editor/CursorEdits.h"
#include "editor/TextCursor.h"

#include <optional>

namespace tavrel {

namespace {

/// Finds what "strip" takes away between a limit and a place behind it.
class SpaceFinder {
public:
    explicit SpaceFinder(const TextSnapshot& text) : cursor_(text) {}

    /// The spaces directly before `place`; else the nearest run of two or more, which becomes one;
    /// else the nearest single space. The cursor stays behind the units it stood behind.
    std::optional<MultiCursorEdit> edit(std::size_t place, std::size_t limit)
    {
        const TextRange before = runBefore(place, limit);
        if (!before.isEmpty())
            return MultiCursorEdit{before, {}, before.location};
        std::optional<TextRange> single;
        for (TextRange run = nextRun(place, limit); !run.isEmpty();
             run = nextRun(run.location, limit)) {
            if (run.length > 1)
                return MultiCursorEdit{run, TextSnapshot(u" "), place - (run.length - 1)};
            if (!single)
                single = run;
        }
        if (single)
            return MultiCursorEdit{*single, {}, place - 1};
        return std::nullopt;
    }

    /// Behind the leading spaces of the line that starts at `lineStart`, at most at `end`.
    std::size_t behindLeadingSpaces(std::size_t lineStart, std::size_t end)
    {
        std::size_t place = lineStart;
        while (place < end && cursor_.unitAt(place) == u' ')
            ++place;
        return place;
    }

private:
    TextRange runBefore(std::size_t place, std::size_t limit)
    {
        std::size_t start = place;
        while (start > limit && cursor_.unitAt(start - 1) == u' ')
            --start;
        return {start, place - start};
    }

    TextRange nextRun(std::size_t place, std::size_t limit)
    {
        while (place > limit && cursor_.unitAt(place - 1) != u' ')
            --place;
        return runBefore(place, limit);
    }

    TextCursor cursor_;
};

}  // namespace

MultiCursorEdit stripEdit(const TextSnapshot& text, std::size_t cursor, std::size_t lineStart)
{
    SpaceFinder finder(text);
    const std::size_t textStart = finder.behindLeadingSpaces(lineStart, cursor);
    if (const auto edit = finder.edit(cursor, textStart))
        return *edit;
    return finder.edit(cursor, lineStart).value_or(MultiCursorEdit{{cursor, 0}, {}, cursor});
}

void strip(EditorPane& pane, const EditorCommand&)
{
    const TextSnapshot text = pane.text();
    editAtEveryCursor(pane, [&](std::size_t cursor) {
        return stripEdit(text, cursor, text.lineRange({cursor, 0}).location);
    });
}

}  // namespace tavrel
