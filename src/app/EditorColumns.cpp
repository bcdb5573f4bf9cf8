#include "app/EditorColumns.h"

#include "editor/OpenDocuments.h"
#include "editor/views/CodeEditorView.h"
#include "platform/Utf8.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>

namespace tavrel {

namespace {

std::size_t columnLimit(const Preferences& preferences, std::size_t most)
{
    return static_cast<std::size_t>(
        std::clamp<std::int64_t>(preferences.maxEditors, 1, static_cast<std::int64_t>(most)));
}

}  // namespace

EditorColumns::EditorColumns(const EditorPaneServices& services, const Preferences& preferences,
                             QWidget* parent)
    : QWidget(parent), services_(services), settings_(paneSettingsOf(preferences)),
      appearance_(appearanceOf(preferences)), keymap_(preferences.keymap),
      maximumCount_(columnLimit(preferences, mostColumns))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    addColumn();
    focusHistory_ = {0};
    setFocusProxy(columns_.front().column);
}

EditorColumns::~EditorColumns()
{
    for (Column& column : columns_) {
        column.pane->setDelegate(nullptr);
        delete column.column;  // Its pane is gone before the other children are.
    }
}

void EditorColumns::addColumn()
{
    Column added;
    added.pane = std::make_unique<EditorPane>(services_, settings_);
    added.pane->commandDispatcher().load(keymap_);
    added.column = new EditorColumn(*added.pane, services_.pasteboard, this, appearance_);
    added.column->setServices(terminalServices_);
    added.pane->setDelegate(this);
    const std::size_t index = columns_.size();
    CodeEditorView& view = added.column->editorView();
    view.setAccessibleName(QStringLiteral("Editor %1").arg(index + 1));
    view.setTabDrag(&tabDrag_);
    view.didChangeTabs = [this] {
        if (didChangeTabs)
            didChangeTabs();
    };
    view.textView().menuShortcut = [this](const QKeyEvent& event) {
        return menuShortcut && menuShortcut(event);
    };
    view.setActive(columns_.empty());
    columns_.push_back(std::move(added));
}

void EditorColumns::setTerminalServices(const EditorColumn::Services& services)
{
    terminalServices_ = services;
    for (Column& each : columns_)
        each.column->setServices(services);
}

void EditorColumns::applyPreferences(const Preferences& preferences)
{
    settings_ = paneSettingsOf(preferences);
    appearance_ = appearanceOf(preferences);
    keymap_ = preferences.keymap;
    maximumCount_ = columnLimit(preferences, mostColumns);
    for (Column& column : columns_) {
        column.pane->setSettings(settings_);
        column.pane->commandDispatcher().load(keymap_);
        column.pane->refreshLanguages();
        column.column->setAppearance(appearance_);
    }
    updateVisibleColumns();
    update();
}

// --- Which columns there are

std::size_t EditorColumns::fittingColumnCount() const
{
    const int columnWidth = std::max(columns_.front().column->editorView().preferredWidth(), 1);
    const auto fitting = static_cast<std::size_t>((width() + spacing) / (columnWidth + spacing));
    return std::clamp<std::size_t>(fitting, 1, maximumCount_);
}

void EditorColumns::updateVisibleColumns()
{
    const std::size_t count = fittingColumnCount();
    while (columns_.size() < count)
        addColumn();
    bool hidesKeys = false;  // Be it of an editor or of a terminal.
    for (std::size_t i = count; i < columns_.size(); ++i)
        hidesKeys = hidesKeys || hasKeys(column(i));
    const std::size_t before = std::exchange(visibleCount_, count);
    if (settings_.autoSaveOnFocusLoss) {
        for (std::size_t i = count; i < before; ++i)
            columns_[i].pane->autosave();
    }
    for (std::size_t i = 0; i < columns_.size(); ++i)
        column(i).setVisible(i < count);
    arrange();
    showTerminals(isTerminalVisible_);
    if (activeIndex_ >= count)
        activate(count - 1);
    if (hidesKeys)
        currentView().setFocus();
}

void EditorColumns::arrange()
{
    if (visibleCount_ == 1) {
        column(0).setGeometry(rect());
        return;
    }
    const int columnWidth = columns_.front().column->editorView().preferredWidth();
    for (std::size_t i = 0; i < visibleCount_; ++i) {
        const int left = static_cast<int>(i) * (columnWidth + spacing);
        column(i).setGeometry(left, 0, columnWidth, height());
    }
}

void EditorColumns::resizeEvent(QResizeEvent*)
{
    updateVisibleColumns();
}

void EditorColumns::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(appearance_.theme.background));
    for (std::size_t i = 0; i + 1 < visibleCount_; ++i) {
        const int left = column(i).geometry().right() + 1;
        painter.fillRect(left, 0, spacing, height(),
                         QColor::fromRgb(appearance_.theme.sidebarBackground));
    }
}

// --- The terminals

bool EditorColumns::hasKeys(const EditorColumn& column) const
{
    const QWidget* focused = window()->focusWidget();
    return focused && (focused == &column || column.isAncestorOf(focused));
}

void EditorColumns::showTerminals(bool areVisible)
{
    for (std::size_t i = 0; i < visibleCount_; ++i)
        column(i).setTerminalVisible(areVisible);
}

void EditorColumns::toggleTerminal()
{
    isTerminalVisible_ = !isTerminalVisible_;
    showTerminals(isTerminalVisible_);
    if (isTerminalVisible_)
        column(activeIndex_).focusTerminal();
    else
        currentView().setFocus();
}

void EditorColumns::newTerminalTab()
{
    if (!isTerminalVisible_)
        toggleTerminal();
    std::size_t target = activeIndex_;
    for (std::size_t i = 0; i < visibleCount_; ++i) {
        if (column(i).terminalHasFocus())
            target = i;
    }
    column(target).newTerminalTab();
}

bool EditorColumns::runInTerminal(std::string_view command)
{
    for (std::size_t i = 0; i < visibleCount_; ++i) {
        if (column(i).runInTerminal(command))
            return true;
    }
    return false;
}

// --- Panes and documents

std::size_t EditorColumns::indexOf(const EditorPane& pane) const
{
    const auto found = std::find_if(columns_.begin(), columns_.end(), [&pane](const Column& each) {
        return each.pane.get() == &pane;
    });
    return static_cast<std::size_t>(found - columns_.begin());
}

std::vector<std::shared_ptr<EditorDocument>> EditorColumns::documents() const
{
    std::vector<std::shared_ptr<EditorDocument>> all;
    std::set<const EditorDocument*> known;
    for (const Column& column : columns_) {
        for (const std::shared_ptr<EditorTab>& tab : column.pane->tabs()) {
            if (known.insert(tab->document.get()).second)
                all.push_back(tab->document);
        }
    }
    return all;
}

// --- The active column

void EditorColumns::activate(std::size_t index)
{
    if (index >= visibleCount_)
        return;
    if (index != activeIndex_)
        autosaveCurrent();
    activeIndex_ = index;
    for (std::size_t i = 0; i < columns_.size(); ++i)
        view(i).setActive(i == index);
    setFocusProxy(&column(activeIndex_));
    std::erase(focusHistory_, index);
    focusHistory_.insert(focusHistory_.begin(), index);
    if (didSetStatus)
        didSetStatus(currentPane().statusText());
    if (didChangeTabs)
        didChangeTabs();
}

void EditorColumns::autosaveCurrent()
{
    if (settings_.autoSaveOnFocusLoss)
        currentPane().autosave();
}

void EditorColumns::focusColumn(std::size_t index)
{
    if (index >= visibleCount_)
        return;
    activate(index);
    currentView().setFocus();
}

// The column in sight that had the keys last, but for this one; with one column, that.
std::size_t EditorColumns::columnBeside(std::size_t index) const
{
    if (visibleCount_ < 2)
        return index;
    for (const std::size_t former : focusHistory_) {
        if (former != index && former < visibleCount_)
            return former;
    }
    return index == 0 ? 1 : 0;
}

void EditorColumns::showNewViewOfFile()
{
    if (visibleCount_ < 2)
        return;
    const EditorTab& tab = currentPane().activeTab();
    if (!tab.document->url || tab.isSearchResults) {
        if (didSetStatus)
            didSetStatus(u"No file to view in another editor");
        return;
    }
    const std::size_t target = columnBeside(activeIndex_);
    const std::filesystem::path url = *tab.document->url;
    pane(target).openLocation(url);
    focusColumn(target);
    if (didSetStatus) {
        const std::string number = std::to_string(target + 1);
        didSetStatus(u"Viewing " + utf16FromUtf8(url.filename().native()) + u" in editor " +
                     utf16FromUtf8(number));
    }
}

bool EditorColumns::runColumnCommand(const EditorCommand& command)
{
    static constexpr std::array<std::string_view, mostColumns> focusCommands{"editor1", "editor2",
                                                                             "editor3", "editor4"};
    for (std::size_t i = 0; i < focusCommands.size(); ++i) {
        if (command.name == focusCommands[i]) {
            focusColumn(i);
            return true;
        }
    }
    if (command.name == "closeAllFiles") {
        closeAllTabs();
        return true;
    }
    if (command.name == "newView") {
        showNewViewOfFile();
        return true;
    }
    if (command.name == "moveToEditor") {
        const std::int64_t number = command.integer("editor", 1);
        if (number >= 1)
            moveActiveTab(static_cast<std::size_t>(number) - 1);
        return true;
    }
    return false;
}

void EditorColumns::moveActiveTab(std::size_t index)
{
    if (index >= visibleCount_ || index == activeIndex_)
        return;
    moveTab(currentPane(), currentPane().activeTabIndex(), pane(index));
    focusColumn(index);
}

// While the user is asked the window may become wider, and a column come to the others.

void EditorColumns::closeAllTabs()
{
    const std::size_t active = activeIndex_;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (pane(i).closeAllTabs() == TabClosing::cancelled)
            return;  // The keys are where the user was asked.
    }
    focusColumn(active);
}

void EditorColumns::checkDisk()
{
    for (std::size_t i = 0; i < columns_.size(); ++i)
        pane(i).checkDisk();
}

void EditorColumns::reloadUnmodified(const std::filesystem::path& path)
{
    for (const Column& column : columns_)
        column.pane->reloadUnmodified(path);
}

EditorPane& EditorColumns::reveal(const EditorDocument& document)
{
    for (const Column& column : columns_) {
        const auto& tabs = column.pane->tabs();
        const auto tab = std::find_if(tabs.begin(), tabs.end(), [&document](const auto& each) {
            return each->document.get() == &document;
        });
        if (tab == tabs.end())
            continue;
        column.pane->selectTab(static_cast<std::size_t>(tab - tabs.begin()));
        return *column.pane;
    }
    return currentPane();
}

// --- What the panes ask for

void EditorColumns::editorPaneDidSetStatus(EditorPane& pane, std::u16string_view text)
{
    if (&pane == &currentPane() && didSetStatus)
        didSetStatus(text);
}

void EditorColumns::editorPaneDidBeep(EditorPane&)
{
    QApplication::beep();
}

void EditorColumns::editorPaneDidBecomeActive(EditorPane& pane)
{
    activate(indexOf(pane));
}

std::optional<std::filesystem::path>
EditorColumns::editorPaneWantsSaveLocation(EditorPane&, const std::filesystem::path& proposed)
{
    if (!dialogs_)
        return std::nullopt;
    return dialogs_->saveLocation(proposed);
}

std::size_t EditorColumns::editorPaneWantsAnswer(EditorPane&, const EditorPaneAlert& alert)
{
    return dialogs_ ? dialogs_->ask(alert) : alert.escapeButton;
}

std::vector<EditorPane*> EditorColumns::editorPaneWantsEditors(EditorPane&)
{
    std::vector<EditorPane*> panes;
    for (const Column& column : columns_)
        panes.push_back(column.pane.get());
    return panes;
}

// In the column beside the results, so that both can be seen.
EditorPane* EditorColumns::editorPaneWantsFileShown(EditorPane& asking,
                                                    const std::filesystem::path& path)
{
    const std::size_t target = columnBeside(indexOf(asking));
    if (pane(target).openLocation(path) != OpenResult::opened) {
        if (didSetStatus)  // Why not, which that pane knows.
            didSetStatus(pane(target).statusText());
        return nullptr;
    }
    focusColumn(target);
    return &pane(target);
}

void EditorColumns::editorPaneDidMeetCommand(EditorPane&, const EditorCommand& command)
{
    if (!runColumnCommand(command) && didMeetCommand)
        didMeetCommand(command);
}

}  // namespace tavrel
