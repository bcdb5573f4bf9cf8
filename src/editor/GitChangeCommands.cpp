#include "editor/GitChangeCommands.h"

#include "editor/EditorPane.h"

#include <algorithm>
#include <vector>

namespace tavrel {

namespace {

struct LineStretch {
    std::int64_t first;
    std::int64_t end;
};

/// Changed lines and those where something was removed, in order; stretches may touch or overlap.
std::vector<LineStretch> changedStretches(const GitLineDiff& diff, std::int64_t lineCount)
{
    std::vector<LineStretch> stretches;
    const auto add = [&](std::int64_t first, std::int64_t end) {
        const std::int64_t start = std::clamp<std::int64_t>(first, 1, lineCount);
        stretches.push_back({start, std::clamp<std::int64_t>(end, start + 1, lineCount + 1)});
    };
    for (const GitChangedLines& lines : diff.changedLines)
        add(lines.first, lines.end());
    for (const std::int64_t line : diff.deletedAfterLines)
        add(line, line + 1);
    std::sort(
        stretches.begin(), stretches.end(),
        [](const LineStretch& left, const LineStretch& right) { return left.first < right.first; });
    return stretches;
}

}  // namespace

std::optional<std::int64_t> nextChangedBlock(const GitLineDiff& diff, std::int64_t lineCount,
                                             std::int64_t currentLine)
{
    std::optional<std::int64_t> firstBlock;
    std::int64_t end = 0;  // Of the lines that belong to the blocks so far.
    for (const LineStretch& stretch :
         changedStretches(diff, std::max<std::int64_t>(lineCount, 1))) {
        const bool startsBlock = stretch.first > end;
        end = std::max(end, stretch.end);
        if (!startsBlock)
            continue;
        if (stretch.first > currentLine)
            return stretch.first;
        if (!firstBlock)
            firstBlock = stretch.first;
    }
    return firstBlock;
}

void nextGitChange(EditorPane& pane, const EditorCommand&)
{
    const std::optional<GitLineDiff>& diff = pane.document().gitLineDiff;
    if (!diff)
        return;
    const TextSnapshot& text = pane.text();
    const std::size_t current = text.lfLineIndexAt(pane.selectedRange().location);
    const std::optional<std::int64_t> line =
        nextChangedBlock(*diff, static_cast<std::int64_t>(text.lfLineCount()),
                         static_cast<std::int64_t>(current) + 1);
    if (!line)
        return;
    const TextRange start{text.lfLineStart(static_cast<std::size_t>(*line - 1)), 0};
    pane.clearSecondaryCursors();
    pane.setSelectedRange(start);
    pane.scrollToVisible(start);
}

}  // namespace tavrel
