#include "editor/TextSearch.h"

#include <algorithm>
#include <string>

namespace tavrel {

std::optional<TextRange> firstMatch(const TextSnapshot& text, std::u16string_view needle,
                                    TextRange part)
{
    std::optional<TextRange> first;
    forEachMatch(text, needle, part, [&first](TextRange place) {
        first = place;
        return false;
    });
    return first;
}

void forEachMatch(const TextSnapshot& text, std::u16string_view needle, TextRange part,
                  const std::function<bool(TextRange place)>& visit)
{
    if (needle.empty())
        return;
    const TextRange searched = clampedRange(part, text.length());
    std::u16string window;  // The units from windowStart on that may still begin a match.
    std::size_t windowStart = searched.location;
    text.forEachChunk(searched, [&](std::u16string_view chunk) {
        window.append(chunk);
        std::size_t from = 0;
        for (;;) {
            const std::size_t found = window.find(needle, from);
            if (found == std::u16string::npos)
                break;
            if (!visit({windowStart + found, needle.size()}))
                return false;
            from = found + needle.size();
        }
        const std::size_t tail = std::min(window.size() - from, needle.size() - 1);
        windowStart += window.size() - tail;
        window.erase(0, window.size() - tail);
        return true;
    });
}

}  // namespace tavrel
