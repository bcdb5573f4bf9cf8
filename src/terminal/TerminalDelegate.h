#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tavrel {

class TerminalViewController;

/// A question that stops the user. The first button goes on with what was asked for.
struct TerminalQuestion {
    std::u16string message;
    std::u16string information;  // May be empty.
    std::vector<std::u16string> buttons;
};

/// What a terminal panel asks of the workspace. All of it happens on the main thread.
class TerminalDelegate {
public:
    virtual ~TerminalDelegate() = default;

    /// A tab was added, closed or named: what is remembered of the window has changed.
    virtual void terminalTabsDidChange(TerminalViewController& terminal) = 0;
    /// The editor column `index`, from 0, is to have the keys.
    virtual void terminalWantsEditorFocus(TerminalViewController& terminal, std::size_t index) = 0;
    /// A program rang the bell, in a tab that may not be the one in sight. Told at once, and at
    /// most ten times in a second.
    virtual void terminalDidRingBell(TerminalViewController& terminal) = 0;
    /// Whether the first button was pressed. The panel may change while the user thinks.
    virtual bool terminalWantsAnswer(TerminalViewController& terminal,
                                     const TerminalQuestion& question) = 0;
    /// The text of a field that begins with `text`, 260 wide and 24 high; absent unless the first
    /// button was pressed. The panel may change while the user types.
    virtual std::optional<std::u16string> terminalWantsText(TerminalViewController& terminal,
                                                            const TerminalQuestion& question,
                                                            const std::u16string& text) = 0;
};

}  // namespace tavrel
