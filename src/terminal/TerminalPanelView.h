#pragma once

#include "terminal/TerminalSize.h"

#include <optional>

namespace tavrel {

class TerminalEmulator;
struct Preferences;

/// What a `TerminalViewController` tells the widgets that show it: a grid for the active session
/// and a bar of tabs. All of it happens on the main thread.
class TerminalPanelView {
public:
    virtual ~TerminalPanelView() = default;

    /// The grid shows another emulator, never null, or the same one in another state. It is the
    /// controller's, and lives until the next call or until the view is taken away.
    virtual void panelDidShow(TerminalEmulator& emulator) = 0;
    virtual void clearSelection() = 0;

    /// The rows may be others, or more of them: the height of the grid follows, its place stays
    /// or follows the output, and it is drawn anew. Comes at most once in a turn of the main
    /// queue, which under a flood of output is thousands of times a second: to draw less often
    /// than that is up to the view.
    virtual void panelDidChangeRows() = 0;

    /// Whether the end of the output is to stay in sight, until the user scrolls away from it.
    virtual bool isFollowingOutput() const = 0;
    /// The end of the output comes into sight and stays there.
    virtual void followOutput() = 0;

    /// The cells that the grid has room for; absent while it has no size.
    virtual std::optional<TerminalSize> fittingSize() const = 0;
    /// Whether the panel stands in a window, so that a session may start and take the keys.
    virtual bool isInWindow() const = 0;
    virtual void takeFocus() = 0;

    /// Tabs, their titles, which one is active, or whether the bar is shown have changed.
    virtual void panelDidChangeTabs() = 0;
    /// Fonts and colours are to be taken from `preferences` anew. Where that changes the size of a
    /// cell, `TerminalViewController::syncGridSize` follows by itself.
    virtual void panelDidChangePreferences(const Preferences& preferences) = 0;
};

}  // namespace tavrel
