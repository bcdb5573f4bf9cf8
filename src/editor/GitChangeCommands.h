#pragma once

#include "git/GitLineDiff.h"

#include <cstdint>
#include <optional>

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// The first line of the next block of changed lines behind `currentLine`, or of the first block
/// where no other follows; absent where nothing has changed. Lines are LF lines from 1; marks past
/// `lineCount` count as on the last line. Costs O(marks).
std::optional<std::int64_t> nextChangedBlock(const GitLineDiff& diff, std::int64_t lineCount,
                                             std::int64_t currentLine);

/// "nextGitChange": puts the cursor at the start of that line.
void nextGitChange(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
