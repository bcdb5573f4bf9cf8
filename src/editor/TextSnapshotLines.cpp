#include "editor/TextSnapshot.h"
#include "editor/TextTree.h"

#include <algorithm>

namespace tavrel {

std::size_t TextSnapshot::lineCount() const
{
    return root_ ? root_->summary().breaks + 1 : 1;
}

std::size_t TextSnapshot::lineIndexAt(std::size_t location) const
{
    if (location >= length())
        return lineCount() - 1;
    const TextTreePlace place = placeOfUnit(*root_, location);
    const TextBlock& block = *place.entry->block;
    const std::size_t offset = location - place.before.units;
    const std::size_t begun =
        place.before.breaks + block.breaksBefore(offset, place.before.endsWithCr);
    // Between CR and LF a break has begun and not ended.
    const bool afterCr = offset > 0 ? block.unitAt(offset - 1) == u'\r' : place.before.endsWithCr;
    return begun - (afterCr && block.unitAt(offset) == u'\n' ? 1 : 0);
}

std::size_t TextSnapshot::lineStart(std::size_t index) const
{
    if (index == 0)
        return 0;
    if (index >= lineCount())
        return length();
    const TextTreePlace place = placeOfBreak(*root_, index);
    const TextBlock& block = *place.entry->block;
    const std::size_t offset =
        block.breakOffset(index - place.before.breaks, place.before.endsWithCr);
    const std::size_t location = place.before.units + offset + 1;
    if (block.unitAt(offset) != u'\r')
        return location;
    const char16_t next = offset + 1 < block.length() ? block.unitAt(offset + 1) : unitAt(location);
    return next == u'\n' ? location + 1 : location;
}

TextRange TextSnapshot::lineRange(TextRange range) const
{
    range = clampedRange(range, length());
    const std::size_t first = lineIndexAt(range.location);
    const std::size_t last = range.isEmpty() ? first : lineIndexAt(range.end() - 1);
    const std::size_t start = lineStart(first);
    return {start, lineStart(last + 1) - start};
}

std::size_t TextSnapshot::lineContentEnd(std::size_t location) const
{
    const std::size_t index = lineIndexAt(location);
    if (index + 1 >= lineCount())
        return length();
    const std::size_t end = lineStart(index + 1);
    const bool isCrLf = unitAt(end - 1) == u'\n' && end >= 2 && unitAt(end - 2) == u'\r';
    return end - (isCrLf ? 2 : 1);
}

std::size_t TextSnapshot::lfLineCount() const
{
    return root_ ? root_->summary().lfs + 1 : 1;
}

std::size_t TextSnapshot::lfLineIndexAt(std::size_t location) const
{
    if (location >= length())
        return lfLineCount() - 1;
    const TextTreePlace place = placeOfUnit(*root_, location);
    return place.before.lfs + place.entry->block->lfsBefore(location - place.before.units);
}

std::size_t TextSnapshot::lfLineStart(std::size_t index) const
{
    if (index == 0)
        return 0;
    if (index >= lfLineCount())
        return length();
    const TextTreePlace place = placeOfLf(*root_, index);
    return place.before.units + place.entry->block->lfOffset(index - place.before.lfs) + 1;
}

}  // namespace tavrel
