#pragma once

#include "app/MenuTable.h"
#include "app/ModalDialogs.h"
#include "app/ProgramOptions.h"
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
class EditorColumn;
class TerminalViewController;
class StatusLine;

/// The main window: a menu bar, one editor column with its terminal, and the status line.
class MainWindow final : public QWidget, private EditorPaneDelegate {
public:
    /// What `services` names is borrowed and outlives the window.
    MainWindow(const EditorPaneServices& services, WindowSize size,
               const Preferences& preferences = {});
    ~MainWindow() override;

    EditorPane& pane() { return *pane_; }
    CodeEditorView& editorView();
    EditorColumn& editorColumn() { return *column_; }
    StatusLine& statusLine() { return *statusLine_; }
    QMenuBar& menuBar() { return *menuBar_; }

    /// Follows fonts, colours, widths, keys and languages.
    void applyPreferences(const Preferences& preferences);

    /// The dialogs to ask through; the toolkit's own unless a test gives others.
    void setModalDialogs(std::unique_ptr<ModalDialogs> dialogs);

    void performMenuItem(const MenuItem& item);

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

private:
    void buildMenus();
    void addModes(QMenu& menu);
    void showShortcuts();
    void arrange();
    void openFiles();
    bool confirmsClosing();
    bool runMenuShortcut(const KeyEvent& event);
    void connectColumn();

    void editorPaneDidSetStatus(EditorPane& pane, std::u16string_view text) override;
    void editorPaneDidBeep(EditorPane& pane) override;
    std::optional<std::filesystem::path>
    editorPaneWantsSaveLocation(EditorPane& pane, const std::filesystem::path& proposed) override;
    void editorPaneDidMeetCommand(EditorPane& pane, const EditorCommand& command) override;

    std::unique_ptr<EditorPane> pane_;
    std::unique_ptr<ModalDialogs> dialogs_;
    QMenuBar* menuBar_;
    EditorColumn* column_;
    StatusLine* statusLine_;
    CommandKey commandKey_;
    std::vector<std::pair<QAction*, std::string_view>> menuActions_;  // With their chords.
    bool isClosing_ = false;
};

}  // namespace tavrel
