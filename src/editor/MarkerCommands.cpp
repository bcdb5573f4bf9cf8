#include "editor/MarkerCommands.h"

#include "editor/EditorPane.h"

#include <algorithm>

namespace tavrel {

void setMarker(EditorPane& pane, const EditorCommand&)
{
    pane.setMarker(pane.selectedRange().location);
}

/// The marker does not follow edits, so it is brought into the text only here.
void selectFromMarker(EditorPane& pane, const EditorCommand&)
{
    pane.clearSecondaryCursors();
    if (!pane.activeTab().marker)
        return;
    const std::size_t marker = std::min(*pane.activeTab().marker, pane.text().length());
    pane.setMarker(marker);
    const std::size_t location = pane.selectedRange().location;
    const auto [start, end] = std::minmax(marker, location);
    pane.setSelectedRange({start, end - start});
}

void deselect(EditorPane& pane, const EditorCommand&)
{
    pane.clearSecondaryCursors();
    pane.setSelectedRange({pane.selectedRange().location, 0});
    pane.setMarker({});
}

}  // namespace tavrel
