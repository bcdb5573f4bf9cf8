#pragma once

#include "editor/EditorPane.h"
#include "editor/TextStorage.h"
#include "editor/views/CompletionListView.h"
#include "editor/views/EditorAppearance.h"
#include "editor/views/EditorFont.h"
#include "editor/views/PreeditText.h"
#include "editor/views/TextSelection.h"
#include "editor/views/ViewDecorations.h"
#include "editor/views/ViewRows.h"
#include "editor/views/ViewScroll.h"
#include "editor/views/ViewTheme.h"

#include <QAccessible>
#include <QBasicTimer>
#include <QPointer>
#include <QUrl>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

class QMenu;

namespace tavrel {

/// Who moves and draws together with a text view.
class TavrelTextViewDelegate {
public:
    virtual ~TavrelTextViewDelegate() = default;
    /// The rows in sight are others, or show other text.
    virtual void textViewDidChangeRows() = 0;
    /// The picture has moved by `dy` pixels; what came into sight is to be drawn.
    virtual void textViewDidScroll(int dy) = 0;
    /// The view has become the one that takes keys.
    virtual void textViewDidBecomeFirstResponder() = 0;
    /// The view takes the keys no longer.
    virtual void textViewDidEndEditing() = 0;
};

/// Shows the text of a pane's active tab, and turns keys, input methods and the mouse into calls of
/// the pane. Draws the cursors itself; they do not blink.
///
/// What it shows is kept as rows and rectangles; a change is followed by drawing the difference.
/// No event costs time in proportion to the text.
class TavrelTextView final : public QWidget,
                             private TextStorageObserver,
                             private QAccessible::ActivationObserver {
public:
    /// The pane is borrowed and outlives the view. `delegate` may be null.
    TavrelTextView(EditorPane& pane, TavrelTextViewDelegate* delegate, QWidget* parent,
                   const EditorAppearance& appearance = {});
    ~TavrelTextView() override;

    void setDelegate(TavrelTextViewDelegate* delegate) { delegate_ = delegate; }
    EditorPane& pane() { return pane_; }

    /// Reads everything of the pane anew.
    void showDocument();
    void refreshDecorations();
    void scrollToVisible(TextRange range);

    const ScrollOrigin& scrollOrigin() const { return origin_; }
    void setScrollOrigin(ScrollOrigin origin);
    void scrollBy(double distance);

    const ViewRows& rows() const { return rows_; }
    std::span<const VisibleRow> visibleRows() const { return visible_; }
    const EditorFont& editorFont() const { return font_; }
    const ViewTheme& theme() const { return appearance_.theme; }
    const ViewDecorations& decorations() const { return decorations_; }
    ViewScroll scrolling() const;

    /// The width that `columnWidth` columns take, in logical pixels.
    double columnLimit() const;
    /// Follows the appearance, and the widths that the pane's settings give.
    void setAppearance(const EditorAppearance& appearance);
    void setColumnWidth(int columns);
    void setFieldLayout(bool isFieldLayout);

    /// Where a click at `point` puts the cursor, in the view's coordinates.
    std::size_t offsetAt(QPointF point) const;
    /// The rectangle of a cursor at `location`, or nothing where that is out of sight.
    std::optional<QRectF> cursorRectAt(std::size_t location) const;

    /// Offers words for what stands in `partial`, the likeliest first; an empty list closes. The
    /// text stays as it is until one is taken. The list owns the keys while it is shown, and closes
    /// with the last choice, with any click, and when the view loses the keyboard.
    void showCompletions(TextRange partial, const std::vector<std::u16string>& candidates);
    void closeCompletions();
    bool isShowingCompletions() const { return completionRange_.has_value(); }

    /// Sees every key but those of the completion list before the pane does; true ends the matter.
    /// May be empty.
    std::function<bool(const KeyEvent&)> keyInterceptor;
    /// Opens an address that was clicked, in place of the desktop's own program. May be empty.
    std::function<void(const QUrl&)> openLink;
    /// Offered each chord that the pane does not know before it is taken as text, so that a menu's
    /// shortcuts come last. May be empty.
    std::function<bool(const QKeyEvent&)> menuShortcut;

    /// What an input method is composing at the cursor.
    const PreeditText& preedit() const { return preedit_; }
    /// Has the input method type what it composes.
    void commitPreedit();

    /// Whether keys go to this view as soon as its window has them.
    bool isFirstResponder() const;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    // The left edge of the text, and the room kept free to the right of it.
    static constexpr double linePadding = 5.0;
    static constexpr double cursorWidth = 2.0;

    void storageDidChange(const TextStorage& storage, std::span<const TextChange> changes) override;
    void storageDidChangeTokens(const TextStorage& storage, TextRange range) override;
    void accessibilityActiveChanged(bool active) override { isAnnouncing_ = active; }

    void observe(TextStorage* storage);
    void updateScale();
    void measureFont();
    void updateWrap();
    void layOutAll();
    void colorVisibleRows();
    void moveTo(ScrollOrigin origin);
    void repaintChangedRows(const std::vector<VisibleRow>& before,
                            std::span<const TextChange> changes);
    void setDecorations(ViewDecorations decorations);
    void announceSelection();
    ViewDecorations makeDecorations() const;
    DecorationMetrics decorationMetrics() const;
    QRect rowRect(const VisibleRow& row) const;

    void paintRow(QPainter& painter, const VisibleRow& row, const QRect& clip) const;
    /// Where the composed text stands, and how its row makes room for it.
    struct PreeditPlace {
        const VisibleRow* row;
        double x;      // Where the cursor is in the row without it.
        double shift;  // Of the whole row, at most 0: so that its end is in sight.
    };
    std::optional<PreeditPlace> preeditPlace() const;
    QRectF preeditCursorRect(const PreeditPlace& place) const;
    void paintPreeditRow(QPainter& painter, const PreeditPlace& place) const;
    QRectF besidePreedit(const QRectF& rect, const std::optional<PreeditPlace>& place) const;
    void endPreedit();

    /// Whether the key types text where no binding takes it.
    static bool isTyping(const QKeyEvent& event, const KeyEvent& key);
    bool handleUnboundKey(const QKeyEvent& event, const KeyEvent& key);
    void extendSelection(std::size_t head);

    bool handleCompletionKey(const QKeyEvent& event, const KeyEvent& key);
    void takeKey(const QKeyEvent& event, const KeyEvent& key);
    void typeOn(const std::function<void()>& input);
    void closeStaleCompletions();
    void acceptCompletion(int index);

    /// Whether the click is done with: it picked a colour, opened something or placed a cursor.
    bool handleSpecialClick(const QMouseEvent& event);
    void beginDrag(const QMouseEvent& event);
    void followLink(const QString& address);
    void addLinkItems(QMenu& menu, const QString& address);
    void dragTo(QPointF point);
    void updateAutoscroll(QPointF point, double margin);

    bool isInSelection(QPointF point) const;
    void dragText();
    void dropText(const QDropEvent& event, std::size_t location);
    void showDropLocation(std::optional<std::size_t> location);

    EditorPane& pane_;
    TavrelTextViewDelegate* delegate_;
    EditorAppearance appearance_;
    double scale_;  // That the font is measured for.
    EditorFont font_;
    ViewRows rows_;
    TextStorage* storage_ = nullptr;            // The one observed, of the pane's active document.
    std::shared_ptr<EditorDocument> document_;  // Keeps `storage_` alive.
    int columnWidth_;
    bool isFieldLayout_ = false;

    ScrollOrigin origin_;
    std::vector<VisibleRow> visible_;              // As drawn, or about to be.
    ViewDecorations decorations_;                  // Likewise.
    bool isAnnouncing_ = QAccessible::isActive();  // Somebody reads the screen.
    TextRange announcedSelection_;                 // As programs that read the screen know it.
    PreeditText preedit_;
    bool isEndingPreedit_ = false;

    QPointer<CompletionListView> completionList_;  // A child of the window.
    std::optional<TextRange> completionRange_;     // What a word would replace, while it is shown.
    bool isTypingOn_ = false;                      // The list is about to be brought up to date.

    /// Where Shift with motions by rows wants to be, as long as text and selection are as they left
    /// them.
    struct VerticalGoal {
        TextRange selection;
        std::uint64_t revision = 0;
        double x = 0;
    };
    std::optional<VerticalGoal> goal_;
    SelectionDrag drag_;
    bool hasTakenRightClick_ = false;  // The press before a menu has done something else.
    bool hasTakenClick_ = false;       // The same of the press before a double click.
    bool isDragging_ = false;
    QPointF dragPoint_;  // Of the drag that makes a selection, or of one that is over this view.
    double autoscrollMargin_ = 0;
    std::optional<QPointF> textDragStart_;  // The press that may become a drag of text.
    std::optional<TextRange> draggedText_;  // While text of this view is dragged about.
    std::optional<std::size_t> dropLocation_;
    QBasicTimer autoscrollTimer_;
    int clickCount_ = 0;
    ulong clickTime_ = 0;
    QPointF clickPoint_;
    double wheelRest_ = 0;
};

}  // namespace tavrel
