#include "editor/EditorPane.h"

#include "editor/PaneCommands.h"
#include "editor/dispatch/KeyTranslator.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <utility>

namespace tavrel {

namespace {

/// Whether typing `typed` counts as typing a word: one character that can stand in one.
bool isOneWordCharacter(std::u16string_view typed)
{
    if (typed.empty())
        return false;
    const DecodedCharacter first = characterAt(typed, 0);
    return first.length == typed.size() &&
           (first.character == U'_' || isAlphanumeric(first.character));
}

}  // namespace

EditorPane::EditorPane(EditorPaneServices services, EditorPaneSettings settings,
                       EditorPaneKind kind)
    : services_(std::move(services)), kind_(kind), files_(*this), gitMarks_(*this)
{
    setSettings(settings);
    addTab(makeTab(std::make_shared<EditorDocument>()));
}

EditorPane::~EditorPane()
{
    self_.reset();
    for (const std::shared_ptr<EditorTab>& tab : tabs_)
        stopObserving(*tab->document);
}

void EditorPane::setView(EditorPaneView* view)
{
    view_ = view;
    shownTabs_.reset();
}

void EditorPane::setSettings(const EditorPaneSettings& settings)
{
    settings_ = settings;
    settings_.tabWidth = std::max(settings.tabWidth, 1);
    settings_.columnWidth = std::max(settings.columnWidth, 1);
}

// --- Focus and questions

void EditorPane::didBecomeFirstResponder()
{
    if (delegate_)
        delegate_->editorPaneDidBecomeActive(*this);
}

void EditorPane::takeFocus()
{
    didBecomeFirstResponder();
    if (view_)
        view_->paneWantsFocus();
}

std::optional<std::size_t> EditorPane::ask(std::shared_ptr<EditorDocument> asked,
                                           const EditorPaneAlert& alert)
{
    if (!delegate_)
        return alert.escapeButton;
    const WeakEditorPane self = weakReference();
    const DocumentQuestion question(std::move(asked));
    const bool heldTabChanges = std::exchange(holdsTabChanges_, false);
    tellTabsChanged();  // The user sees what there is now.
    const std::size_t answer = delegate_->editorPaneWantsAnswer(*this, alert);
    if (!self.get())
        return std::nullopt;
    holdsTabChanges_ = heldTabChanges;
    return answer;
}

std::optional<std::filesystem::path>
EditorPane::askWhereToSave(std::shared_ptr<EditorDocument> asked,
                           const std::filesystem::path& proposed)
{
    if (!delegate_ || asked->isAskedAbout())
        return std::nullopt;
    const WeakEditorPane self = weakReference();
    const DocumentQuestion question(std::move(asked));
    auto chosen = delegate_->editorPaneWantsSaveLocation(*this, proposed);
    return self.get() ? std::move(chosen) : std::nullopt;
}

std::vector<EditorPane*> EditorPane::editors()
{
    std::vector<EditorPane*> editors;
    if (delegate_)
        editors = delegate_->editorPaneWantsEditors(*this);
    if (std::find(editors.begin(), editors.end(), this) == editors.end())
        editors.push_back(this);
    return editors;
}

// --- Keys and commands

bool EditorPane::keyDown(const KeyEvent& event)
{
    if (!commandDispatcher_.handleKeyEvent(event, *this))
        return false;
    const std::optional<std::string> chord = KeyTranslator::chordForEvent(event);
    if (chord != "backspace" && chord != "tab")
        lastActionWasTyping_ = false;
    return true;
}

void EditorPane::keyDidInput(const KeyEvent& event)
{
    const bool hasModifier = (event.modifierFlags & (controlModifier | commandModifier)) != 0;
    const std::u16string& typed = event.characters;
    lastActionWasTyping_ = !hasModifier && isOneWordCharacter(typed);
}

void EditorPane::insertText(std::u16string_view typed, std::optional<TextRange> replacementRange)
{
    collapseOccurrences(1);
    const TextSnapshot inserted(typed);
    if (!insertAtCursors(inserted, replacementRange))
        replaceInTextView(replacementRange.value_or(selectedRange()), inserted);
    lastActionWasTyping_ = isOneWordCharacter(typed);
}

void EditorPane::runCommand(const EditorCommand& command)
{
    lastActionWasTyping_ = false;
    performCommand(command);
}

void EditorPane::performCommand(const EditorCommand& command)
{
    if (!runPaneCommand(*this, command) && delegate_)
        delegate_->editorPaneDidMeetCommand(*this, command);
}

void EditorPane::beep()
{
    if (delegate_)
        delegate_->editorPaneDidBeep(*this);
}

// --- Status

void EditorPane::setStatus(std::u16string status)
{
    statusText_ = std::move(status);
    if (delegate_)
        delegate_->editorPaneDidSetStatus(*this, statusText_);
}

void EditorPane::refreshStatus(std::u16string_view word)
{
    if (document().isEmpty()) {
        setStatus(u"No File");
        return;
    }
    std::u16string status = utf16FromUtf8(activeTab().language->name);
    if (activeTab().marker)
        status += u" | marker";
    if (!word.empty())
        status.append(u" | ").append(word);
    setStatus(std::move(status));
}

void EditorPane::documentWasSaved(EditorDocument& saved, std::u16string_view doneWord)
{
    tellTitleChanged(saved);
    if (&saved != &document())
        return;
    refreshStatus(doneWord);
    gitMarks_.schedule(0.0);
}

}  // namespace tavrel
