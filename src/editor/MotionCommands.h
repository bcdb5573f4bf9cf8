#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

// Motions: each takes every cursor, or the primary one, to another place of the text.

/// By `offset` units; selected occurrences become cursors instead.
void moveCursor(EditorPane& pane, const EditorCommand& command);
/// To the end of the next word, or with `forward: false` to the start of the one before.
void skipWord(EditorPane& pane, const EditorCommand& command);
/// To the first unit of the line that is no blank.
void lineBegin(EditorPane& pane, const EditorCommand& command);
/// Behind the last unit of the line that is no blank.
void lineEnd(EditorPane& pane, const EditorCommand& command);
/// To the offset `cursor`, or to the end of the text for a negative one.
void setCursor(EditorPane& pane, const EditorCommand& command);
/// One row down, or with `down: false` up.
void line(EditorPane& pane, const EditorCommand& command);
/// One page down, or with `down: false` up.
void page(EditorPane& pane, const EditorCommand& command);
void selectAll(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
