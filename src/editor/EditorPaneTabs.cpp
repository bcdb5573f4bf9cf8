// The tabs of a pane: which there are, which is shown, and how they come and go.

#include "editor/EditorPane.h"

#include "editor/OpenDocuments.h"

#include <algorithm>
#include <utility>

namespace tavrel {

std::shared_ptr<EditorTab> EditorPane::makeTab(std::shared_ptr<EditorDocument> document) const
{
    auto tab = std::make_shared<EditorTab>();
    tab->document = std::move(document);
    setLanguage(*tab);
    return tab;
}

void EditorPane::setLanguage(EditorTab& tab) const
{
    tab.language = languageMode(tab.document->url);
    tab.document->coloring().setLanguage(tab.language, services_.mainQueue, services_.workQueue);
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
        setLanguage(*tab);
    refreshStatus();
}

bool EditorPane::hasTabOn(const EditorDocument& candidate) const
{
    return std::any_of(tabs_.begin(), tabs_.end(),
                       [&candidate](const auto& tab) { return tab->document.get() == &candidate; });
}

void EditorPane::addTab(std::shared_ptr<EditorTab> tab)
{
    if (!hasTabOn(*tab->document))
        startObserving(*tab->document);
    tabs_.push_back(std::move(tab));
}

void EditorPane::startObserving(EditorDocument& observed)
{
    if (!isFieldEditor())
        observed.addObserver(*this);
    observed.textStorage().addObserver(this);
}

void EditorPane::stopObserving(EditorDocument& observed)
{
    observed.removeObserver(*this);
    observed.textStorage().removeObserver(this);
}

void EditorPane::tellTitleChanged(const EditorDocument& changed)
{
    for (std::size_t i = 0; i < tabs_.size(); ++i) {
        if (tabs_[i]->document.get() != &changed)
            continue;
        const bool isKnown = shownTabs_ && i < shownTabs_->titles.size() &&
                             shownTabs_->titles[i] == tabTitle(changed);
        if (!isKnown) {
            tellTabsChanged();
            return;
        }
    }
}

void EditorPane::tellTabsChanged()
{
    if (!view_ || isFieldEditor() || holdsTabChanges_)
        return;
    ShownTabs shown{{}, activeTabIndex_};
    for (const std::shared_ptr<EditorTab>& tab : tabs_)
        shown.titles.push_back(tabTitle(*tab->document));
    if (shownTabs_ == shown)
        return;
    shownTabs_ = std::move(shown);
    view_->paneDidChangeTabs();
}

// --- Showing

void EditorPane::selectTab(std::size_t index)
{
    if (index >= tabs_.size())
        return;
    if (index != activeTabIndex_) {
        willLeaveTab();
        storeTabState();
        showTab(index);
    }
    didBecomeFirstResponder();
}

void EditorPane::stepTab(int direction)
{
    if (tabs_.size() < 2)
        return;
    const std::size_t step = direction < 0 ? tabs_.size() - 1 : 1;
    selectTab((activeTabIndex_ + step) % tabs_.size());
}

void EditorPane::willLeaveTab()
{
    if (view_)
        view_->paneWillLeaveTab();
}

void EditorPane::showTab(std::size_t index)
{
    activeTabIndex_ = index;
    applyTabState();
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
    endColorPicking();
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
        view_->paneDidChangeGitLineDiff();
    }
    tellTabsChanged();
    gitMarks_.schedule(0.0);
    refreshStatus();
}

void EditorPane::showDocument(std::shared_ptr<EditorDocument> shown)
{
    adoptTab(makeTab(std::move(shown)));
    didBecomeFirstResponder();
}

void EditorPane::adoptTab(std::shared_ptr<EditorTab> tab)
{
    willLeaveTab();
    storeTabState();
    const bool replacesEmptyTab = tabs_.size() == 1 && document().isEmpty();
    addTab(std::move(tab));
    showTab(tabs_.size() - 1);
    if (replacesEmptyTab)
        removeTab(0);
}

// --- Closing

std::shared_ptr<EditorTab> EditorPane::detachTab(std::size_t index)
{
    if (index >= tabs_.size())
        return nullptr;
    if (index == activeTabIndex_)
        willLeaveTab();
    storeTabState();
    std::shared_ptr<EditorTab> tab = tabs_[index];
    removeTab(index);
    return tab;
}

TabClosing EditorPane::closeTab(std::size_t index)
{
    const TabClosing closing = closeTabWithoutFocus(index);
    if (closing == TabClosing::closed)
        takeFocus();
    return closing;
}

TabClosing EditorPane::closeTabWithoutFocus(std::size_t index)
{
    if (index >= tabs_.size())
        return TabClosing::cancelled;
    if (index == activeTabIndex_)
        willLeaveTab();
    storeTabState();
    const std::shared_ptr<EditorTab> tab = tabs_[index];
    const std::shared_ptr<EditorDocument>& closed = tab->document;
    if (closed->isModified && !documentIsOpenElsewhere(*closed, *this, editors())) {
        if (closed->isAskedAbout())
            return TabClosing::cancelled;
        const EditorPaneAlert alert{.message = u"Close " + documentName(*closed),
                                    .information = u"This tab has unsaved changes.",
                                    .buttons = {u"Close", u"Cancel"},
                                    .escapeButton = 1};
        const std::optional<std::size_t> answer = ask(closed, alert);
        if (answer != 0)
            return TabClosing::cancelled;
    }
    // Other tabs may have come and gone while the user was asked.
    const auto place = std::find(tabs_.begin(), tabs_.end(), tab);
    if (place != tabs_.end())
        removeTab(static_cast<std::size_t>(place - tabs_.begin()));
    return TabClosing::closed;
}

TabClosing EditorPane::closeAllTabs()
{
    const WeakEditorPane self = weakReference();
    const std::vector<std::shared_ptr<EditorTab>> closing = tabs_;
    TabClosing result = TabClosing::closed;
    // A tab bar that is drawn anew for each of many tabs takes time by their square.
    holdsTabChanges_ = true;
    for (const std::shared_ptr<EditorTab>& tab : closing) {
        const auto place = std::find(tabs_.begin(), tabs_.end(), tab);
        if (place == tabs_.end())
            continue;
        result = closeTabWithoutFocus(static_cast<std::size_t>(place - tabs_.begin()));
        if (!self.get())
            return TabClosing::cancelled;
        if (result == TabClosing::cancelled)
            break;
    }
    holdsTabChanges_ = false;
    tellTabsChanged();
    if (result == TabClosing::closed)
        takeFocus();
    return result;
}

void EditorPane::removeTab(std::size_t index)
{
    if (index >= tabs_.size())
        return;
    const bool wasActive = index == activeTabIndex_;
    if (!wasActive)
        storeTabState();
    const std::shared_ptr<EditorTab> removed = tabs_[index];
    tabs_.erase(tabs_.begin() + static_cast<std::ptrdiff_t>(index));
    if (!hasTabOn(*removed->document))
        stopObserving(*removed->document);
    if (tabs_.empty())
        addTab(makeTab(std::make_shared<EditorDocument>()));
    if (index < activeTabIndex_)
        --activeTabIndex_;
    activeTabIndex_ = std::min(activeTabIndex_, tabs_.size() - 1);
    if (wasActive)
        applyTabState();
    else
        tellTabsChanged();
}

void EditorPane::showInPlaceOf(const EditorDocument& former,
                               const std::shared_ptr<EditorDocument>& present)
{
    for (std::size_t i = tabs_.size(); i-- > 0;) {
        EditorTab& tab = *tabs_[i];
        if (tab.document.get() != &former)
            continue;
        if (hasTabOn(*present)) {
            removeTab(i);
            continue;
        }
        storeTabState();
        startObserving(*present);
        const std::shared_ptr<EditorDocument> left = std::exchange(tab.document, present);
        if (!hasTabOn(*left))
            stopObserving(*left);
        setLanguage(tab);
        tab.selectedWordOccurrences.reset();
        if (i == activeTabIndex_)
            applyTabState();
        else
            tellTabsChanged();
    }
}

void EditorPane::replaceTabs(std::vector<std::shared_ptr<EditorTab>> tabs, std::size_t activeIndex)
{
    const std::vector<std::shared_ptr<EditorTab>> former = std::exchange(tabs_, {});
    for (const std::shared_ptr<EditorTab>& tab : former)
        stopObserving(*tab->document);
    if (tabs.empty())
        tabs.push_back(makeTab(std::make_shared<EditorDocument>()));
    for (std::shared_ptr<EditorTab>& tab : tabs)
        addTab(std::move(tab));
    shownTabs_.reset();  // Equal titles may stand for other files.
    showTab(std::min(activeIndex, tabs_.size() - 1));
}

}  // namespace tavrel
