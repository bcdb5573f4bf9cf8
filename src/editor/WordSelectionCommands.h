#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// Selects the word at the cursor, then each time one more of its occurrences.
void selectWord(EditorPane& pane, const EditorCommand& command);
/// Selects all occurrences of the word.
void selectWordAll(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
