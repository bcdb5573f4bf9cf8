#include "editor/PaneCommands.h"

#include "editor/EditorPane.h"
#include "editor/ErasureCommands.h"
#include "editor/LineBreakCommands.h"
#include "editor/MarkerCommands.h"
#include "editor/MotionCommands.h"
#include "editor/PasteboardCommands.h"
#include "editor/WordSelectionCommands.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavrel {

namespace {

struct PaneCommand {
    std::string_view name;
    void (*run)(EditorPane& pane, const EditorCommand& command);
};

constexpr std::array paneCommands{
    PaneCommand{"moveCursor", moveCursor},
    PaneCommand{"erase", erase},
    PaneCommand{"eraseWord", eraseWord},
    PaneCommand{"eraseFullWord", eraseFullWord},
    PaneCommand{"skipWord", skipWord},
    PaneCommand{"copy", copy},
    PaneCommand{"paste", paste},
    PaneCommand{"cut", cut},
    PaneCommand{"page", page},
    PaneCommand{"line", line},
    PaneCommand{"newLine", newLine},
    PaneCommand{"lineBegin", lineBegin},
    PaneCommand{"lineEnd", lineEnd},
    PaneCommand{"setMarker", setMarker},
    PaneCommand{"selectFromMarker", selectFromMarker},
    PaneCommand{"deselect", deselect},
    PaneCommand{"undo", [](EditorPane& pane, const EditorCommand&) { pane.undo(); }},
    PaneCommand{"redo", [](EditorPane& pane, const EditorCommand&) { pane.redo(); }},
    PaneCommand{"selectWord", selectWord},
    PaneCommand{"selectWordAll", selectWordAll},
    PaneCommand{"setCursor", setCursor},
    PaneCommand{"selectAll", selectAll},
};

}  // namespace

bool runPaneCommand(EditorPane& pane, const EditorCommand& command)
{
    const auto* known =
        std::find_if(paneCommands.begin(), paneCommands.end(),
                     [&](const PaneCommand& candidate) { return candidate.name == command.name; });
    if (known == paneCommands.end())
        return false;
    known->run(pane, command);
    return true;
}

}  // namespace tavrel
