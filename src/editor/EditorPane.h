#pragma once

#include "editor/DocumentFile.h"
#include "editor/EditorDocument.h"
#include "editor/EditorPaneDelegate.h"
#include "editor/EditorPaneServices.h"
#include "editor/EditorPaneView.h"
#include "editor/EditorTab.h"
#include "editor/MultiCursorEdit.h"
#include "editor/UndoReplay.h"
#include "editor/VerticalMotion.h"
#include "editor/dispatch/CommandDispatcher.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

struct CursorBatch;

enum class OpenResult { opened, failed };

/// One editor column without its pixels: tabs, selection, cursors, the capture of edits for undo,
/// and the commands. Every change of a document's text by the user passes through here.
///
/// Main thread only. Offsets from outside are clamped. It never has fewer than one tab.
class EditorPane final : public CommandTarget,
                         private EditorDocumentObserver,
                         private TextStorageObserver {
public:
    explicit EditorPane(EditorPaneServices services, EditorPaneSettings settings = {});
    ~EditorPane() override;
    EditorPane(const EditorPane&) = delete;
    EditorPane& operator=(const EditorPane&) = delete;

    /// Both may be null, own nothing, and are to be taken away before they go.
    void setView(EditorPaneView* view) { view_ = view; }
    void setDelegate(EditorPaneDelegate* delegate) { delegate_ = delegate; }
    /// Widths below 1 count as 1.
    void setSettings(const EditorPaneSettings& settings);
    const EditorPaneSettings& settings() const { return settings_; }
    const EditorPaneServices& services() const { return services_; }

    // Tabs and files.

    const std::vector<std::shared_ptr<EditorTab>>& tabs() const { return tabs_; }
    std::size_t activeTabIndex() const { return activeTabIndex_; }
    EditorTab& activeTab() const { return *tabs_[activeTabIndex_]; }
    EditorDocument& document() const { return *activeTab().document; }
    const TextSnapshot& text() const { return document().text(); }

    /// Stores the state of the view in the active tab and shows another one.
    void selectTab(std::size_t index);
    /// Shows the file, reading it unless a tab of this pane has it. A failure leaves the pane as it
    /// is and sets the status text.
    OpenResult openLocation(const std::filesystem::path& path);
    /// Shows a document that another pane has open, as one more view of it.
    void showDocument(std::shared_ptr<EditorDocument> document);
    /// Shows a file that has been read elsewhere, or tells why it could not be.
    OpenResult showLoaded(const std::filesystem::path& path, LoadResult loaded);
    /// Closes a tab without asking; the last one leaves an empty tab in its place.
    void removeTab(std::size_t index);

    /// Writes the document, after asking where if it has no file.
    void save();
    void saveAs();
    /// Writes a modified document that has a file, unless that file has changed meanwhile.
    void autosave();
    /// Reads the file anew if a tab shows it and nothing in it is unsaved; drops its history. A
    /// file that cannot be read is left alone.
    void reloadUnmodified(const std::filesystem::path& path);
    /// Asks for the language of every tab again.
    void refreshLanguages();
    /// The document has been written to `path`; `doneWord` says so in the status text.
    void didSave(const std::filesystem::path& path, const FileStatus& status,
                 std::u16string_view doneWord);

    // Selection and cursors.

    /// The selection; with several occurrences selected, the first of them.
    TextRange selectedRange() const { return selectedRanges_.front(); }
    /// The selected ranges, the main one first. Never empty.
    const std::vector<TextRange>& selectedRanges() const { return selectedRanges_; }
    /// Selects as a mouse or the toolkit does: the secondary cursors stay.
    void setSelectedRange(TextRange range) { setSelectedRanges({range}); }
    void setSelectedRanges(std::vector<TextRange> ranges);
    const std::vector<std::size_t>& secondaryCursorLocations() const;
    bool hasSecondaryCursors() const { return !secondaryCursorLocations().empty(); }
    /// Every cursor, ascending, the primary one among them.
    std::vector<std::size_t> allCursorLocations() const;
    /// Whether commands act at every cursor: there are secondary ones and nothing is selected.
    bool actsAtEveryCursor() const { return hasSecondaryCursors() && selectedRange().isEmpty(); }
    void clearSecondaryCursors();
    /// Brings the offsets into normal form and makes them the secondary cursors.
    void storeCursors(std::vector<std::size_t> locations);
    /// Adds a cursor at `offset`, or takes the one there away.
    void toggleCursor(std::size_t offset);
    /// The selected occurrences of a word, as far as the text and the selection still bear them
    /// out. Null when there are none; valid until the pane changes.
    const SelectedWordOccurrences* validOccurrences();
    /// Selects the occurrences; the first is the main one. Shows `visible`.
    void showOccurrences(SelectedWordOccurrences occurrences, TextRange visible);
    /// With occurrences selected and a direction of 1 or -1: puts cursors at their ends or starts
    /// in place of the selection, and answers true.
    bool collapseOccurrences(std::int64_t direction);
    void setMarker(std::optional<std::size_t> marker);
    /// Moves the primary cursor over rows of the layout, keeping its column.
    void moveVertically(VerticalDirection direction, VerticalDistance distance);
    void scrollToVisible(TextRange range);

    // Editing: the roads that every change of the text takes.

    /// Replaces a stretch as one cursor does, dropping the secondary ones. Selects `afterSelection`
    /// where given; otherwise the cursor stands behind the new text.
    void replaceText(TextRange range, const TextSnapshot& replacement,
                     std::optional<TextRange> afterSelection = {});
    /// Inserts at every cursor. False, with nothing done, when there is only one, or when `range`
    /// (the selection, where absent) is not empty: then the secondary cursors are gone.
    bool insertAtCursors(const TextSnapshot& text, std::optional<TextRange> range = {});
    /// Erases the unit before every cursor, under the same conditions.
    bool eraseAtCursors();
    /// Carries out edits at several places as one step of undo.
    void applyEdits(std::vector<ResolvedMultiCursorEdit> edits, TextRange beforeSelection);
    /// Moves a stretch to another place, as one step of undo, and selects it there. Nothing happens
    /// where the place lies in the stretch or at its ends.
    void moveText(TextRange range, std::size_t location);
    void undo();
    void redo();

    // Keys, input and commands.

    CommandDispatcher& commandDispatcher() { return commandDispatcher_; }
    /// Offers a key to the key map. False: the key is ordinary input, and `keyDidInput` is to
    /// follow once its text, if any, has been inserted.
    bool keyDown(const KeyEvent& event);
    void keyDidInput(const KeyEvent& event);
    /// Inserts at every cursor, or in place of `replacementRange`, or of the selection.
    void insertText(std::u16string_view text, std::optional<TextRange> replacementRange = {});
    /// Runs a command that no key asked for: a menu item, a button.
    void runCommand(const EditorCommand& command);
    /// Runs a command. A name that is none of the pane's goes to the delegate.
    void performCommand(const EditorCommand& command) override;
    void beep() override;

    // Completion.

    /// The words that may stand in `partial`, the likeliest first.
    std::vector<std::u16string> completionCandidates(TextRange partial);
    /// Has the view offer words for what stands before the cursor. False where there are none.
    bool offerCompletions();
    /// Puts a word in the place of `partial`.
    void acceptCompletion(TextRange partial, std::u16string_view word);

    /// Whether what happened last was the typing of one word character.
    bool lastActionWasTyping() const { return lastActionWasTyping_; }
    void clearLastActionWasTyping() { lastActionWasTyping_ = false; }

    /// Language name, marker and a word on what happened last, or a message in their place.
    const std::u16string& statusText() const { return statusText_; }

private:
    enum class Guard { none, applyingTabState, applyingUndoRedo };

    /// What is noted between the moment before a change of the text view and the one after it.
    struct PendingEditorEdit {
        TextRange replacementRange;
        TextSnapshot replacedText;
        TextSnapshot insertedText;
        TextRange beforeSelection;
        CursorLocations beforeSecondaryCursorLocations;
        bool beforeIsModified = false;
    };

    std::shared_ptr<EditorTab> makeTab(std::shared_ptr<EditorDocument> document) const;
    std::shared_ptr<const LanguageMode>
    languageMode(const std::optional<std::filesystem::path>& url) const;
    void addTab(std::shared_ptr<EditorTab> tab);
    void stopObserving(EditorDocument& observed);
    void showTab(std::size_t index);
    void storeTabState();
    void applyTabState();
    std::optional<std::size_t> tabShowing(const std::filesystem::path& url) const;

    void writeTo(const std::filesystem::path& path, std::u16string_view doneWord,
                 std::u16string_view failure);
    bool hasChangedOnDisk() const;

    void setCursors(CursorLocations cursors);
    CursorLocations normalisedCursors(TextRange primary) const;
    void didChangeSelection();

    void textWillChange(TextRange range, const TextSnapshot& replacement);
    void textDidChange();
    void dropPendingEdit();
    void replaceInTextView(TextRange range, const TextSnapshot& replacement);
    void refreshAfterEdit();
    /// Carries out what has been computed, and records it.
    void carryOut(CursorBatch batch);
    /// Applies batches one after another. The cursors are left to the caller.
    void changeText(std::span<const std::vector<TextEdit>> batches);
    void applyGroup(const EditorUndoGroup& group, ReplayDirection direction);
    void editorDocumentDidChange(EditorDocument& document, const EditorPane* source,
                                 bool needsStyling) override;
    void storageDidChange(const TextStorage& storage, std::span<const TextChange> changes) override;

    void setStatus(std::u16string text);
    void refreshStatus(std::u16string_view word = {});

    EditorPaneServices services_;
    EditorPaneSettings settings_;
    EditorPaneView* view_ = nullptr;
    EditorPaneDelegate* delegate_ = nullptr;
    CommandDispatcher commandDispatcher_;
    std::vector<std::shared_ptr<EditorTab>> tabs_;  // Never empty.
    std::size_t activeTabIndex_ = 0;
    std::vector<TextRange> selectedRanges_{TextRange{}};  // The main one first; never empty.
    std::optional<double>
        goalX_;  // Where vertical motion wants to be, until another motion or edit.
    Guard guard_ = Guard::none;
    bool isChangingText_ = false;  // The change under way is this pane's own.
    /// The revision of the text at which the active tab's occurrences were found valid for the
    /// selection as it is; absent where they have to be looked at again.
    std::optional<std::uint64_t> occurrencesRevision_;
    std::optional<PendingEditorEdit> pendingEditorEdit_;
    std::optional<TextRange> pendingBeforeSelectionOverride_;
    std::optional<TextRange> pendingAfterSelectionOverride_;
    std::u16string statusText_ = u"No File";
    bool lastActionWasTyping_ = false;
};

}  // namespace tavrel
