// How a pane changes the text: the capture around a change, the applier for several cursors, undo.

#include "editor/EditorPane.h"

#include "editor/CursorBatch.h"
#include "platform/Clock.h"

#include <utility>

namespace tavrel {

void EditorPane::textWillChange(TextRange range, const TextSnapshot& replacement)
{
    if (guard_ != Guard::none)
        return;
    const TextRange changed = clampedRange(range, text().length());
    const TextRange before =
        clampedRange(std::exchange(pendingBeforeSelectionOverride_, {}).value_or(selectedRange()),
                     text().length());
    pendingEditorEdit_ = PendingEditorEdit{
        .replacementRange = changed,
        .replacedText = text().slice(changed),
        .insertedText = replacement,
        .beforeSelection = before,
        .beforeSecondaryCursorLocations = normalisedCursors(before),
        .beforeIsModified = document().isModified,
    };
}

void EditorPane::textDidChange()
{
    if (guard_ != Guard::none) {
        dropPendingEdit();
        return;
    }
    const std::optional<TextRange> override = std::exchange(pendingAfterSelectionOverride_, {});
    if (std::optional<PendingEditorEdit> edit = std::exchange(pendingEditorEdit_, {})) {
        const TextRange after = clampedRange(override.value_or(selectedRange()), text().length());
        document().history().recordSnapshot(
            {.replacementRange = edit->replacementRange,
             .replacedText = std::move(edit->replacedText),
             .insertedText = std::move(edit->insertedText),
             .state = std::make_shared<const EditorUndoState>(EditorUndoState{
                 .beforeSelection = edit->beforeSelection,
                 .afterSelection = after,
                 .beforeSecondaryCursorLocations = std::move(edit->beforeSecondaryCursorLocations),
                 .afterSecondaryCursorLocations = normalisedCursors(after),
                 .beforeIsModified = edit->beforeIsModified})},
            ClearRedo::yes, Mergeable::yes, services_.clock.now());
    }
    refreshAfterEdit();
}

void EditorPane::dropPendingEdit()
{
    pendingEditorEdit_.reset();
    pendingBeforeSelectionOverride_.reset();
    pendingAfterSelectionOverride_.reset();
}

/// The one insertion at the selection: what a text view does by itself when a key is typed.
void EditorPane::replaceInTextView(TextRange range, const TextSnapshot& replacement)
{
    const TextRange replaced = clampedRange(range, text().length());
    const bool changesNothing = text().slice(replaced) == replacement;
    if (changesNothing) {
        dropPendingEdit();
        setSelectedRange({replaced.location + replacement.length(), 0});
        return;
    }
    textWillChange(replaced, replacement);
    const std::vector<TextEdit> edit{{replaced, replacement}};
    changeText({&edit, 1});
    setSelectedRange({replaced.location + replacement.length(), 0});
    textDidChange();
    scrollToVisible(selectedRange());
}

void EditorPane::changeText(std::span<const std::vector<TextEdit>> batches)
{
    isChangingText_ = true;
    {
        const TextStorageBatch batch(document().textStorage());
        for (const std::vector<TextEdit>& edits : batches)
            document().textStorage().apply(edits);
    }
    isChangingText_ = false;
}

void EditorPane::replaceText(TextRange range, const TextSnapshot& replacement,
                             std::optional<TextRange> afterSelection)
{
    clearSecondaryCursors();
    pendingBeforeSelectionOverride_ = clampedRange(selectedRange(), text().length());
    pendingAfterSelectionOverride_ = afterSelection;
    replaceInTextView(range, replacement);
    if (afterSelection) {
        setSelectedRange(*afterSelection);
        scrollToVisible(selectedRange());
    }
}

void EditorPane::refreshAfterEdit()
{
    EditorTab& tab = activeTab();
    tab.selectedRange = selectedRange();
    tab.selectedWordOccurrences.reset();
    setCursors(normalisedCursors(selectedRange()));
    EditorDocument& changed = document();
    const bool wasModified = std::exchange(changed.isModified, true);
    refreshStatus(u"modified");
    changed.postDidChange(this, false);
    if (!wasModified)
        tellTitleChanged(changed);
}

bool EditorPane::insertAtCursors(const TextSnapshot& inserted, std::optional<TextRange> range)
{
    if (!hasSecondaryCursors())
        return false;
    if (!clampedRange(range.value_or(selectedRange()), text().length()).isEmpty()) {
        clearSecondaryCursors();
        return false;
    }
    const std::size_t primary = selectedRange().location;
    std::vector<ResolvedMultiCursorEdit> edits;
    for (const std::size_t cursor : allCursorLocations())
        edits.push_back({{{cursor, 0}, inserted, {}}, cursor == primary});
    applyEdits(std::move(edits), selectedRange());
    return true;
}

bool EditorPane::eraseAtCursors()
{
    if (!hasSecondaryCursors())
        return false;
    if (!selectedRange().isEmpty()) {
        clearSecondaryCursors();
        return false;
    }
    std::vector<MultiCursorEdit> edits;
    for (const std::size_t cursor : allCursorLocations()) {
        const TextRange range = cursor > 0 ? TextRange{cursor - 1, 1} : TextRange{};
        edits.push_back({range, {}, range.location});
    }
    applyEdits(resolvedEdits(std::move(edits), selectedRange().location), selectedRange());
    return true;
}

void EditorPane::applyEdits(std::vector<ResolvedMultiCursorEdit> edits, TextRange beforeSelection)
{
    const std::vector<ResolvedMultiCursorEdit> applicable =
        applicableEdits(std::move(edits), text().length());
    if (applicable.empty())
        return;
    CursorBatch batch =
        cursorBatch(text(), applicable,
                    {beforeSelection, normalisedCursors(beforeSelection), document().isModified});
    carryOut(std::move(batch));
}

void EditorPane::carryOut(CursorBatch batch)
{
    changeText({&batch.replacements, 1});
    dropPendingEdit();
    activeTab().secondaryCursorLocations = std::move(batch.afterCursors);
    setSelectedRange(batch.afterSelection);
    if (!batch.snapshots.empty()) {
        document().history().recordGroup(std::move(batch.snapshots), ClearRedo::yes,
                                         services_.clock.now());
        refreshAfterEdit();
    }
    scrollToVisible(selectedRange());
}

void EditorPane::undo()
{
    if (const EditorUndoGroup* group = document().history().undo())
        applyGroup(*group, ReplayDirection::backwards);
}

void EditorPane::redo()
{
    if (const EditorUndoGroup* group = document().history().redo())
        applyGroup(*group, ReplayDirection::forwards);
}

void EditorPane::applyGroup(const EditorUndoGroup& group, ReplayDirection direction)
{
    const bool backwards = direction == ReplayDirection::backwards;
    const EditorUndoState& state =
        backwards ? *group.snapshots.front().state : *group.snapshots.back().state;
    guard_ = Guard::applyingUndoRedo;
    dropPendingEdit();
    changeText(replayBatches(group, direction));
    EditorDocument& changed = document();
    EditorTab& tab = activeTab();
    tab.selectedWordOccurrences.reset();
    const TextRange selection =
        clampedRange(backwards ? state.beforeSelection : state.afterSelection, text().length());
    setSelectedRange(selection);
    tab.selectedRange = selection;
    setCursors(CursorLocations::normalised(
        (backwards ? state.beforeSecondaryCursorLocations : state.afterSecondaryCursorLocations)
            .offsets(),
        text().length(), selection));
    changed.isModified = backwards ? state.beforeIsModified : state.afterIsModified;
    guard_ = Guard::none;
    didChangeSelection();
    scrollToVisible(selection);
    tellTitleChanged(changed);
    refreshStatus(changed.isModified ? u"modified" : u"");
    changed.postDidChange(this, false);
}

void EditorPane::editorDocumentDidChange(EditorDocument& changed, const EditorPane* source,
                                         bool needsStyling)
{
    if (source == this)
        return;
    tellTitleChanged(changed);
    if (&changed != &document())
        return;
    setSelectedRanges(selectedRanges_);
    setCursors(normalisedCursors(selectedRange()));
    if (needsStyling) {
        if (view_)
            view_->paneDidShowDocument();
        gitMarks_.schedule(0.0);
    }
    refreshStatus();
}

void EditorPane::editorDocumentDidMove(EditorDocument& moved)
{
    // A document whose file has gone stays in the language it had.
    for (const std::shared_ptr<EditorTab>& tab : tabs_) {
        if (tab->document.get() == &moved && moved.url)
            setLanguage(*tab);
    }
    shownTabs_.reset();  // The same title may stand for another file now.
    tellTabsChanged();
    if (&moved != &document())
        return;
    gitMarks_.schedule(0.0);
    refreshStatus();
}

void EditorPane::editorDocumentDidChangeGitLineDiff(EditorDocument& changed)
{
    if (&changed == &document() && view_)
        view_->paneDidChangeGitLineDiff();
}

}  // namespace tavrel
