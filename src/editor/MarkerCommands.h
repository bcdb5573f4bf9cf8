#pragma once

namespace tavrel {

class EditorPane;
struct EditorCommand;

// The marker: one place of a tab that the user has set, from which text can be selected.

void setMarker(EditorPane& pane, const EditorCommand& command);
/// Selects what lies between the marker and the cursor.
void selectFromMarker(EditorPane& pane, const EditorCommand& command);
/// Drops the secondary cursors, the selection and the marker.
void deselect(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
