#pragma once

#include "editor/EditorPane.h"
#include "editor/views/EditorLineNumberGutterView.h"
#include "editor/views/EditorScrollBar.h"
#include "editor/views/EditorTabScrollView.h"
#include "editor/views/TavrelTextView.h"

#include <QByteArray>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>

namespace tavrel {

/// The tab that is being dragged from a column to another one.
struct DraggedEditorTab {
    std::size_t sourceIndex = 0;  // Counted from 0.
    QByteArray token;             // What the drag carries, so that no other drag is taken for it.
};

/// What of a column is there.
enum class EditorColumnKind {
    full,
    field,  // One line of input: the text alone.
};

/// One editor column on the screen: the tab bar, the gutter, the text view and its scroll bar,
/// showing a pane.
///
/// The scroll bar counts in estimated rows, since the true number would need the whole text to be
/// laid out: the ends of its range are exact, what lies between is near.
class CodeEditorView final : public QWidget, public EditorPaneView, private TavrelTextViewDelegate {
public:
    /// The pane is borrowed and outlives the view, which becomes the pane's view.
    explicit CodeEditorView(EditorPane& pane, QWidget* parent = nullptr,
                            const EditorAppearance& appearance = {},
                            EditorColumnKind kind = EditorColumnKind::full);
    ~CodeEditorView() override;

    EditorPane& pane() { return pane_; }
    TavrelTextView& textView() { return *textView_; }
    EditorLineNumberGutterView& lineNumberGutterView() { return *lineNumberGutterView_; }
    EditorScrollBar& scrollBar() { return *scrollBar_; }
    EditorTabScrollView& tabScrollView() { return *tabScrollView_; }
    bool isFieldEditor() const { return kind_ == EditorColumnKind::field; }

    /// Follows the appearance, and the widths that the pane's settings give.
    void setAppearance(const EditorAppearance& appearance);

    /// The width at which `columnWidth` columns fit, in logical pixels.
    int preferredWidth() const;

    /// The marks of the gutter; none where nothing is known.
    void setLineDiff(std::optional<GitLineDiff> diff);

    /// Called when this column becomes the one that takes keys. May be empty.
    std::function<void()> didBecomeActive;
    /// Called when tabs come or go, or their titles change. May be empty.
    std::function<void()> didChangeTabs;

    // EditorPaneView
    void paneDidShowDocument() override;
    void paneDidChangeSelection() override;
    void paneDidChangeTabs() override;
    void paneWantsVisible(TextRange range) override;
    void paneWantsCompletions(TextRange partial,
                              const std::vector<std::u16string>& candidates) override;
    ScrollOrigin scrollOrigin() const override { return textView_->scrollOrigin(); }
    void setScrollOrigin(const ScrollOrigin& origin) override;
    void paneDidChangeGitLineDiff() override;
    void paneWantsFocus() override;
    bool paneHasFocus() const override;
    double rowHeight() const override { return textView_->editorFont().rowHeight(); }
    const RowLayout& rowLayout() const override { return textView_->rows(); }

    /// The type of what a dragged tab carries: the token of the `DraggedEditorTab`.
    static constexpr const char* tabMimeType = "com.tavrel-code.editor-tab";
    /// Begins the drag of a tab, and says what it is to carry. The tab shows as an empty place.
    QByteArray beginTabDrag(std::size_t index);
    /// Ends it, wherever the tab has gone.
    void endTabDrag();
    const std::optional<DraggedEditorTab>& draggedTab() const { return draggedTab_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void textViewDidChangeRows() override;
    void textViewDidScroll(int dy) override;
    void textViewDidBecomeFirstResponder() override;

    void arrange();
    void selectTab(int index);
    void dragTab(int index, QPoint grip);
    CodeEditorView* tabSource(const QDropEvent& event) const;
    void showPosition();
    void updateRange();
    void scrollBarMoved(int value);

    EditorPane& pane_;
    EditorColumnKind kind_;
    EditorTabScrollView* tabScrollView_;
    TavrelTextView* textView_;
    EditorLineNumberGutterView* lineNumberGutterView_;
    EditorScrollBar* scrollBar_;
    QTimer rangeTimer_;  // The range follows the text a moment later: no key waits for it.
    bool isShowingPosition_ = false;
    std::optional<DraggedEditorTab> draggedTab_;
    QPointer<EditorTabDragView> hiddenDragSourceTabView_;
};

}  // namespace tavrel
