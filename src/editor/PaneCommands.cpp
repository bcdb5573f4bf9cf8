#include "editor/PaneCommands.h"

#include "editor/CaseCommands.h"
#include "editor/CommentCommands.h"
#include "editor/CompletionCommands.h"
#include "editor/DuplicateCommands.h"
#include "editor/EditorPane.h"
#include "editor/ErasureCommands.h"
#include "editor/GitChangeCommands.h"
#include "editor/IndentCommands.h"
#include "editor/LineBreakCommands.h"
#include "editor/MarkerCommands.h"
#include "editor/MotionCommands.h"
#include "editor/PasteboardCommands.h"
#include "editor/SortCommands.h"
#include "editor/StripCommands.h"
#include "editor/TimestampCommands.h"
#include "editor/WordJoinCommands.h"
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
    PaneCommand{"duplicate", duplicate},
    PaneCommand{"paste", paste},
    PaneCommand{"cut", cut},
    PaneCommand{"page", page},
    PaneCommand{"line", line},
    PaneCommand{"newLine", newLine},
    PaneCommand{"indent", indent},
    PaneCommand{"unindent", unindent},
    PaneCommand{"lineBegin", lineBegin},
    PaneCommand{"lineEnd", lineEnd},
    PaneCommand{"setMarker", setMarker},
    PaneCommand{"selectFromMarker", selectFromMarker},
    PaneCommand{"deselect", deselect},
    PaneCommand{"undo", [](EditorPane& pane, const EditorCommand&) { pane.undo(); }},
    PaneCommand{"redo", [](EditorPane& pane, const EditorCommand&) { pane.redo(); }},
    PaneCommand{"selectWord", selectWord},
    PaneCommand{"selectWordAll", selectWordAll},
    PaneCommand{"camelCase", camelCase},
    PaneCommand{"typeCase", typeCase},
    PaneCommand{"titleCase", typeCase},
    PaneCommand{"upperChar", upperChar},
    PaneCommand{"lowerChar", lowerChar},
    PaneCommand{"upperWord", upperWord},
    PaneCommand{"allLowerWord", allLowerWord},
    PaneCommand{"allUpperWord", allUpperWord},
    PaneCommand{"strip", strip},
    PaneCommand{"setCursor", setCursor},
    PaneCommand{"comment", comment},
    PaneCommand{"timestamp", timestamp},
    PaneCommand{"selectAll", selectAll},
    PaneCommand{"nextGitChange", nextGitChange},
    PaneCommand{"closeFile", [](EditorPane& pane,
                                const EditorCommand&) { pane.closeTab(pane.activeTabIndex()); }},
    PaneCommand{"nextView", [](EditorPane& pane, const EditorCommand&) { pane.stepTab(1); }},
    PaneCommand{"previousView", [](EditorPane& pane, const EditorCommand&) { pane.stepTab(-1); }},
    PaneCommand{"sortLines", sortLines},
    PaneCommand{"autocomplete", autocomplete},
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
