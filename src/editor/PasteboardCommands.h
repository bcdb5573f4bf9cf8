#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

// Copying and pasting. With nothing selected, whole lines are copied and cut, and go back as lines.

void copy(EditorPane& pane, const EditorCommand& command);
void cut(EditorPane& pane, const EditorCommand& command);
void paste(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
