#pragma once

#include "editor/TextEdit.h"
#include "editor/UndoHistory.h"

#include <vector>

namespace tavrel {

enum class ReplayDirection { backwards, forwards };

/// The edits that take a text over one undo group, as batches to be applied one after another.
///
/// Each batch is in the coordinates of the text as it stands before that batch. Neighbouring
/// replacements that were made from left to right share one batch, so a key press at thousands of
/// cursors is taken back in one pass over the text.
std::vector<std::vector<TextEdit>> replayBatches(const EditorUndoGroup& group,
                                                 ReplayDirection direction);

}  // namespace tavrel
