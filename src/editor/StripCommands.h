#pragma once

#include "editor/MultiCursorEdit.h"

#include <cstddef>

namespace tavrel {

class EditorPane;
struct EditorCommand;
class TextSnapshot;

/// What "strip" does at a cursor in a line that starts at `lineStart`; an empty edit where there is
/// no space to its left.
MultiCursorEdit stripEdit(const TextSnapshot& text, std::size_t cursor, std::size_t lineStart);

/// Takes spaces away to the left of every cursor, nearest ones first; the indentation of the line
/// comes last.
void strip(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
