#include "terminal/views/TerminalGridView.h"

#include "platform/Pasteboard.h"
#include "terminal/PasteText.h"
#include "terminal/RowLinks.h"
#include "terminal/TerminalEmulator.h"
#include "terminal/views/TerminalGridAccessible.h"

#include <QDesktopServices>
#include <QTimerEvent>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavrel {

namespace {

// The time of one picture on a common screen.
constexpr int refreshMilliseconds = 16;

void openOnDesktop(const std::u16string& address)
{
    const QUrl url(QString::fromStdU16String(address));
    if (url.isValid())
        QDesktopServices::openUrl(url);
}

}  // namespace

TerminalGridView::TerminalGridView(Pasteboard& pasteboard, QWidget* parent,
                                   const TerminalAppearance& appearance)
    : QWidget(parent), openLink(openOnDesktop), pasteboard_(pasteboard), appearance_(appearance)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::IBeamCursor);
    installGridAccessibility();  // With its name a widget gets the interface that it then keeps.
    setAccessibleName(QStringLiteral("Terminal"));
    measureFont();
}

TerminalGridView::~TerminalGridView() = default;

// --- What is shown

void TerminalGridView::setEmulator(TerminalEmulator* emulator)
{
    emulator_ = emulator;
    selection_.reset();
    endDrag();
    scroll_.follow();
    refresh();
}

void TerminalGridView::measureFont()
{
    font_ = std::make_unique<TerminalFont>(appearance_.fontName, appearance_.fontSize,
                                           devicePixelRatioF());
    painter_ = std::make_unique<GridPainter>(*font_, appearance_.colors);
    shown_.clear();
    refresh();
    update();
}

void TerminalGridView::setAppearance(const TerminalAppearance& appearance)
{
    appearance_ = appearance;
    measureFont();
}

TerminalSize TerminalGridView::gridSize(QSize size) const
{
    return font_->geometry().gridSize(size.width(), size.height());
}

void TerminalGridView::refresh()
{
    updateScroll();
    showRows();
    updateMicroFocus();
    tellScreenReaders(*this, toldText_);
    if (didScroll)
        didScroll();
}

void TerminalGridView::refreshSoon()
{
    if (refreshTimer_.isActive()) {
        isRefreshWaiting_ = true;
        return;
    }
    refresh();
    refreshTimer_.start(refreshMilliseconds, Qt::PreciseTimer, this);
}

void TerminalGridView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == refreshTimer_.timerId()) {
        refreshTimer_.stop();
        if (std::exchange(isRefreshWaiting_, false))
            refreshSoon();
    } else if (event->timerId() == autoscrollTimer_.timerId()) {
        autoscroll();
    } else {
        QWidget::timerEvent(event);
    }
}

void TerminalGridView::updateScroll()
{
    const std::int64_t rowCount = emulator_ ? visibleRowCount(*emulator_) : 0;
    const std::int64_t dropped =
        emulator_ ? static_cast<std::int64_t>(emulator_->droppedRowCount()) : 0;
    scroll_.update(rowCount, gridSize(size()).rows, dropped);
    // What is being dragged keeps its text while the oldest rows are thrown away.
    if (dragAnchor_)
        dragAnchor_->row = std::max<std::int64_t>(dragAnchor_->row - (dropped - droppedRows_), 0);
    droppedRows_ = dropped;
}

void TerminalGridView::readRow(std::int64_t row, ShownRow& into) const
{
    const TerminalRow source = emulator_->row(row);
    into.cells.resize(static_cast<std::size_t>(source.columns()));
    source.copyCells(into.cells);
    into.selected =
        selection_ ? selectedColumns(*selection_, row, source.columns()) : ColumnRange();
    const std::int64_t cursorRow =
        visibleRowCount(*emulator_) - emulator_->rows() + emulator_->cursorY();
    const bool hasCursor = row == cursorRow && emulator_->cursorVisible() && isFirstResponder();
    into.cursorColumn = hasCursor ? emulator_->cursorX() : -1;
}

void TerminalGridView::showRows()
{
    std::size_t count = 0;
    if (emulator_) {
        const std::int64_t behind = visibleRowCount(*emulator_) - scroll_.top();
        count = static_cast<std::size_t>(std::clamp<std::int64_t>(behind, 0, scroll_.shownCount()));
    }
    for (std::size_t index = count; index < shown_.size(); ++index)
        update(rowRect(index));
    shown_.resize(count);
    for (std::size_t index = 0; index < count; ++index) {
        readRow(scroll_.top() + static_cast<std::int64_t>(index), scratch_);
        if (scratch_ == shown_[index])
            continue;
        std::swap(scratch_, shown_[index]);
        update(rowRect(index));
    }
}

double TerminalGridView::rowTop(std::size_t index) const
{
    // On a whole device pixel, as the rows are as high as whole ones.
    const double scale = font_->scale();
    const double top = std::round(GridGeometry::topInset * scale) / scale;
    return top + static_cast<double>(index) * font_->cellHeight();
}

QRect TerminalGridView::rowRect(std::size_t index) const
{
    return QRectF(0, rowTop(index), width(), font_->cellHeight()).toAlignedRect();
}

// --- Scrolling

void TerminalGridView::scrollTo(std::int64_t top)
{
    scroll_.scrollTo(top);
    refresh();
}

void TerminalGridView::follow()
{
    scroll_.follow();
    refresh();
}

// --- Selection

void TerminalGridView::setSelection(std::optional<GridSelection> selection)
{
    if (selection == selection_)
        return;
    selection_ = selection;
    updateScroll();
    showRows();
}

std::optional<std::u16string> TerminalGridView::selectedText() const
{
    if (!selection_ || !emulator_)
        return std::nullopt;
    return tavrel::selectedText(*emulator_, *selection_);
}

void TerminalGridView::copy()
{
    if (auto text = selectedText())
        pasteboard_.setContents({std::move(*text)});
}

void TerminalGridView::paste()
{
    const std::optional<PasteboardContents> contents = pasteboard_.contents();
    if (!contents || !onInput)
        return;
    const bool isBracketed = emulator_ && emulator_->bracketedPaste();
    onInput(pastedBytes(contents->text, isBracketed ? PasteMode::bracketed : PasteMode::plain));
}

// --- Places

QRectF TerminalGridView::cellRect(GridPosition position) const
{
    const auto index = static_cast<double>(position.row - scroll_.top());
    return {font_->geometry().left(static_cast<int>(position.column)),
            rowTop(0) + index * font_->cellHeight(), font_->cellWidth(), font_->cellHeight()};
}

GridPosition TerminalGridView::positionAt(QPointF point) const
{
    const GridGeometry geometry = font_->geometry();
    return {scroll_.top() + geometry.rowAt(point.y()), geometry.columnAt(point.x())};
}

// --- For screen readers

namespace {

QString textOf(std::span<const TerminalCell> cells)
{
    std::u16string text = rowText(cells);
    text.resize(text.find_last_not_of(u' ') + 1);
    return QString::fromStdU16String(text);
}

}  // namespace

QString TerminalGridView::shownText() const
{
    QString text;
    for (const ShownRow& row : shown_) {
        if (&row != shown_.data())
            text += QLatin1Char('\n');
        text += textOf(row.cells);
    }
    return text;
}

std::optional<int> TerminalGridView::shownCursorOffset() const
{
    if (!emulator_)
        return std::nullopt;
    const std::int64_t screenTop = visibleRowCount(*emulator_) - emulator_->rows();
    const std::int64_t cursorIndex = screenTop + emulator_->cursorY() - scroll_.top();
    if (cursorIndex < 0 || cursorIndex >= static_cast<std::int64_t>(shown_.size()))
        return std::nullopt;
    qsizetype offset = 0;
    for (std::int64_t index = 0; index < cursorIndex; ++index)
        offset += textOf(shown_[static_cast<std::size_t>(index)].cells).size() + 1;
    const auto& cells = shown_[static_cast<std::size_t>(cursorIndex)].cells;
    const auto column = static_cast<std::size_t>(emulator_->cursorX());
    const auto before = rowText(std::span(cells).first(std::min(column, cells.size())));
    const qsizetype inRow = std::min(static_cast<qsizetype>(before.size()), textOf(cells).size());
    return static_cast<int>(offset + inRow);
}

}  // namespace tavrel
