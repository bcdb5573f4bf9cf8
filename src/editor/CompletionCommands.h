#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// Offers completions for the word that has just been typed; indents where there are none, or where
/// something else has happened since.
void autocomplete(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
