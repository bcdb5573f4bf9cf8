#include "app/MainWindow.h"

#include "app/EditorColumn.h"
#include "app/QtModalDialogs.h"
#include "app/StatusLine.h"
#include "config/LanguageModeTable.h"
#include "editor/dispatch/KeyTranslator.h"
#include "editor/views/CodeEditorView.h"
#include "platform/Utf8.h"
#include "platform/qt/KeyEvents.h"
#include "platform/qt/KeySequences.h"
#include "terminal/TerminalViewController.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

#include <algorithm>

namespace tavrel {

namespace {

constexpr int smallestWidth = 860;
constexpr int smallestHeight = 560;

// The files that were dragged here from another program.
std::vector<std::filesystem::path> localFiles(const QMimeData& data)
{
    std::vector<std::filesystem::path> paths;
    for (const QUrl& url : data.urls()) {
        // The bytes of the name, which need not be those of any text.
        if (url.isLocalFile())
            paths.emplace_back(
                QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1())
                    .toStdString());
    }
    return paths;
}

QString qtText(std::u16string_view text)
{
    return QStringView(text).toString();
}

}  // namespace

MainWindow::MainWindow(const EditorPaneServices& services, WindowSize size,
                       const Preferences& preferences)
    : dialogs_(std::make_unique<QtModalDialogs>(this)), menuBar_(new QMenuBar(this)),
      columns_(new EditorColumns(services, preferences, this)),
      statusLine_(new StatusLine(appearanceOf(preferences).theme, this)),
      commandKey_(preferences.commandKey)
{
    setWindowTitle(QStringLiteral("Tavrel Code"));
    setMinimumSize(smallestWidth, smallestHeight);
    setAcceptDrops(true);
    buildMenus();
    resize(std::max(size.width, smallestWidth), std::max(size.height, smallestHeight));
    connectColumns();
    statusLine_->setText(pane().statusText());
    columns_->setFocus();
}

MainWindow::~MainWindow()
{
    delete columns_;  // What its panes still tell finds the other children alive.
}

void MainWindow::connectColumns()
{
    columns_->setModalDialogs(dialogs_);
    columns_->didSetStatus = [this](std::u16string_view text) { statusLine_->setText(text); };
    columns_->didMeetCommand = [this](const EditorCommand& command) { didMeetCommand(command); };
    columns_->didChangeTabs = [this] { updateWatchedFiles(); };
    columns_->menuShortcut = [this](const QKeyEvent& event) {
        return runMenuShortcut(keyEventFromQt(event, commandKey_));
    };
    dialogs_.didClose = [this] {
        // Whoever asked goes on first.
        if (std::exchange(hasPutOffDiskCheck_, false) && fileWatch_)
            fileWatch_->lookLater();
    };
    columns_->setTerminalServices({
        .makeTerminal = [this] { return makeTerminal ? makeTerminal() : nullptr; },
        .runMenuShortcut = [this](const KeyEvent& event) { return runMenuShortcut(event); },
        .isMenuChord =
            [](std::string_view chord) {
                return std::ranges::find(menuTable, chord, &MenuItem::chord) != menuTable.end();
            },
        .dialogs = [this]() -> ModalDialogs& { return dialogs_; },
        .wantsEditorFocus = [this](std::size_t index) { columns_->focusColumn(index); },
    });
}

void MainWindow::setModalDialogs(std::unique_ptr<ModalDialogs> dialogs)
{
    dialogs_.setDialogs(std::move(dialogs));
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
    columns_->applyPreferences(preferences);
    statusLine_->setTheme(appearanceOf(preferences).theme);
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
        chooseFiles();
        break;
    case MenuAction::saveFile:
        pane().save();
        break;
    case MenuAction::saveFileAs:
        pane().saveAs();
        break;
    case MenuAction::openSettings:
        if (wantsSettings)
            wantsSettings();
        break;
    case MenuAction::quit:
        close();
        break;
    case MenuAction::toggleTerminal:
        columns_->toggleTerminal();
        break;
    case MenuAction::newTerminalTab:
        columns_->newTerminalTab();
        break;
    case MenuAction::command:
        if (!columns_->runInTerminal(item.command))
            pane().runCommand(EditorCommand{std::string(item.command), {}});
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

void MainWindow::chooseFiles()
{
    const auto& url = pane().document().url;
    const std::filesystem::path folder = url ? url->parent_path() : std::filesystem::path();
    openFiles(dialogs_.filesToOpen(folder));
}

void MainWindow::openFiles(const std::vector<std::filesystem::path>& paths)
{
    for (const std::filesystem::path& path : paths) {
        columns_->autosaveCurrent();
        if (pane().openLocation(path) == OpenResult::opened)
            statusLine_->setText(u"Opened " + utf16FromUtf8(path.filename().native()));
    }
}

void MainWindow::didMeetCommand(const EditorCommand& command)
{
    // The other commands beyond one column belong to parts of the window that it does not have yet.
    if (command.name == "closeWindow")
        close();
    else if (command.name == "newTerminalTab")
        columns_->newTerminalTab();
}

// --- Files that change outside

void MainWindow::startWatchingFiles(MainQueue& mainQueue,
                                    const OpenFileWatch::MakeFolderWatch& makeFolderWatch)
{
    fileWatch_ = std::make_unique<OpenFileWatch>(mainQueue, makeFolderWatch);
    fileWatch_->didSettle = [this] { checkDisk(); };
    fileWatch_->didRunOut = [this] {
        statusLine_->setText(u"Some open files are not watched: the system has no watches left");
    };
    updateWatchedFiles();
}

// A question that comes up over another one would be answered first, about what the user does not
// have in mind.
void MainWindow::checkDisk()
{
    hasPutOffDiskCheck_ = dialogs_.isOpen();
    if (!hasPutOffDiskCheck_)
        columns_->checkDisk();
}

void MainWindow::updateWatchedFiles()
{
    if (!fileWatch_)
        return;
    std::vector<std::filesystem::path> files;
    for (const std::shared_ptr<EditorDocument>& document : columns_->documents()) {
        if (document->url)
            files.push_back(*document->url);
    }
    fileWatch_->setFiles(files);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    event->setAccepted(!localFiles(*event->mimeData()).empty());
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const std::vector<std::filesystem::path> files = localFiles(*event->mimeData());
    if (files.empty())
        return;
    event->acceptProposedAction();
    openFiles(files);
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
    columns_->setGeometry(0, menuHeight, width(), statusTop - menuHeight);
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
    // A dialog of our own takes the focus too, but not the user away.
    if (event->type() != QEvent::ActivationChange || isClosing_ || dialogs_.isOpen() ||
        QApplication::activeModalWidget())
        return;
    if (isActiveWindow())
        checkDisk();
    else
        columns_->autosaveCurrent();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    isClosing_ = true;
    const bool closes = confirmsClosing();
    isClosing_ = false;
    event->setAccepted(closes);
}

// Nothing that was typed is lost without a word: what has a file is saved, the rest is asked about,
// each document once.
bool MainWindow::confirmsClosing()
{
    for (const std::shared_ptr<EditorDocument>& document : columns_->documents()) {
        if (!document->isModified)
            continue;
        EditorPane& shown = columns_->reveal(*document);
        if (document->url && shown.settings().autoSaveOnFocusLoss)
            shown.autosave();
        if (!document->isModified)
            continue;
        const EditorPaneAlert alert{u"Close " + documentName(*document),
                                    u"This tab has unsaved changes.",
                                    {u"Close", u"Cancel"},
                                    1};
        const DocumentQuestion question(document);
        if (dialogs_.ask(alert) != 0)
            return false;
    }
    return true;
}

}  // namespace tavrel
