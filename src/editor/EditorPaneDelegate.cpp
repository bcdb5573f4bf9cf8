#include "editor/EditorPaneDelegate.h"

#include "editor/EditorPane.h"

namespace tavrel {

EditorPane* EditorPaneDelegate::editorPaneWantsFileShown(EditorPane& pane,
                                                         const std::filesystem::path& path)
{
    return pane.openLocation(path) == OpenResult::opened ? &pane : nullptr;
}

}  // namespace tavrel
