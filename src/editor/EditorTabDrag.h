#pragma once

#include "editor/WeakEditorPane.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

struct EditorTab;

/// The type under which the token of a dragged tab lies on the pasteboard of the drag.
inline constexpr std::string_view editorTabDragType = "com.tavrel-code.editor-tab";

/// The drag in progress.
struct DraggedEditorTab {
    WeakEditorPane source;
    std::size_t sourceIndex = 0;
    std::string token;             // What the pasteboard holds.
    std::weak_ptr<EditorTab> tab;  // The one at `sourceIndex` when the drag began.
};

/// Carries tabs from pane to pane; one for the whole application. Main thread only.
class EditorTabDrag {
public:
    /// How far the pointer moves, in points, before a press on a tab becomes a drag.
    static constexpr double startDistance = 4.0;

    /// Begins a drag, in place of one that has not ended, and answers its token. Empty, with
    /// nothing begun, for a tab that is not there.
    std::string begin(EditorPane& source, std::size_t sourceIndex);

    /// Whether the tab with this token may be dropped on the pane: not on its own one, and not once
    /// it has gone from there.
    bool canDrop(EditorPane& target, std::string_view token) const;

    /// Moves the tab to the pane, where it becomes the active one, and ends the drag. Does nothing
    /// where it may not be dropped.
    void drop(EditorPane& target, std::string_view token);

    /// The drag is over, with a drop or without.
    void end() { dragged_.reset(); }

    const std::optional<DraggedEditorTab>& dragged() const { return dragged_; }

private:
    std::optional<DraggedEditorTab> dragged_;
};

}  // namespace tavrel
