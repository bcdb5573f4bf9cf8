#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

// Indentation is always spaces, as many as the tab width says.

/// Moves the lines of the selection, or of every cursor, one step to the right.
void indent(EditorPane& pane, const EditorCommand& command);
/// Moves them one step to the left, or by one blank where there is less than a step.
void unindent(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
