#pragma once

#include "editor/EditorPane.h"
#include "editor/EditorTabDrag.h"
#include "editor/views/EditorLineNumberGutterView.h"
#include "editor/views/EditorScrollBar.h"
#include "editor/views/EditorTabScrollView.h"
#include "editor/views/TavrelTextView.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>

class QColorDialog;

namespace tavrel {

/// One editor column on the screen: the tab bar, the gutter, the text view and its scroll bar,
/// showing a pane.
///
/// The scroll bar counts in estimated rows, since the true number would need the whole text to be
/// laid out: the ends of its range are exact, what lies between is near.
class CodeEditorView final : public QWidget, public EditorPaneView, private TavrelTextViewDelegate {
public:
    /// The pane is borrowed and outlives the view, which becomes the pane's view. Of a field editor
    /// there is the text alone.
    explicit CodeEditorView(EditorPane& pane, QWidget* parent = nullptr,
                            const EditorAppearance& appearance = {});
    ~CodeEditorView() override;

    EditorPane& pane() { return pane_; }
    TavrelTextView& textView() { return *textView_; }
    EditorLineNumberGutterView& lineNumberGutterView() { return *lineNumberGutterView_; }
    EditorScrollBar& scrollBar() { return *scrollBar_; }
    EditorTabScrollView& tabScrollView() { return *tabScrollView_; }
    bool isFieldEditor() const { return pane_.isFieldEditor(); }

    /// Carries tabs to and from this column; borrowed, and outlives it. Null: they cannot be
    /// dragged.
    void setTabDrag(EditorTabDrag* tabDrag) { tabDrag_ = tabDrag; }

    /// Follows the appearance, and the widths that the pane's settings give.
    void setAppearance(const EditorAppearance& appearance);

    /// The width at which `columnWidth` columns fit, in logical pixels.
    int preferredWidth() const;

    /// Whether this column is the one that the user works in; only its looks follow.
    void setActive(bool isActive) { tabScrollView_->setProminent(isActive); }

    /// The colour panel while it is open, else null.
    QColorDialog* colorPanel() const;

    /// Called when tabs come or go, or their titles change. May be empty.
    std::function<void()> didChangeTabs;

    // EditorPaneView
    void paneWillLeaveTab() override { textView_->commitPreedit(); }
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
    void paneWantsColorPanel(Color color) override;
    void paneDidEndColorPicking() override;
    double rowHeight() const override { return textView_->editorFont().rowHeight(); }
    const RowLayout& rowLayout() const override { return textView_->rows(); }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void textViewDidChangeRows() override;
    void textViewDidScroll(int dy) override;
    void textViewDidBecomeFirstResponder() override;
    void textViewDidEndEditing() override;

    void arrange();
    void selectTab(int index);
    void dragTab(int index, QPoint grip);
    bool canTakeTab(const QDropEvent& event) const;
    void showPosition();
    void updateRange();
    void scrollBarMoved(int value);

    EditorPane& pane_;
    EditorTabScrollView* tabScrollView_;
    TavrelTextView* textView_;
    EditorLineNumberGutterView* lineNumberGutterView_;
    EditorScrollBar* scrollBar_;
    QTimer rangeTimer_;  // The range follows the text a moment later: no key waits for it.
    bool isShowingPosition_ = false;
    EditorTabDrag* tabDrag_ = nullptr;
    QPointer<QColorDialog> colorPanel_;
    QPointer<EditorTabDragView> hiddenDragSourceTabView_;
};

}  // namespace tavrel
