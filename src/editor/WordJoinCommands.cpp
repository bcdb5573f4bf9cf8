#include "editor/WordJoinCommands.h"

#include "editor/CursorEdits.h"
#include "editor/WordRanges.h"
#include "platform/Unicode.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace tavrel {

std::u16string joinedWords(std::u16string_view text, FirstWord first)
{
    std::u16string joined;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        while (at < text.size() && !hasWhiteSpaceProperty(text[at]))
            ++at;
        if (at == start) {
            ++at;
            continue;
        }
        const std::u16string word = lowercased(text.substr(start, at - start));
        const bool staysLower = joined.empty() && first == FirstWord::lower;
        joined += staysLower ? word : withFirstCharacterUppercased(word);
    }
    return joined;
}

namespace {

void joinWords(EditorPane& pane, const EditorCommand& command, FirstWord first)
{
    const TextSnapshot text = pane.text();
    const int wordCount = static_cast<int>(
        std::clamp<std::int64_t>(command.integer("words", 2), 1, std::numeric_limits<int>::max()));
    editAtEveryCursor(pane, [&](std::size_t cursor) {
        const TextRange range = wordsBefore(text, cursor, wordCount);
        const std::u16string joined = joinedWords(text.text(range), first);
        if (joined.empty())
            return MultiCursorEdit{{cursor, 0}, {}, cursor};
        return MultiCursorEdit{range, TextSnapshot(joined), {}};
    });
}

}  // namespace

void camelCase(EditorPane& pane, const EditorCommand& command)
{
    joinWords(pane, command, FirstWord::lower);
}

void typeCase(EditorPane& pane, const EditorCommand& command)
{
    joinWords(pane, command, FirstWord::capitalised);
}

}  // namespace tavrel
