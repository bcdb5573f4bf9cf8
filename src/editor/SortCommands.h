#pragma once

#include "editor/TextSnapshot.h"
#include "platform/TextRange.h"

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// The lines of `block` in ascending order of their UTF-16 units. Terminators stay where they are.
TextSnapshot sortedBlock(const TextSnapshot& text, TextRange block);

/// Sorts the lines of the selection.
void sortLines(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
