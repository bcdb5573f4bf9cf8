#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// Takes the line comments off the lines of the selection where all of them have one, and puts one
/// before each of them otherwise.
void comment(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
