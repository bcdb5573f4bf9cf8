#pragma once

#include "editor/EditorDocument.h"
#include "editor/EditorGitMarks.h"
#include "editor/EditorPaneDelegate.h"
#include "editor/EditorPaneFiles.h"
#include "editor/EditorPaneServices.h"
#include "editor/EditorPaneView.h"
#include "editor/EditorTab.h"
#include "editor/MultiCursorEdit.h"
#include "editor/PendingEditorEdit.h"
#include "editor/UndoReplay.h"
#include "editor/VerticalMotion.h"
#include "editor/WeakEditorPane.h"
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

/// A column has tabs and marks; the input line of an overlay has neither, and hears nothing of
/// other views of its text.
enum class EditorPaneKind { column, fieldEditor };

enum class TabClosing { closed, cancelled };

/// One editor column without its pixels: tabs, selection, cursors, the capture of edits for undo,
/// and the commands. Every change of a document's text by the user passes through here.
///
/// Main thread only. Offsets from outside are clamped. It never has fewer than one tab.
class EditorPane final : public CommandTarget,
                         private EditorDocumentObserver,
                         private TextStorageObserver {
public:
    explicit EditorPane(EditorPaneServices services, EditorPaneSettings settings = {},
                        EditorPaneKind kind = EditorPaneKind::column);
    ~EditorPane() override;
    EditorPane(const EditorPane&) = delete;
    EditorPane& operator=(const EditorPane&) = delete;

    /// Both may be null, own nothing, and are to be taken away before they go.
    void setView(EditorPaneView* view);
    void setDelegate(EditorPaneDelegate* delegate) { delegate_ = delegate; }
    /// Widths below 1 count as 1.
    void setSettings(const EditorPaneSettings& settings);
    const EditorPaneSettings& settings() const { return settings_; }
    const EditorPaneServices& services() const { return services_; }
    bool isFieldEditor() const { return kind_ == EditorPaneKind::fieldEditor; }
    WeakEditorPane weakReference() const { return WeakEditorPane(self_); }

    // Tabs.

    const std::vector<std::shared_ptr<EditorTab>>& tabs() const { return tabs_; }
    std::size_t activeTabIndex() const { return activeTabIndex_; }
    EditorTab& activeTab() const { return *tabs_[activeTabIndex_]; }
    EditorDocument& document() const { return *activeTab().document; }
    const TextSnapshot& text() const { return document().text(); }

    /// Brings the active tab up to date with the view: selection, cursors, scroll position.
    void storeTabState();
    /// Stores the state of the view in the active tab and shows another one. The pane becomes the
    /// active one, as with every tab that the user asks for.
    void selectTab(std::size_t index);
    /// Shows the next tab, or the one before with -1, going round at the ends.
    void stepTab(int direction);
    /// Shows a document that another pane has open, as one more view of it.
    void showDocument(std::shared_ptr<EditorDocument> document);
    /// Shows a tab of another pane in its state, in place of a single empty tab.
    void adoptTab(std::shared_ptr<EditorTab> tab);
    /// Takes a tab out in its present state; the last one leaves an empty tab in its place.
    std::shared_ptr<EditorTab> detachTab(std::size_t index);
    /// Closes a tab, after asking if that would lose the last view of a modified document.
    TabClosing closeTab(std::size_t index);
    /// Closes one after another in their order; the first that is cancelled stops the rest.
    TabClosing closeAllTabs();
    /// Closes a tab without asking; the last one leaves an empty tab in its place.
    void removeTab(std::size_t index);
    /// Puts these tabs in the place of all there are, without asking; none is one empty tab.
    void replaceTabs(std::vector<std::shared_ptr<EditorTab>> tabs, std::size_t activeIndex);
    /// Tabs on the one document show the other from now on; a tab too many on it is removed.
    void showInPlaceOf(const EditorDocument& former,
                       const std::shared_ptr<EditorDocument>& present);
    /// A tab for the document with the language of its file; not one of the pane yet.
    std::shared_ptr<EditorTab> makeTab(std::shared_ptr<EditorDocument> document) const;
    /// Asks for the language of every tab again.
    void refreshLanguages();

    // Files; see `EditorPaneFiles`.

    EditorPaneFiles& files() { return files_; }
    OpenResult openLocation(const std::filesystem::path& path) { return files_.openLocation(path); }
    OpenResult showLoaded(const std::filesystem::path& path, LoadResult loaded)
    {
        return files_.showLoaded(path, std::move(loaded));
    }
    void save() { files_.save(); }
    void saveAs() { files_.saveAs(); }
    void autosave() { files_.autosave(); }
    void checkDisk() { files_.checkDisk(); }
    void reloadUnmodified(const std::filesystem::path& path) { files_.reloadUnmodified(path); }
    void didSave(const std::filesystem::path& path, const FileStatus& status,
                 std::u16string_view doneWord)
    {
        files_.didSave(path, status, doneWord);
    }

    // Focus and questions.

    /// The text view has taken the keys, or has stopped being edited.
    void didBecomeFirstResponder();
    void didEndEditing() { files_.didEndEditing(); }
    bool hasFocus() const { return view_ && view_->paneHasFocus(); }
    /// Makes this the pane that the user works in, and its text view the one that takes the keys.
    void takeFocus();
    /// Asks about a document, which is left alone meanwhile. Answers the index of the button, or
    /// nothing when the pane has gone before the answer came.
    std::optional<std::size_t> ask(std::shared_ptr<EditorDocument> document,
                                   const EditorPaneAlert& alert);
    /// Asks for a place to save the document. Nothing when there is none, or no pane any more.
    std::optional<std::filesystem::path> askWhereToSave(std::shared_ptr<EditorDocument> document,
                                                        const std::filesystem::path& proposed);
    /// All panes that may share documents with this one, which is among them.
    std::vector<EditorPane*> editors();

    // Clicks.

    /// A plain click. In search results it opens what the line at `offset` names, and answers true;
    /// false: the click is an ordinary one.
    bool clickedAt(std::size_t offset);
    /// The address at `offset` for a menu; only plain text has any.
    std::optional<std::u16string> linkAt(std::size_t offset) const;
    /// Selects line `number`, counted from 1, without its terminator; numbers out of range are
    /// brought into it.
    void selectLine(std::int64_t number);
    /// Where `offset` lies on a colour literal, selects it, asks for the colour panel and answers
    /// true.
    bool beginColorPicking(std::size_t offset);
    /// Writes another colour in place of the literal, as long as there still is one. Components
    /// from 0 to 1 in sRGB; others are brought into that range.
    void pickColor(double red, double green, double blue);
    /// The colour panel has closed.
    void endColorPicking();
    /// Where the colour goes; it moves with the text.
    const std::optional<TextRange>& colorPanelReplacementRange() const
    {
        return colorPanelReplacementRange_;
    }

    // Line marks.

    /// The marks of the active document; absent where nothing is known.
    const std::optional<GitLineDiff>& gitLineDiff() const { return document().gitLineDiff; }
    EditorGitMarks& gitMarks() { return gitMarks_; }

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
    /// The height of a row in points; 1 without a view.
    double rowHeight() const { return view_ ? view_->rowHeight() : 1; }

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
    void setStatus(std::u16string text);
    void refreshStatus(std::u16string_view word = {});
    /// A document of a tab has been written: marks and titles follow, and the status text if it is
    /// the active one.
    void documentWasSaved(EditorDocument& document, std::u16string_view doneWord);

private:
    enum class Guard { none, applyingTabState, applyingUndoRedo };

    /// What a tab bar shows.
    struct ShownTabs {
        std::vector<std::u16string> titles;
        std::size_t activeIndex = 0;
        bool operator==(const ShownTabs&) const = default;
    };

    void setLanguage(EditorTab& tab) const;
    std::shared_ptr<const LanguageMode>
    languageMode(const std::optional<std::filesystem::path>& url) const;
    void addTab(std::shared_ptr<EditorTab> tab);
    void startObserving(EditorDocument& observed);
    void stopObserving(EditorDocument& observed);
    bool hasTabOn(const EditorDocument& candidate) const;
    void willLeaveTab();
    void showTab(std::size_t index);
    void applyTabState();
    /// Tells the view, if a title, a modified mark or the choice of the active one has changed.
    void tellTabsChanged();
    /// The same where only the title of this document may be another one. Costs O(tabs) at most,
    /// without making their titles.
    void tellTitleChanged(const EditorDocument& document);
    TabClosing closeTabWithoutFocus(std::size_t index);

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
    void editorDocumentDidMove(EditorDocument& document) override;
    void editorDocumentDidChangeGitLineDiff(EditorDocument& document) override;
    void storageDidChange(const TextStorage& storage, std::span<const TextChange> changes) override;

    EditorPaneServices services_;
    EditorPaneSettings settings_;
    EditorPaneKind kind_;
    std::shared_ptr<EditorPane*> self_ = std::make_shared<EditorPane*>(this);
    EditorPaneView* view_ = nullptr;
    EditorPaneDelegate* delegate_ = nullptr;
    CommandDispatcher commandDispatcher_;
    EditorPaneFiles files_;
    EditorGitMarks gitMarks_;
    std::vector<std::shared_ptr<EditorTab>> tabs_;  // Never empty.
    std::size_t activeTabIndex_ = 0;
    std::optional<ShownTabs> shownTabs_;  // What the view was told of last.
    bool holdsTabChanges_ = false;        // The view is told of the tabs once all are closed.
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
    std::optional<TextRange> colorPanelReplacementRange_;
    std::u16string statusText_ = u"No File";
    bool lastActionWasTyping_ = false;
};

}  // namespace tavrel
