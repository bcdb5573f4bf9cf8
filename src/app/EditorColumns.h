#pragma once

#include "app/EditorColumn.h"
#include "app/ModalDialogs.h"
#include "config/Preferences.h"
#include "editor/EditorPane.h"
#include "editor/EditorTabDrag.h"
#include "editor/views/EditorAppearance.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

class QKeyEvent;

namespace tavrel {

class CodeEditorView;

/// The editor columns of a window side by side: as many as fit in their preferred width, up to the
/// number of the preferences, and always at least one, which then takes the whole width.
///
/// One of them is the active one: it has the keys, and its status text is shown. A column is made
/// when it first fits and then stays; one that no longer fits is hidden with its tabs. Under each
/// editor lies a terminal; they are in sight all together or not at all.
class EditorColumns final : public QWidget, private EditorPaneDelegate {
public:
    /// What `services` names is borrowed and outlives the columns, as do the dialogs.
    EditorColumns(const EditorPaneServices& services, const Preferences& preferences,
                  QWidget* parent);
    ~EditorColumns() override;

    void setModalDialogs(ModalDialogs& dialogs) { dialogs_ = &dialogs; }
    /// What the columns ask of the window for their terminals; before it there are none.
    void setTerminalServices(const EditorColumn::Services& services);
    void applyPreferences(const Preferences& preferences);

    /// All of them, also those out of sight.
    std::size_t columnCount() const { return columns_.size(); }
    std::size_t visibleColumnCount() const { return visibleCount_; }
    EditorPane& pane(std::size_t index) { return *columns_[index].pane; }
    EditorColumn& column(std::size_t index) { return *columns_[index].column; }
    CodeEditorView& view(std::size_t index) { return column(index).editorView(); }
    std::size_t activeColumnIndex() const { return activeIndex_; }
    EditorPane& currentPane() { return pane(activeIndex_); }
    CodeEditorView& currentView() { return view(activeIndex_); }

    /// Gives the keys to a column, counted from 0; one that is not in sight is none.
    void focusColumn(std::size_t index);
    /// Shows the file of the active tab in the column that had the keys before this one.
    void showNewViewOfFile();
    /// Moves the active tab into a column in sight, counted from 0, and makes it active there.
    void moveActiveTab(std::size_t index);

    /// Shows the terminals of all columns, or hides them all. The keys go to what is shown, or back
    /// to the editor.
    void toggleTerminal();
    bool isTerminalVisible() const { return isTerminalVisible_; }
    /// One more tab in the terminal that has the keys, or in that of the active column. Shows the
    /// terminals where they are hidden.
    void newTerminalTab();
    /// Runs an editing command of a menu in the terminal that has the keys; false where none has.
    bool runInTerminal(std::string_view command);

    /// Saves the active document by itself, if the preferences want that.
    void autosaveCurrent();

    /// Closes the tabs of every column, also those out of sight, after asking about each modified
    /// document; the first refusal ends it.
    void closeAllTabs();
    /// Looks at the files of all tabs, and takes over or asks about those that have changed.
    void checkDisk();
    /// Takes over what the program itself has written to a file, unless a tab on it is modified.
    void reloadUnmodified(const std::filesystem::path& path);
    /// Shows an open document in the first column that has a tab on it, for a question about it.
    EditorPane& reveal(const EditorDocument& document);

    /// Each document that is open in any column once, in the order of columns and tabs.
    std::vector<std::shared_ptr<EditorDocument>> documents() const;

    /// The status text of the active column. May be empty, as the others.
    std::function<void(std::u16string_view)> didSetStatus;
    /// A command that goes beyond the columns.
    std::function<void(const EditorCommand&)> didMeetCommand;
    /// A chord that no column knows; true ends the matter.
    std::function<bool(const QKeyEvent&)> menuShortcut;
    /// A file may have been opened, closed or renamed.
    std::function<void()> didChangeTabs;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    static constexpr int spacing = 1;  // Between two columns.
    static constexpr std::size_t mostColumns = 4;

    struct Column {
        std::unique_ptr<EditorPane> pane;
        EditorColumn* column = nullptr;  // A child.
    };

    void addColumn();
    void showTerminals(bool areVisible);
    bool hasKeys(const EditorColumn& column) const;
    void updateVisibleColumns();
    void arrange();
    std::size_t fittingColumnCount() const;
    std::size_t indexOf(const EditorPane& pane) const;
    std::size_t columnBeside(std::size_t index) const;
    void activate(std::size_t index);
    bool runColumnCommand(const EditorCommand& command);

    void editorPaneDidSetStatus(EditorPane& pane, std::u16string_view text) override;
    void editorPaneDidBeep(EditorPane& pane) override;
    void editorPaneDidBecomeActive(EditorPane& pane) override;
    std::optional<std::filesystem::path>
    editorPaneWantsSaveLocation(EditorPane& pane, const std::filesystem::path& proposed) override;
    std::size_t editorPaneWantsAnswer(EditorPane& pane, const EditorPaneAlert& alert) override;
    std::vector<EditorPane*> editorPaneWantsEditors(EditorPane& pane) override;
    EditorPane* editorPaneWantsFileShown(EditorPane& pane,
                                         const std::filesystem::path& path) override;
    void editorPaneDidMeetCommand(EditorPane& pane, const EditorCommand& command) override;

    EditorPaneServices services_;
    EditorPaneSettings settings_;
    EditorAppearance appearance_;
    std::vector<KeyMapEntry> keymap_;
    std::size_t maximumCount_;
    ModalDialogs* dialogs_ = nullptr;
    EditorColumn::Services terminalServices_;
    bool isTerminalVisible_ = false;
    EditorTabDrag tabDrag_;
    std::vector<Column> columns_;  // Never empty.
    std::size_t visibleCount_ = 1;
    std::size_t activeIndex_ = 0;            // Below `visibleCount_`.
    std::vector<std::size_t> focusHistory_;  // The last one first, each at most once.
};

}  // namespace tavrel
