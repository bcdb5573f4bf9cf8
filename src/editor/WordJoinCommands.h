#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

// The last `words` words before every cursor, written as one.

/// All but the first capitalised: "foo bar" becomes "fooBar".
void camelCase(EditorPane& pane, const EditorCommand& command);
/// All of them capitalised: "foo bar" becomes "FooBar".
void typeCase(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
