#pragma once

#include "platform/KeyEvent.h"
#include "terminal/GridScroll.h"
#include "terminal/GridSelection.h"
#include "terminal/KeyRoute.h"
#include "terminal/views/GridPainter.h"
#include "terminal/views/TerminalAppearance.h"
#include "terminal/views/TerminalFont.h"

#include <QBasicTimer>
#include <QPointF>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

class Pasteboard;
class TerminalEmulator;

/// Draws a terminal as a grid of cells, turns keys into the bytes that a terminal sends, and
/// handles the mouse: selecting, copying, links.
///
/// It shows a copy of the rows in sight, which `refresh` brings up to date; only rows that differ
/// are drawn again. The history is scrolled by rows. No event costs time in proportion to it.
class TerminalGridView final : public QWidget {
public:
    /// The pasteboard is borrowed and outlives the view.
    TerminalGridView(Pasteboard& pasteboard, QWidget* parent,
                     const TerminalAppearance& appearance = {});
    ~TerminalGridView() override;

    /// What is shown, from its end; null for nothing. Borrowed until another one is set.
    void setEmulator(TerminalEmulator* emulator);
    TerminalEmulator* emulator() const { return emulator_; }
    /// Follows what the emulator shows now.
    void refresh();
    /// The same, at once or a moment later: however often this is called, the rows are compared and
    /// drawn no more often than a screen can show them.
    void refreshSoon();

    void setAppearance(const TerminalAppearance& appearance);
    const TerminalAppearance& appearance() const { return appearance_; }

    /// The cells that fit into a view of this size.
    TerminalSize gridSize(QSize size) const;
    double cellWidth() const { return font_->cellWidth(); }
    double cellHeight() const { return font_->cellHeight(); }

    // The rows in sight.
    const GridScroll& scroll() const { return scroll_; }
    void scrollTo(std::int64_t top);
    void scrollBy(std::int64_t rows) { scrollTo(scroll_.top() + rows); }
    void follow();

    // The selection, in absolute rows. It does not follow the text when the history moves.
    const std::optional<GridSelection>& selection() const { return selection_; }
    void setSelection(std::optional<GridSelection> selection);
    void clearSelection() { setSelection(std::nullopt); }
    std::optional<std::u16string> selectedText() const;

    /// The selection's text goes to the pasteboard; without one nothing happens.
    void copy();
    void paste();

    /// Bytes for the shell. May be empty.
    std::function<void(std::string_view bytes)> onInput;
    /// Asked first for every press that may be a command; true ends the matter. May be empty.
    std::function<bool(const KeyEvent&)> keyCommandHandler;
    /// Offered the commands that nobody knew. May be empty.
    std::function<bool(const KeyEvent&)> menuShortcut;
    /// Whether the key map or a menu has something for a chord. May be empty.
    std::function<bool(std::string_view chord)> isBoundChord;
    /// Opens an address; the desktop's way unless a test gives another.
    std::function<void(const std::u16string& address)> openLink;
    /// The rows in sight or their number are others. May be empty.
    std::function<void()> didScroll;
    /// The view has become the one that takes keys. May be empty.
    std::function<void()> didBecomeFirstResponder;

    /// Whether keys go to this view as soon as its window has them.
    bool isFirstResponder() const;

    /// The rectangle of a cell of an absolute row, which may lie out of sight.
    QRectF cellRect(GridPosition position) const;
    /// The cell at a point, which may lie outside the grid.
    GridPosition positionAt(QPointF point) const;
    /// The text of the rows in sight, each ended by a line feed but the last, without blanks at
    /// their ends: what a screen reader gets.
    QString shownText() const;
    /// Where in `shownText` the cursor is, or nothing where it is out of sight.
    std::optional<int> shownCursorOffset() const;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    /// A row as it is drawn, or about to be.
    struct ShownRow {
        std::vector<TerminalCell> cells;
        ColumnRange selected;
        int cursorColumn = -1;
        bool operator==(const ShownRow&) const = default;
    };

    void measureFont();
    void updateScroll();
    void showRows();
    void readRow(std::int64_t row, ShownRow& into) const;
    QRect rowRect(std::size_t index) const;
    double rowTop(std::size_t index) const;
    void paintPreedit(QPainter& painter);
    std::optional<QPointF> cursorCorner() const;

    void sendTyped(std::string_view bytes);
    CursorKeys cursorKeys() const;

    bool isOpeningClick(const QMouseEvent& event) const;
    void press(const QMouseEvent& event);
    void dragTo(QPointF point);
    void endDrag();
    void autoscroll();

    Pasteboard& pasteboard_;
    TerminalAppearance appearance_;
    std::unique_ptr<TerminalFont> font_;
    std::unique_ptr<GridPainter> painter_;
    TerminalEmulator* emulator_ = nullptr;
    GridScroll scroll_;
    std::vector<ShownRow> shown_;
    ShownRow scratch_;  // Kept for its memory.
    std::optional<GridSelection> selection_;
    std::optional<GridPosition> dragAnchor_;
    std::int64_t droppedRows_ = 0;  // Of the emulator, when the anchor was last right.
    QString preedit_;
    QString toldText_;  // What screen readers know.

    QPointF dragPoint_;
    QBasicTimer autoscrollTimer_;
    int clickCount_ = 0;
    ulong clickTime_ = 0;
    QPointF clickPoint_;
    QBasicTimer refreshTimer_;       // Runs for the time of one picture after each `refreshSoon`.
    bool isRefreshWaiting_ = false;  // Until `refreshTimer_` ends.
    double wheelRest_ = 0;           // Rows that were not whole yet.
};

}  // namespace tavrel
