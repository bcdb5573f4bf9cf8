#include "editor/SortCommands.h"

#include "editor/BlockLines.h"
#include "editor/EditorPane.h"
#include "editor/TextStorage.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tavrel {

namespace {

struct SortedLine {
    std::uint64_t beginning;  // The first four units: most comparisons need no more.
    std::u16string_view content;
    std::size_t index;

    bool operator<(const SortedLine& other) const
    {
        if (beginning != other.beginning)
            return beginning < other.beginning;
        return content < other.content;
    }
};

std::uint64_t beginningOf(std::u16string_view content)
{
    std::uint64_t beginning = 0;
    for (std::size_t at = 0; at < 4; ++at)
        beginning = beginning << 16U | (at < content.size() ? content[at] : 0U);
    return beginning;
}

std::vector<SortedLine> sortedContents(const std::vector<BlockLine>& lines,
                                       std::u16string_view units, std::size_t blockStart)
{
    std::vector<SortedLine> sorted;
    sorted.reserve(lines.size());
    for (const BlockLine& line : lines) {
        const std::u16string_view content =
            units.substr(line.content.location - blockStart, line.content.length);
        sorted.push_back({beginningOf(content), content, sorted.size()});
    }
    std::stable_sort(sorted.begin(), sorted.end());
    return sorted;
}

/// The lines put together from slices, which keep the bytes that are no text.
TextSnapshot joinedSlices(const TextSnapshot& text, const std::vector<BlockLine>& lines,
                          const std::vector<SortedLine>& sorted)
{
    std::vector<TextEdit> pieces;
    pieces.reserve(2 * lines.size());
    for (std::size_t at = 0; at < lines.size(); ++at) {
        pieces.push_back({{}, text.slice(lines[sorted[at].index].content)});
        pieces.push_back({{}, text.slice(lines[at].terminator)});
    }
    TextStorage storage;
    storage.apply(pieces);
    return storage.snapshot();
}

TextSnapshot joinedUnits(std::u16string_view units, std::size_t blockStart,
                         const std::vector<BlockLine>& lines, const std::vector<SortedLine>& sorted)
{
    std::u16string joined;
    joined.reserve(units.size());
    for (std::size_t at = 0; at < lines.size(); ++at) {
        const TextRange terminator = lines[at].terminator;
        joined += sorted[at].content;
        joined += units.substr(terminator.location - blockStart, terminator.length);
    }
    return TextSnapshot(joined);
}

}  // namespace

TextSnapshot sortedBlock(const TextSnapshot& text, TextRange block)
{
    const std::vector<BlockLine> lines = blockLines(text, block);
    const std::u16string units = text.text(block);
    const std::vector<SortedLine> sorted = sortedContents(lines, units, block.location);
    const bool mayHoldRawBytes = units.find(u'\uFFFD') != std::u16string::npos;
    return mayHoldRawBytes ? joinedSlices(text, lines, sorted)
                           : joinedUnits(units, block.location, lines, sorted);
}

void sortLines(EditorPane& pane, const EditorCommand&)
{
    pane.clearSecondaryCursors();
    const TextSnapshot text = pane.text();
    const TextRange block = text.lineRange(pane.selectedRange());
    const TextSnapshot sorted = sortedBlock(text, block);
    if (sorted == text.slice(block))
        return;
    pane.replaceText(block, sorted, TextRange{block.location, sorted.length()});
}

}  // namespace tavrel
