#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// Takes spaces away to the left of every cursor, nearest ones first; the indentation of the line
/// comes last.
void strip(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
