#include "terminal/TerminalViewController.h"

#include "config/PreferencesStore.h"
#include "platform/MainQueue.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"
#include "terminal/TerminalSession.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tavrel {
namespace {

std::u16string decimal(std::size_t number)
{
    return utf16FromUtf8(std::to_string(number));
}

}  // namespace

TerminalViewController::TerminalViewController(TerminalServices services)
    : services_(std::move(services)), keyMap_(services_.preferences.values().keymap),
      self_(std::make_shared<TerminalViewController*>(this))
{
    std::error_code error;
    resolvedHomeFolder_ = std::filesystem::canonical(services_.homeFolder, error);
    if (error)
        resolvedHomeFolder_ = services_.homeFolder;
}

TerminalViewController::~TerminalViewController()
{
    for (const SessionPointer& session : sessions_)
        end(*session);
}

void TerminalViewController::setView(TerminalPanelView* view)
{
    view_ = view;
    if (!view)
        return;
    if (sessions_.empty())
        sessions_.push_back(makeSession());
    // The font first: it decides how many cells there is room for.
    view->panelDidChangePreferences(services_.preferences.values());
    activate(Focus::leave);
    view->panelDidChangeTabs();
    if (const auto restore = std::exchange(pendingRestore_, {}))
        restoreTabs(restore->names, restore->directories);
}

// What there is.

TerminalEmulator* TerminalViewController::activeEmulator() const
{
    const SessionPointer session = activeSession();
    return session ? &session->emulator : nullptr;
}

std::vector<std::u16string> TerminalViewController::tabNames() const
{
    std::vector<std::u16string> names;
    for (const SessionPointer& session : sessions_)
        names.push_back(session->name);
    return names;
}

std::u16string TerminalViewController::tabTitle(std::size_t index) const
{
    const SessionPointer session = sessionAt(index);
    return session && !session->name.empty() ? session->name : decimal(index + 1);
}

bool TerminalViewController::showsTabBar() const
{
    return sessions_.size() > 1 ||
           std::ranges::any_of(
               sessions_, [](const SessionPointer& session) { return !session->name.empty(); });
}

std::vector<std::filesystem::path> TerminalViewController::tabWorkingDirectories() const
{
    std::vector<std::filesystem::path> directories;
    for (const SessionPointer& session : sessions_) {
        std::filesystem::path directory =
            session->started ? std::filesystem::path() : session->preferredWorkingDirectory;
        if (const auto current = session->process->currentWorkingDirectory())
            directory = *current;
        if (isHomeFolder(directory))
            directory.clear();
        directories.push_back(std::move(directory));
    }
    return directories;
}

bool TerminalViewController::isHomeFolder(const std::filesystem::path& directory) const
{
    // The system tells a shell's folder without symbolic links.
    return directory == services_.homeFolder || directory == resolvedHomeFolder_;
}

TerminalViewController::SessionPointer TerminalViewController::activeSession() const
{
    return sessionAt(activeSessionIndex_);
}

TerminalViewController::SessionPointer TerminalViewController::sessionAt(std::size_t index) const
{
    return index < sessions_.size() ? sessions_[index] : nullptr;
}

std::optional<std::size_t> TerminalViewController::indexOf(const TerminalSession& session) const
{
    const auto found = std::ranges::find(sessions_, &session, &SessionPointer::get);
    if (found == sessions_.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - sessions_.begin());
}

// Tabs.

void TerminalViewController::newTab()
{
    sessions_.push_back(makeSession());
    activeSessionIndex_ = sessions_.size() - 1;
    activate(Focus::take);
    start(activeSession());
    tabsDidChange();
}

void TerminalViewController::selectTab(std::size_t index)
{
    if (index >= sessions_.size() || index == activeSessionIndex_)
        return;
    activeSessionIndex_ = index;
    activate(Focus::take);
    startIfInWindow(activeSession());
    if (view_)
        view_->panelDidChangeTabs();
}

void TerminalViewController::selectPreviousTab()
{
    if (sessions_.size() > 1)
        selectTab((activeSessionIndex_ + sessions_.size() - 1) % sessions_.size());
}

void TerminalViewController::requestCloseTab(std::size_t index)
{
    const SessionPointer session = sessionAt(index);
    if (!session || sessions_.size() < 2)
        return;
    if (session->process->shellHasForegroundChild()) {
        const TerminalQuestion question{
            u"Close Terminal " + tabTitle(index) + u"?",
            u"This terminal is running a command; closing will terminate it.",
            {u"Close Terminal", u"Cancel"}};
        if (!delegate_ || !delegate_->terminalWantsAnswer(*this, question))
            return;
    }
    // Meanwhile the tab may have moved or gone.
    if (const auto current = indexOf(*session))
        closeTab(*current);
}

void TerminalViewController::closeTab(std::size_t index)
{
    if (index >= sessions_.size() || sessions_.size() < 2)
        return;
    const SessionPointer closed = sessions_[index];
    sessions_.erase(sessions_.begin() + static_cast<std::ptrdiff_t>(index));
    if ((index < activeSessionIndex_ || activeSessionIndex_ >= sessions_.size()) &&
        activeSessionIndex_ > 0)
        --activeSessionIndex_;
    end(*closed);
    activate(Focus::take);
    tabsDidChange();
}

void TerminalViewController::renameTab(std::size_t index)
{
    const SessionPointer session = sessionAt(index);
    if (!session || !delegate_)
        return;
    const TerminalQuestion question{u"Terminal Tab Name", {}, {u"Set Name", u"Cancel"}};
    const auto name = delegate_->terminalWantsText(*this, question, session->name);
    if (!name || !indexOf(*session))
        return;
    session->name = trimmedWhitespaceAndNewlines(*name);
    tabsDidChange();
}

void TerminalViewController::restoreTabs(const std::vector<std::u16string>& names,
                                         const std::vector<std::filesystem::path>& directories)
{
    if (sessions_.empty()) {
        pendingRestore_ = PendingRestore{names, directories};
        return;
    }
    const std::vector<std::u16string> wanted =
        names.empty() ? std::vector{std::u16string()} : names;
    const bool changesTabs = wanted != tabNames();
    if (changesTabs)
        restoreNames(wanted);
    for (std::size_t index = 0; index < std::min(directories.size(), sessions_.size()); ++index)
        restoreDirectory(index, directories[index]);
    if (!changesTabs)
        return;
    activeSessionIndex_ = std::min(activeSessionIndex_, sessions_.size() - 1);
    activate(Focus::leave);
    if (view_)
        view_->panelDidChangeTabs();
}

void TerminalViewController::restoreNames(const std::vector<std::u16string>& names)
{
    while (sessions_.size() > names.size()) {
        const SessionPointer removed = sessions_.back();
        sessions_.pop_back();
        end(*removed);
    }
    while (sessions_.size() < names.size())
        sessions_.push_back(makeSession());
    for (std::size_t index = 0; index < names.size(); ++index)
        sessions_[index]->name = names[index];
}

void TerminalViewController::restoreDirectory(std::size_t index,
                                              const std::filesystem::path& directory)
{
    const SessionPointer old = sessions_[index];
    if (!old->started) {
        old->preferredWorkingDirectory = directory;
        return;
    }
    const auto current = old->process->currentWorkingDirectory();
    if (directory.empty() || !current || !isHomeFolder(*current) ||
        old->process->shellHasForegroundChild())
        return;
    const SessionPointer replacement = makeSession();
    replacement->name = old->name;
    replacement->preferredWorkingDirectory = directory;
    sessions_[index] = replacement;
    end(*old);
    if (index == activeSessionIndex_) {
        activate(Focus::leave);
        startIfInWindow(replacement);
    }
}

void TerminalViewController::tabsDidChange()
{
    if (view_)
        view_->panelDidChangeTabs();
    if (delegate_)
        delegate_->terminalTabsDidChange(*this);
}

// What the view and the window report.

void TerminalViewController::activate(Focus focus)
{
    const SessionPointer session = activeSession();
    if (!view_ || !session)
        return;
    view_->panelDidShow(session->emulator);
    view_->clearSelection();
    view_->followOutput();
    syncGridSize();
    scheduleDisplay();
    if (focus == Focus::take && view_->isInWindow())
        view_->takeFocus();
}

void TerminalViewController::startActiveSession()
{
    if (const SessionPointer session = activeSession())
        start(session);
}

void TerminalViewController::startIfInWindow(const SessionPointer& session)
{
    if (view_ && view_->isInWindow())
        start(session);
}

void TerminalViewController::syncGridSize()
{
    const auto size = view_ ? view_->fittingSize() : std::nullopt;
    if (!size)
        return;
    for (const SessionPointer& session : sessions_) {
        if (session->emulator.columns() == size->columns && session->emulator.rows() == size->rows)
            continue;
        session->emulator.resize(size->columns, size->rows);
        session->process->setWindowSize(size->columns, size->rows);
    }
    view_->panelDidChangeRows();
}

void TerminalViewController::applyPreferences()
{
    const Preferences& preferences = services_.preferences.values();
    keyMap_ = TerminalKeyMap(preferences.keymap);
    for (const SessionPointer& session : sessions_)
        applyHistoryLimit(*session);
    if (!view_)
        return;
    view_->panelDidChangePreferences(preferences);
    syncGridSize();
    view_->panelDidChangeTabs();
}

void TerminalViewController::scheduleDisplay()
{
    if (needsDisplayScheduled_)
        return;
    needsDisplayScheduled_ = true;
    services_.mainQueue.post([weak = std::weak_ptr(self_)] {
        const auto self = weak.lock();
        if (!self)
            return;
        (*self)->needsDisplayScheduled_ = false;
        if ((*self)->view_)
            (*self)->view_->panelDidChangeRows();
    });
}

}  // namespace tavrel
