#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// Puts a copy of the selection behind it and selects that; with nothing selected, puts a copy of
/// the line of every cursor above it.
void duplicate(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
