#pragma once

#include "app/ColumnSplit.h"
#include "terminal/TerminalDelegate.h"

#include <QColor>
#include <QCursor>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tavrel {

class CodeEditorView;
class EditorPane;
class ModalDialogs;
class Pasteboard;
class TerminalPanel;
struct EditorAppearance;
struct KeyEvent;

/// An editor and the terminal panel under it, with a divider between them that can be dragged.
///
/// The terminal and its widgets are made when they are first shown; before that they cost nothing.
class EditorColumn final : public QWidget, private TerminalDelegate {
public:
    /// What a column asks of its window. The first four must be there when the terminal is shown.
    struct Services {
        /// Makes the terminal of this column; called at most once.
        std::function<std::unique_ptr<TerminalViewController>()> makeTerminal;
        /// Runs what a menu has for a press; whether there was anything.
        std::function<bool(const KeyEvent&)> runMenuShortcut;
        /// Whether a menu has something for a canonical chord.
        std::function<bool(std::string_view chord)> isMenuChord;
        /// The dialogs to ask through, as long as the window lives.
        std::function<ModalDialogs&()> dialogs;
        /// A command asks for the editor column of this index, from 0.
        std::function<void(std::size_t)> wantsEditorFocus;
        /// What is remembered of the terminal's tabs has changed. May be empty.
        std::function<void()> terminalTabsDidChange;
    };

    /// The pane and the pasteboard are borrowed and outlive the column.
    EditorColumn(EditorPane& pane, Pasteboard& pasteboard, QWidget* parent,
                 const EditorAppearance& appearance);
    ~EditorColumn() override;

    void setServices(Services services) { services_ = std::move(services); }

    CodeEditorView& editorView() { return *editorView_; }
    /// Null until the terminal was first shown.
    TerminalPanel* terminalPanel() { return panel_; }
    TerminalViewController* terminal() { return terminal_.get(); }

    bool isTerminalVisible() const;
    /// Shows or hides the terminal. Does not move the keys, but takes them from what is hidden.
    void setTerminalVisible(bool isVisible);
    bool terminalHasFocus() const;
    /// Gives the keys to the terminal, where it is shown.
    void focusTerminal();
    /// Adds a tab to the terminal that is shown, and gives it the keys.
    void newTerminalTab();
    /// Runs an editing command of a menu in the terminal, where that has the keys: copying and
    /// pasting; others mean nothing there. Whether the terminal has the keys.
    bool runInTerminal(std::string_view command);

    /// Follows the appearance; the terminal reads its own preferences anew.
    void setAppearance(const EditorAppearance& appearance);

    ColumnSplit& split() { return split_; }
    /// Puts editor, divider and terminal where they belong.
    void arrange();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void terminalTabsDidChange(TerminalViewController& terminal) override;
    void terminalWantsEditorFocus(TerminalViewController& terminal, std::size_t index) override;
    void terminalDidRingBell(TerminalViewController& terminal) override;
    bool terminalWantsAnswer(TerminalViewController& terminal,
                             const TerminalQuestion& question) override;
    std::optional<std::u16string> terminalWantsText(TerminalViewController& terminal,
                                                    const TerminalQuestion& question,
                                                    const std::u16string& text) override;

    bool makeTerminal();
    void arrangeWithTerminal();
    void watchForDivider(QWidget& widget);
    bool isOnDivider(int y) const;
    void dragDivider(int y);
    void showDividerCursor(QWidget& widget, bool isOn);

    Pasteboard& pasteboard_;
    Services services_;
    CodeEditorView* editorView_;
    std::unique_ptr<TerminalViewController> terminal_;
    TerminalPanel* panel_ = nullptr;
    ColumnSplit split_;
    QColor dividerColor_;
    QPointer<QWidget> dividerCursorWidget_;  // The one that shows the divider's cursor now,
    QCursor ownCursor_;                      // in place of this one.
    std::optional<int> dragOffset_;          // From the divider's top to the mouse that holds it.
};

}  // namespace tavrel
