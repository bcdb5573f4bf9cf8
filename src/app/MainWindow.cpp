#include "app/MainWindow.h"

#include "app/EditorColumn.h"
#include "app/QtModalDialogs.h"
#include "app/StatusLine.h"
#include "config/LanguageModeTable.h"
#include "editor/dispatch/KeyTranslator.h"
#include "editor/views/CodeEditorView.h"
#include "platform/qt/KeyEvents.h"
#include "platform/qt/KeySequences.h"
#include "terminal/TerminalViewController.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>

namespace tavrel {

namespace {

constexpr int smallestWidth = 860;
constexpr int smallestHeight = 560;

QString qtText(std::u16string_view text)
{
    return QStringView(text).toString();
}

}  // namespace

MainWindow::MainWindow(const EditorPaneServices& services, WindowSize size,
                       const Preferences& preferences)
    : pane_(std::make_unique<EditorPane>(services, paneSettingsOf(preferences))),
      dialogs_(std::make_unique<QtModalDialogs>(this)), menuBar_(new QMenuBar(this)),
      column_(new EditorColumn(*pane_, services.pasteboard, this, appearanceOf(preferences))),
      statusLine_(new StatusLine(editorView().textView().theme(), this)),
      commandKey_(preferences.commandKey)
{
    pane_->commandDispatcher().load(preferences.keymap);
    setWindowTitle(QStringLiteral("Tavrel Code"));
    setMinimumSize(smallestWidth, smallestHeight);
    buildMenus();
    resize(std::max(size.width, smallestWidth), std::max(size.height, smallestHeight));
    pane_->setDelegate(this);
    statusLine_->setText(pane_->statusText());
    connectColumn();
    column_->setFocus();
}

MainWindow::~MainWindow()
{
    pane_->setDelegate(nullptr);
    delete column_;  // Its pane is gone before the other children are.
}

CodeEditorView& MainWindow::editorView()
{
    return column_->editorView();
}

void MainWindow::connectColumn()
{
    editorView().textView().menuShortcut = [this](const QKeyEvent& event) {
        return runMenuShortcut(keyEventFromQt(event, commandKey_));
    };
    column_->setServices({
        .makeTerminal = [this] { return makeTerminal ? makeTerminal() : nullptr; },
        .runMenuShortcut = [this](const KeyEvent& event) { return runMenuShortcut(event); },
        .isMenuChord =
            [](std::string_view chord) {
                return std::ranges::find(menuTable, chord, &MenuItem::chord) != menuTable.end();
            },
        .dialogs = [this]() -> ModalDialogs& { return *dialogs_; },
        .wantsEditorFocus =
            [this](std::size_t index) {
                if (index == 0)
                    editorView().setFocus();
            },
    });
}

void MainWindow::setModalDialogs(std::unique_ptr<ModalDialogs> dialogs)
{
    dialogs_ = std::move(dialogs);
}

// --- Menus

void MainWindow::buildMenus()
{
    QMenu* menu = nullptr;
    for (const MenuItem& item : menuTable) {
        if (!menu || menu->title() != qtText(item.menu))
            menu = menuBar_->addMenu(qtText(item.menu));
        if (item.action == MenuAction::separator) {
            menu->addSeparator();
            continue;
        }
        if (item.action == MenuAction::modes) {
            addModes(*menu->addMenu(qtText(item.title)));
            continue;
        }
        QAction* action = menu->addAction(qtText(item.title));
        connect(action, &QAction::triggered, this, [this, &item] { performMenuItem(item); });
        menuActions_.push_back({action, item.chord});
    }
    showShortcuts();
}

void MainWindow::addModes(QMenu& menu)
{
    for (const LanguageModeRow& mode : languageModeTable) {
        QAction* action = menu.addAction(QString::fromUtf8(mode.displayName));
        connect(action, &QAction::triggered, this, [this, id = mode.id] {
            if (wantsMode)
                wantsMode(id);
        });
    }
}

void MainWindow::showShortcuts()
{
    for (const auto& [action, chord] : menuActions_)
        action->setShortcut(keySequence(chord, commandKey_));
}

void MainWindow::applyPreferences(const Preferences& preferences)
{
    pane_->setSettings(paneSettingsOf(preferences));
    pane_->commandDispatcher().load(preferences.keymap);
    pane_->refreshLanguages();
    const EditorAppearance appearance = appearanceOf(preferences);
    column_->setAppearance(appearance);
    statusLine_->setTheme(appearance.theme);
    commandKey_ = preferences.commandKey;
    showShortcuts();
}

void MainWindow::performMenuItem(const MenuItem& item)
{
    switch (item.action) {
    case MenuAction::separator:
    case MenuAction::modes:
        break;
    case MenuAction::openFile:
        openFiles();
        break;
    case MenuAction::saveFile:
        pane_->save();
        break;
    case MenuAction::saveFileAs:
        pane_->saveAs();
        break;
    case MenuAction::openSettings:
        if (wantsSettings)
            wantsSettings();
        break;
    case MenuAction::quit:
        close();
        break;
    case MenuAction::toggleTerminal:
        column_->toggleTerminal();
        break;
    case MenuAction::newTerminalTab:
        column_->newTerminalTab();
        break;
    case MenuAction::command:
        if (!column_->runInTerminal(item.command))
            pane_->runCommand(EditorCommand{std::string(item.command), {}});
        break;
    }
}

// By our own reading of the key: the toolkit's knows no letter on a layout without Latin ones.
bool MainWindow::runMenuShortcut(const KeyEvent& event)
{
    const std::optional<std::string> chord = KeyTranslator::chordForEvent(event);
    const auto* item = std::find_if(menuTable.begin(), menuTable.end(), [&](const MenuItem& each) {
        return !each.chord.empty() && each.chord == chord;
    });
    if (item == menuTable.end())
        return false;
    performMenuItem(*item);
    return true;
}

void MainWindow::openFiles()
{
    const auto& url = pane_->document().url;
    const std::filesystem::path folder = url ? url->parent_path() : std::filesystem::path();
    for (const std::filesystem::path& path : dialogs_->filesToOpen(folder)) {
        pane_->openLocation(path);
        const auto& opened = pane_->document().url;
        if (opened && opened->filename() == path.filename())
            statusLine_->setText(u"Opened " +
                                 QString::fromStdString(path.filename().string()).toStdU16String());
    }
}

// --- Window

void MainWindow::resizeEvent(QResizeEvent*)
{
    arrange();
}

void MainWindow::arrange()
{
    const int menuHeight = menuBar_->sizeHint().height();
    const int statusTop = height() - StatusLine::lineHeight;
    menuBar_->setGeometry(0, 0, width(), menuHeight);
    column_->setGeometry(0, menuHeight, width(), statusTop - menuHeight);
    statusLine_->setGeometry(0, statusTop, width(), StatusLine::lineHeight);
}

bool MainWindow::event(QEvent* event)
{
    const bool result = QWidget::event(event);
    if (event->type() == QEvent::UpdateRequest && didPaintFirst) {
        const auto notify = std::exchange(didPaintFirst, nullptr);
        notify();
    }
    return result;
}

void MainWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    const bool hasLostFocus = event->type() == QEvent::ActivationChange && !isActiveWindow();
    if (hasLostFocus && !isClosing_ && pane_->settings().autoSaveOnFocusLoss)
        pane_->autosave();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    isClosing_ = true;
    const bool closes = confirmsClosing();
    isClosing_ = false;
    event->setAccepted(closes);
}

// Nothing that was typed is lost without a word: what has a file is saved, the rest is asked about.
bool MainWindow::confirmsClosing()
{
    for (std::size_t index = 0; index < pane_->tabs().size(); ++index) {
        const std::shared_ptr<EditorDocument> document = pane_->tabs()[index]->document;
        if (!document->isModified)
            continue;
        pane_->selectTab(index);
        if (document->url && pane_->settings().autoSaveOnFocusLoss)
            pane_->autosave();
        if (!document->isModified)
            continue;
        const Alert alert{u"Close " + documentName(*document),
                          u"This tab has unsaved changes.",
                          {u"Close", u"Cancel"}};
        if (dialogs_->ask(alert) != 0)
            return false;
    }
    return true;
}

// --- The pane's wishes

void MainWindow::editorPaneDidSetStatus(EditorPane&, std::u16string_view text)
{
    statusLine_->setText(text);
}

void MainWindow::editorPaneDidBeep(EditorPane&)
{
    QApplication::beep();
}

std::optional<std::filesystem::path>
MainWindow::editorPaneWantsSaveLocation(EditorPane&, const std::filesystem::path& proposed)
{
    return dialogs_->saveLocation(proposed);
}

void MainWindow::editorPaneDidMeetCommand(EditorPane&, const EditorCommand& command)
{
    if (command.name == "newTerminalTab")
        column_->newTerminalTab();
    // Other commands beyond one pane belong to parts of the window that this one does not have.
}

}  // namespace tavrel
