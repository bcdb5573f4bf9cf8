#include "editor/LinkAtOffset.h"

#include "editor/TextCursor.h"
#include "highlight/Links.h"
#include "platform/Unicode.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tavrel {

namespace {

/// Whether an address ends before the unit.
bool endsLink(char16_t unit)
{
    return std::u16string_view(u"<>\"'`").find(unit) != std::u16string_view::npos ||
           hasWhiteSpaceProperty(unit);
}

}  // namespace

std::optional<TextRange> linkAtOffset(const TextSnapshot& text, std::size_t offset)
{
    constexpr std::size_t reach = 64 * 1024;
    if (offset >= text.length())
        return std::nullopt;
    const std::size_t first = offset - std::min(offset, reach);
    const std::size_t last = std::min(offset + reach, text.length());
    TextCursor cursor(text);
    std::size_t start = offset;
    while (start > first && !endsLink(cursor.unitAt(start - 1)))
        --start;
    std::size_t end = offset;
    while (end < last && !endsLink(cursor.unitAt(end)))
        ++end;
    for (TextRange link : linkRanges(text.text({start, end - start}))) {
        link.location += start;
        if (link.contains(offset))
            return link;
    }
    return std::nullopt;
}

}  // namespace tavrel
