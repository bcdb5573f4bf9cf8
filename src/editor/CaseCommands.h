#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

// Upper and lower case, by the full mappings of Unicode: a text may grow.

/// The unit at every cursor; cursors and selection stay.
void upperChar(EditorPane& pane, const EditorCommand& command);
void lowerChar(EditorPane& pane, const EditorCommand& command);
/// The word before every cursor gets a capital and small letters behind it.
void upperWord(EditorPane& pane, const EditorCommand& command);
/// The selection, or the word around every cursor.
void allLowerWord(EditorPane& pane, const EditorCommand& command);
void allUpperWord(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
