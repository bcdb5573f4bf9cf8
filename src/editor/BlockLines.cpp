#include "editor/BlockLines.h"

#include "editor/TextStorage.h"

namespace tavrel {

std::vector<BlockLine> blockLines(const TextSnapshot& text, TextRange block)
{
    std::vector<BlockLine> lines;
    std::size_t start = block.location;
    std::size_t place = block.location;
    char16_t previous = 0;
    const auto endLine = [&](std::size_t contentEnd) {
        lines.push_back({{start, contentEnd - start}, {contentEnd, place - contentEnd}});
        start = place;
    };
    text.forEachChunk(block, [&](std::u16string_view chunk) {
        for (const char16_t unit : chunk) {
            ++place;
            if (unit == u'\n')
                endLine(place - (previous == u'\r' && place - start > 1 ? 2 : 1));
            previous = unit;
        }
        return true;
    });
    if (start < block.end() || lines.empty())
        endLine(place);
    return lines;
}

TextSnapshot editedBlock(const TextSnapshot& text, TextRange block, std::vector<TextEdit> edits)
{
    for (TextEdit& edit : edits)
        edit.range.location -= block.location;
    TextStorage storage(text.slice(block));
    storage.apply(edits);
    return storage.snapshot();
}

}  // namespace tavrel
