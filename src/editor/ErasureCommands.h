#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

// Deletions to the left of every cursor, or of the selection.

/// The selection, or the unit before each cursor.
void erase(EditorPane& pane, const EditorCommand& command);
/// The part of a word before each cursor.
void eraseWord(EditorPane& pane, const EditorCommand& command);
/// The whole word before each cursor.
void eraseFullWord(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
