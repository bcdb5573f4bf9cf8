#include "editor/CaseCommands.h"

#include "editor/CursorEdits.h"
#include "editor/WordRanges.h"
#include "platform/Unicode.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tavrel {

namespace {

using CaseMapping = std::u16string (*)(std::u16string_view text);

TextSnapshot mapped(const TextSnapshot& text, TextRange range, CaseMapping mapping)
{
    return TextSnapshot(mapping(text.text(range)));
}

void mapCharacters(EditorPane& pane, CaseMapping mapping)
{
    const TextSnapshot text = pane.text();
    const TextRange selection = pane.selectedRange();
    const auto unitAt = [&](std::size_t location) {
        return clampedRange({location, 1}, text.length());
    };
    if (pane.actsAtEveryCursor()) {
        applyAtEveryCursor(pane, [&](std::size_t cursor) {
            const TextRange unit = unitAt(cursor);
            return MultiCursorEdit{unit, mapped(text, unit, mapping), cursor};
        });
        return;
    }
    const TextRange unit = unitAt(selection.location);
    pane.replaceText(unit, mapped(text, unit, mapping), selection);
}

std::u16string capitalised(std::u16string_view text)
{
    return withFirstCharacterUppercased(lowercased(text));
}

void mapWords(EditorPane& pane, CaseMapping mapping)
{
    const TextSnapshot text = pane.text();
    const TextRange selection = pane.selectedRange();
    if (!selection.isEmpty()) {
        const TextSnapshot replacement = mapped(text, selection, mapping);
        pane.replaceText(selection, replacement,
                         TextRange{selection.location, replacement.length()});
        return;
    }
    editAtEveryCursor(pane, [&](std::size_t cursor) {
        const TextRange word = wordRangeAt(text, cursor);
        return MultiCursorEdit{word, mapped(text, word, mapping), cursor};
    });
}

}  // namespace

void upperChar(EditorPane& pane, const EditorCommand&)
{
    mapCharacters(pane, uppercased);
}

void lowerChar(EditorPane& pane, const EditorCommand&)
{
    mapCharacters(pane, lowercased);
}

void upperWord(EditorPane& pane, const EditorCommand&)
{
    const TextSnapshot text = pane.text();
    editAtEveryCursor(pane, [&](std::size_t cursor) {
        const TextRange word = wordsBefore(text, cursor, 1);
        return MultiCursorEdit{word, mapped(text, word, capitalised), {}};
    });
}

void allLowerWord(EditorPane& pane, const EditorCommand&)
{
    mapWords(pane, lowercased);
}

void allUpperWord(EditorPane& pane, const EditorCommand&)
{
    mapWords(pane, uppercased);
}

}  // namespace tavrel
