#include "editor/CompletionCommands.h"

#include "editor/EditorPane.h"
#include "editor/IndentCommands.h"

namespace tavrel {

void autocomplete(EditorPane& pane, const EditorCommand& command)
{
    const bool continuesTyping =
        pane.lastActionWasTyping() && pane.selectedRange().isEmpty() && !pane.hasSecondaryCursors();
    if (!continuesTyping || !pane.offerCompletions())
        indent(pane, command);
}

}  // namespace tavrel
