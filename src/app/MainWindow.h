#pragma once

#include "app/EditorColumns.h"
#include "app/MenuTable.h"
#include "app/OpenFileWatch.h"
#include "app/ProgramOptions.h"
#include "app/WatchedDialogs.h"
#include "config/Preferences.h"
#include "editor/EditorPane.h"

#include <QKeySequence>
#include <QMenuBar>
#include <QWidget>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tavrel {

class CodeEditorView;
class TerminalViewController;
class StatusLine;

/// The main window: a menu bar, the editor columns with their terminals, and the status line.
class MainWindow final : public QWidget {
public:
    /// What `services` names is borrowed and outlives the window.
    MainWindow(const EditorPaneServices& services, WindowSize size,
               const Preferences& preferences = {});
    ~MainWindow() override;

    EditorColumns& columns() { return *columns_; }
    /// Those of the active column.
    EditorPane& pane() { return columns_->currentPane(); }
    CodeEditorView& editorView() { return columns_->currentView(); }
    StatusLine& statusLine() { return *statusLine_; }
    QMenuBar& menuBar() { return *menuBar_; }

    /// Follows fonts, colours, widths, keys and languages.
    void applyPreferences(const Preferences& preferences);

    /// The dialogs to ask through; the toolkit's own unless a test gives others.
    void setModalDialogs(std::unique_ptr<ModalDialogs> dialogs);

    void performMenuItem(const MenuItem& item);
    /// Opens files in the active column, and says so.
    void openFiles(const std::vector<std::filesystem::path>& paths);

    /// From now on the files that are open are followed. The queue outlives the window.
    void startWatchingFiles(MainQueue& mainQueue,
                            const OpenFileWatch::MakeFolderWatch& makeFolderWatch);

    /// Makes the terminal of a column, when it is first shown; without it there is none.
    std::function<std::unique_ptr<TerminalViewController>()> makeTerminal;

    /// Called for the items that belong to the whole program. May be empty.
    std::function<void()> wantsSettings;
    std::function<void(std::string_view modeId)> wantsMode;

    /// Called once after the window has been drawn for the first time. May be empty.
    std::function<void()> didPaintFirst;

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildMenus();
    void addModes(QMenu& menu);
    void showShortcuts();
    void arrange();
    void chooseFiles();
    void updateWatchedFiles();
    void checkDisk();
    bool confirmsClosing();
    bool runMenuShortcut(const KeyEvent& event);
    void connectColumns();
    void didMeetCommand(const EditorCommand& command);

    WatchedDialogs dialogs_;
    QMenuBar* menuBar_;
    EditorColumns* columns_;
    StatusLine* statusLine_;
    CommandKey commandKey_;
    std::vector<std::pair<QAction*, std::string_view>> menuActions_;  // With their chords.
    bool isClosing_ = false;
    std::unique_ptr<OpenFileWatch> fileWatch_;  // Null until it is wanted.
    bool hasPutOffDiskCheck_ = false;           // Until no dialog is open.
};

}  // namespace tavrel
