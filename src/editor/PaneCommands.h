#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// Runs `command` on `pane` if it is one that acts within a single pane, and answers whether it is.
bool runPaneCommand(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
