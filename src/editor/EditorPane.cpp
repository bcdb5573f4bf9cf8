#include "editor/EditorPane.h"

#include "editor/PaneCommands.h"
#include "editor/dispatch/KeyTranslator.h"
#include "platform/FileSystem.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <utility>

namespace tavrel {

namespace {

std::filesystem::path standardised(const std::filesystem::path& path)
{
    return path.lexically_normal();
}

std::u16string fileName(const std::filesystem::path& path)
{
    return utf16FromUtf8(path.filename().native());
}

std::u16string failureText(std::u16string_view what, const std::filesystem::path& path,
                           const FileError& error)
{
    return std::u16string(what) + fileName(path) + u": " + utf16FromUtf8(error.message);
}

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

EditorPane::EditorPane(EditorPaneServices services, EditorPaneSettings settings)
    : services_(services)
{
    setSettings(settings);
    addTab(makeTab(std::make_shared<EditorDocument>()));
}

EditorPane::~EditorPane()
{
    for (const std::shared_ptr<EditorTab>& tab : tabs_)
        stopObserving(*tab->document);
}

void EditorPane::setSettings(const EditorPaneSettings& settings)
{
    settings_ = settings;
    settings_.tabWidth = std::max(settings.tabWidth, 1);
    settings_.columnWidth = std::max(settings.columnWidth, 1);
}

std::shared_ptr<EditorTab> EditorPane::makeTab(std::shared_ptr<EditorDocument> document) const
{
    auto tab = std::make_shared<EditorTab>();
    tab->language = languageMode(document->url);
    tab->document = std::move(document);
    return tab;
}

std::shared_ptr<const LanguageMode>
EditorPane::languageMode(const std::optional<std::filesystem::path>& url) const
{
    static const auto plainMode = std::make_shared<const LanguageMode>(LanguageMode::plain());
    return services_.languageModeForURL ? services_.languageModeForURL(url) : plainMode;
}

void EditorPane::refreshLanguages()
{
    for (const std::shared_ptr<EditorTab>& tab : tabs_)
        tab->language = languageMode(tab->document->url);
    refreshStatus();
}

void EditorPane::addTab(std::shared_ptr<EditorTab> tab)
{
    tab->document->addObserver(*this);
    tab->document->textStorage().addObserver(this);
    tabs_.push_back(std::move(tab));
}

void EditorPane::stopObserving(EditorDocument& observed)
{
    observed.removeObserver(*this);
    observed.textStorage().removeObserver(this);
}

void EditorPane::selectTab(std::size_t index)
{
    if (index >= tabs_.size() || index == activeTabIndex_)
        return;
    storeTabState();
    showTab(index);
}

void EditorPane::showTab(std::size_t index)
{
    activeTabIndex_ = index;
    applyTabState();
}

OpenResult EditorPane::openLocation(const std::filesystem::path& path)
{
    if (const std::optional<std::size_t> open = tabShowing(standardised(path))) {
        selectTab(*open);
        return OpenResult::opened;
    }
    return showLoaded(path, readDocument(services_.fileSystem, path));
}

OpenResult EditorPane::showLoaded(const std::filesystem::path& path, LoadResult loaded)
{
    if (const std::optional<std::size_t> open = tabShowing(standardised(path))) {
        selectTab(*open);
        return OpenResult::opened;
    }
    if (!loaded) {
        setStatus(failureText(u"Could not open ", path, loaded.error()));
        return OpenResult::failed;
    }
    auto document = std::make_shared<EditorDocument>(standardised(path), std::move(loaded->text));
    document->diskStatus = loaded->status;
    showDocument(std::move(document));
    return OpenResult::opened;
}

void EditorPane::showDocument(std::shared_ptr<EditorDocument> shown)
{
    storeTabState();
    const bool replacesEmptyTab = tabs_.size() == 1 && document().isEmpty();
    addTab(makeTab(std::move(shown)));
    showTab(tabs_.size() - 1);
    if (replacesEmptyTab)
        removeTab(0);
}

void EditorPane::removeTab(std::size_t index)
{
    if (index >= tabs_.size())
        return;
    const bool wasActive = index == activeTabIndex_;
    if (!wasActive)
        storeTabState();
    stopObserving(*tabs_[index]->document);
    tabs_.erase(tabs_.begin() + static_cast<std::ptrdiff_t>(index));
    if (tabs_.empty())
        addTab(makeTab(std::make_shared<EditorDocument>()));
    if (index < activeTabIndex_)
        --activeTabIndex_;
    activeTabIndex_ = std::min(activeTabIndex_, tabs_.size() - 1);
    if (wasActive)
        applyTabState();
    else if (view_)
        view_->paneDidChangeTabs();
}

std::optional<std::size_t> EditorPane::tabShowing(const std::filesystem::path& url) const
{
    const auto tab = std::find_if(tabs_.begin(), tabs_.end(), [&url](const auto& candidate) {
        return candidate->document->url == url;
    });
    if (tab == tabs_.end())
        return std::nullopt;
    return static_cast<std::size_t>(tab - tabs_.begin());
}

void EditorPane::storeTabState()
{
    EditorTab& tab = activeTab();
    const SelectedWordOccurrences* occurrences = validOccurrences();
    if (!occurrences)
        tab.selectedWordOccurrences.reset();
    tab.selectedRange = clampedRange(selectedRange(), text().length());
    tab.secondaryCursorLocations = normalisedCursors(tab.selectedRange);
    if (view_)
        tab.scrollOrigin = view_->scrollOrigin();
}

void EditorPane::applyTabState()
{
    guard_ = Guard::applyingTabState;
    dropPendingEdit();
    EditorTab& tab = activeTab();
    const std::size_t length = text().length();
    if (tab.selectedWordOccurrences)
        selectedRanges_ = survivingOccurrences(text(), *tab.selectedWordOccurrences);
    if (!tab.selectedWordOccurrences || selectedRanges_.empty())
        selectedRanges_ = {clampedRange(tab.selectedRange, length)};
    tab.secondaryCursorLocations = normalisedCursors(selectedRange());
    goalX_.reset();
    occurrencesRevision_.reset();
    guard_ = Guard::none;
    lastActionWasTyping_ = false;
    if (view_) {
        view_->paneDidShowDocument();
        view_->setScrollOrigin(tab.scrollOrigin);
        view_->paneDidChangeTabs();
    }
    refreshStatus();
}

void EditorPane::save()
{
    storeTabState();
    if (document().url)
        writeTo(*document().url, u"saved", u"Could not save ");
    else
        saveAs();
}

void EditorPane::saveAs()
{
    if (!delegate_)
        return;
    storeTabState();
    const std::filesystem::path proposed =
        document().url ? *document().url : std::filesystem::path("untitled.txt");
    const std::optional<std::filesystem::path> chosen =
        delegate_->editorPaneWantsSaveLocation(*this, proposed);
    if (chosen)
        writeTo(standardised(*chosen), u"saved", u"Could not save ");
}

void EditorPane::autosave()
{
    if (document().isModified && document().url && !hasChangedOnDisk())
        writeTo(*document().url, u"autosaved", u"Could not autosave ");
}

/// Any difference counts, not only a later date: a file may have been replaced by an older one.
bool EditorPane::hasChangedOnDisk() const
{
    const std::optional<FileStatus>& known = document().diskStatus;
    const auto present = services_.fileSystem.status(*document().url);
    return known && present &&
           (present->date != known->date || present->identity != known->identity);
}

void EditorPane::writeTo(const std::filesystem::path& path, std::u16string_view doneWord,
                         std::u16string_view failure)
{
    const auto written = writeDocument(services_.fileSystem, path, text(), services_.asideFolder);
    if (!written) {
        setStatus(failureText(failure, path, written.error()));
        return;
    }
    didSave(path, *written, doneWord);
}

void EditorPane::didSave(const std::filesystem::path& path, const FileStatus& status,
                         std::u16string_view doneWord)
{
    EditorDocument& saved = document();
    const bool isRenamed = saved.url != path;
    saved.url = path;
    if (isRenamed)
        activeTab().language = languageMode(saved.url);
    saved.isModified = false;
    saved.diskStatus = status;
    if (view_)
        view_->paneDidChangeTabs();
    refreshStatus(doneWord);
    saved.postDidChange(this, false);
}

void EditorPane::reloadUnmodified(const std::filesystem::path& path)
{
    const std::optional<std::size_t> index = tabShowing(standardised(path));
    if (!index || tabs_[*index]->document->isModified)
        return;
    EditorDocument& reloaded = *tabs_[*index]->document;
    LoadResult loaded = readDocument(services_.fileSystem, *reloaded.url);
    if (!loaded)
        return;
    reloaded.setText(loaded->text);
    reloaded.history().clear();
    reloaded.diskStatus = loaded->status;
    reloaded.postDidChange(nullptr, true);
}

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

}  // namespace tavrel
