#include "editor/TextSearch.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tavrel {

namespace {

using Visit = std::function<bool(TextRange place)>;

/// Finds short needles by trying every place, which is fastest where a mismatch shows at once.
void forEachShortMatch(const TextSnapshot& text, std::u16string_view needle, TextRange part,
                       const Visit& visit)
{
    std::u16string window;  // The units from windowStart on that may still begin a match.
    std::size_t windowStart = part.location;
    text.forEachChunk(part, [&](std::u16string_view chunk) {
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

/// For each prefix of the needle, the length of the longest shorter one that it also ends in.
std::vector<std::size_t> prefixBorders(std::u16string_view needle)
{
    std::vector<std::size_t> borders(needle.size() + 1, 0);
    std::size_t border = 0;
    for (std::size_t at = 1; at < needle.size(); ++at) {
        while (border > 0 && needle[at] != needle[border])
            border = borders[border];
        if (needle[at] == needle[border])
            ++border;
        borders[at + 1] = border;
    }
    return borders;
}

/// Finds any needle and looks at each unit once, however much the needle repeats itself.
void forEachLongMatch(const TextSnapshot& text, std::u16string_view needle, TextRange part,
                      const Visit& visit)
{
    const std::vector<std::size_t> borders = prefixBorders(needle);
    std::size_t matched = 0;
    std::size_t place = part.location;
    text.forEachChunk(part, [&](std::u16string_view chunk) {
        for (const char16_t unit : chunk) {
            ++place;
            while (matched > 0 && needle[matched] != unit)
                matched = borders[matched];
            if (needle[matched] == unit)
                ++matched;
            if (matched < needle.size())
                continue;
            if (!visit({place - needle.size(), needle.size()}))
                return false;
            matched = 0;
        }
        return true;
    });
}

}  // namespace

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
    constexpr std::size_t shortNeedle = 48;
    const TextRange searched = clampedRange(part, text.length());
    if (needle.empty() || needle.size() > searched.length)
        return;
    if (needle.size() <= shortNeedle)
        forEachShortMatch(text, needle, searched, visit);
    else
        forEachLongMatch(text, needle, searched, visit);
}

}  // namespace tavrel
