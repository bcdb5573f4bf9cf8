#pragma once

#include "platform/KeyEvent.h"
#include "terminal/TerminalDelegate.h"
#include "terminal/TerminalKeyMap.h"
#include "terminal/TerminalPanelView.h"
#include "terminal/TerminalServices.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

struct TerminalSession;

/// The terminal panel under an editor column, without its pixels: a list of sessions, of which a
/// view shows the active one, and the roads between shells, emulators and the view.
///
/// Main thread only. There are no sessions before the first view; from then on there is always
/// one. Indices count from 0; one out of range is no tab. Destroying it ends all shells.
class TerminalViewController {
public:
    enum class Focus { take, leave };

    explicit TerminalViewController(TerminalServices services);
    ~TerminalViewController();
    TerminalViewController(const TerminalViewController&) = delete;
    TerminalViewController& operator=(const TerminalViewController&) = delete;

    /// Both may be null, own nothing, and are to be taken away before they go. The first view
    /// brings the first session into being, and what `restoreTabs` was asked for before.
    void setView(TerminalPanelView* view);
    void setDelegate(TerminalDelegate* delegate) { delegate_ = delegate; }

    // What there is.

    std::size_t tabCount() const { return sessions_.size(); }
    std::size_t activeSessionIndex() const { return activeSessionIndex_; }
    /// The emulator in sight; null before the first view.
    TerminalEmulator* activeEmulator() const;
    std::vector<std::u16string> tabNames() const;
    /// What a tab shows: its name, or else its number from 1.
    std::u16string tabTitle(std::size_t index) const;
    /// Whether there is something to choose from: two tabs, or one with a name.
    bool showsTabBar() const;
    /// By tab, where its shell is, for a later `restoreTabs`. Empty for the home folder.
    std::vector<std::filesystem::path> tabWorkingDirectories() const;

    // Tabs.

    void newTab();
    void selectTab(std::size_t index);
    void selectPreviousTab();
    /// Asks first where a command is running. The last tab cannot be closed.
    void requestCloseTab(std::size_t index);
    void closeTab(std::size_t index);
    void renameTab(std::size_t index);
    /// Brings the tabs to the given names and folders, without touching a shell that the user
    /// works in.
    void restoreTabs(const std::vector<std::u16string>& names,
                     const std::vector<std::filesystem::path>& directories);

    // What the view and the window report.

    /// The panel is shown in a window: the active session starts.
    void startActiveSession();
    /// Brings every session to the size that the view has room for.
    void syncGridSize();
    /// Bytes for the active shell: keys, pasted text. Where it has ended, Return starts another.
    void sendInput(std::string_view bytes);
    /// Runs what the key map binds to a press, as far as it means something in a terminal. False:
    /// the press belongs to the shell.
    bool handleKeyCommand(const KeyEvent& event);
    /// Whether the key map has an entry for a canonical chord, whatever it does.
    bool isBound(std::string_view chord) const { return keyMap_.commandsFor(chord) != nullptr; }
    /// Reads the preferences anew.
    void applyPreferences();

    /// Writes a message of the application on the active screen; does nothing without one. Line
    /// ends become CR LF.
    void print(std::u16string_view text);

private:
    struct PendingRestore {
        std::vector<std::u16string> names;
        std::vector<std::filesystem::path> directories;
    };
    using SessionPointer = std::shared_ptr<TerminalSession>;

    SessionPointer activeSession() const;
    SessionPointer sessionAt(std::size_t index) const;
    std::optional<std::size_t> indexOf(const TerminalSession& session) const;

    SessionPointer makeSession();
    void connect(const SessionPointer& session);
    void start(const SessionPointer& session);
    void startIfInWindow(const SessionPointer& session);
    void ringBell();
    static void writeReply(TerminalSession& session, std::string_view reply);
    static void end(TerminalSession& session);
    void applyHistoryLimit(TerminalSession& session) const;
    bool isHomeFolder(const std::filesystem::path& directory) const;

    void emulatorDidUpdate(const TerminalSession& session);
    void feedOutput(const SessionPointer& session);
    /// Feeds the oldest piece of output; answers whether another one is there already.
    static bool feedPiece(TerminalSession& session);
    void processDidTerminate(const SessionPointer& session);
    /// Shows a message of the panel itself, whole, whatever the shell has left behind.
    static void showMessage(TerminalSession& session, std::u16string_view text);
    void type(TerminalSession& session, std::string_view bytes);

    void scheduleDisplay();
    void activate(Focus focus);
    void tabsDidChange();
    /// False for a command that means nothing in a terminal.
    bool runCommand(const EditorCommand& command);
    void runShellLineCommand(const EditorCommand& command);

    void restoreNames(const std::vector<std::u16string>& names);
    void restoreDirectory(std::size_t index, const std::filesystem::path& directory);

    TerminalServices services_;
    std::filesystem::path resolvedHomeFolder_;  // Without symbolic links.
    TerminalPanelView* view_ = nullptr;
    TerminalDelegate* delegate_ = nullptr;
    TerminalKeyMap keyMap_;
    std::vector<SessionPointer> sessions_;  // In the order of the tabs.
    std::size_t activeSessionIndex_ = 0;
    std::optional<PendingRestore> pendingRestore_;  // Only before the first view.
    bool needsDisplayScheduled_ = false;            // One task for the view is queued.
    bool isBellSounding_ = false;
    /// What late callbacks hold of this object, weakly.
    std::shared_ptr<TerminalViewController*> self_;
};

}  // namespace tavrel
