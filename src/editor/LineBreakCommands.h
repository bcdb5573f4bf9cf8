#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// Breaks the line at each cursor. The new line takes over the indentation, and is indented once
/// more behind an opening bracket or a colon.
void newLine(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
