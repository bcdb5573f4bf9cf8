#include "editor/LineLimits.h"

#include "editor/TextCursor.h"
#include "platform/Unicode.h"

namespace tavrel {

std::size_t lineStartOfText(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const std::size_t contentEnd = text.lineContentEnd(location);
    std::size_t place = text.lineRange({location, 0}).location;
    while (place < contentEnd && isWhitespace(cursor.unitAt(place)))
        ++place;
    return place;
}

std::size_t lineEndOfText(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const std::size_t start = text.lineRange({location, 0}).location;
    std::size_t place = text.lineContentEnd(location);
    while (place > start && isWhitespace(cursor.unitAt(place - 1)))
        --place;
    return place;
}

TextRange leadingBlanks(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const TextRange line = text.lineRange({location, 0});
    std::size_t end = line.location;
    while (end < line.end() && (cursor.unitAt(end) == u' ' || cursor.unitAt(end) == u'\t'))
        ++end;
    return {line.location, end - line.location};
}

}  // namespace tavrel
