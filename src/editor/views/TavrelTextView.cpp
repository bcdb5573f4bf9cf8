#include "editor/views/TavrelTextView.h"

#include "editor/views/EditorAccessibility.h"

#include <QResizeEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavrel {

namespace {

// With more changes at once than this, comparing row by row costs more than drawing them all.
constexpr std::size_t maximumComparedChanges = 32;

// How far the picture may move, in parts of the view's height, for what stays to be copied.
constexpr double largestBlitPart = 0.75;

// Where a location from before the changes is after them. What was replaced maps to its start.
std::size_t mapped(std::size_t location, std::span<const TextChange> changes)
{
    std::size_t result = location;
    for (const TextChange& change : changes) {
        if (change.oldRange.location >= location)
            break;
        if (location < change.oldRange.end())
            return result - (location - change.oldRange.location);
        result = result - change.oldRange.length + change.newLength;
    }
    return result;
}

bool isTouched(const TextRow& row, std::span<const TextChange> changes)
{
    const bool hasTerminator = row.end() > row.contentEnd();
    for (const TextChange& change : changes) {
        const bool reachesBehind = change.oldRange.location < row.end() ||
                                   (change.oldRange.location == row.end() && !hasTerminator);
        if (reachesBehind && change.oldRange.end() >= row.start())
            return true;
    }
    return false;
}

}  // namespace

TavrelTextView::TavrelTextView(EditorPane& pane, TavrelTextViewDelegate* delegate, QWidget* parent,
                               const EditorAppearance& appearance)
    : QWidget(parent), pane_(pane), delegate_(delegate), appearance_(appearance),
      scale_(devicePixelRatioF()), font_(appearance.fontName, appearance.fontSize, scale_),
      rows_(font_), columnWidth_(pane.settings().columnWidth)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setCursor(Qt::IBeamCursor);
    QAccessible::installActivationObserver(this);
    showDocument();
}

TavrelTextView::~TavrelTextView()
{
    QAccessible::removeActivationObserver(this);
    observe(nullptr);
    delete completionList_;
}

void TavrelTextView::observe(TextStorage* storage)
{
    if (storage == storage_)
        return;
    if (storage_) {
        storage_->removeObserver(this);
        document_->coloring().hide(this);
    }
    storage_ = storage;
    if (storage_)
        storage_->addObserver(this);
}

void TavrelTextView::showDocument()
{
    closeCompletions();
    endPreedit();
    draggedText_.reset();
    std::shared_ptr<EditorDocument> shown = pane_.activeTab().document;
    observe(&shown->textStorage());
    document_ = std::move(shown);
    rows_.setText(document_->text());
    layOutAll();
}

// --- Rows

ViewScroll TavrelTextView::scrolling() const
{
    return {rows_, font_.rowHeight(), static_cast<double>(height())};
}

double TavrelTextView::columnLimit() const
{
    return linePadding + font_.advance() * columnWidth_;
}

void TavrelTextView::setAppearance(const EditorAppearance& appearance)
{
    appearance_ = appearance;
    columnWidth_ = pane_.settings().columnWidth;
    measureFont();
}

void TavrelTextView::setColumnWidth(int columns)
{
    columnWidth_ = columns;
    updateWrap();
    layOutAll();
}

void TavrelTextView::setFieldLayout(bool isFieldLayout)
{
    isFieldLayout_ = isFieldLayout;
    updateWrap();
    layOutAll();
}

void TavrelTextView::updateScale()
{
    if (devicePixelRatioF() == scale_)
        return;
    measureFont();
}

void TavrelTextView::measureFont()
{
    scale_ = devicePixelRatioF();
    endPreedit();
    font_ = EditorFont(appearance_.fontName, appearance_.fontSize, scale_);
    rows_.setFont(font_);
    updateWrap();
    layOutAll();
}

void TavrelTextView::updateWrap()
{
    const double container = std::max(std::min(columnLimit(), static_cast<double>(width())), 1.0);
    WrapSettings wrap;
    wrap.wraps = !isFieldLayout_;
    wrap.width = std::max(container - linePadding, 1.0);
    wrap.tabWidth = static_cast<std::size_t>(std::max(pane_.settings().tabWidth, 1));
    rows_.setWrap(wrap);
    rows_.setRowsPerPage(
        static_cast<std::size_t>(std::max(std::floor(height() / font_.rowHeight()), 1.0)));
}

void TavrelTextView::layOutAll()
{
    const ViewScroll scroll = scrolling();
    origin_ = scroll.clamped(origin_);
    visible_ = scroll.visibleRows(origin_);
    decorations_ = makeDecorations();
    update();
    colorVisibleRows();
    if (delegate_)
        delegate_->textViewDidChangeRows();
}

void TavrelTextView::colorVisibleRows()
{
    if (visible_.empty() || !document_)
        return;
    const std::size_t start = visible_.front().row.start();
    document_->coloring().show(this, {start, visible_.back().row.end() - start});
}

void TavrelTextView::resizeEvent(QResizeEvent*)
{
    closeCompletions();
    updateWrap();
    layOutAll();
}

void TavrelTextView::storageDidChange(const TextStorage& storage,
                                      std::span<const TextChange> changes)
{
    draggedText_.reset();  // What is dragged about is no longer what stands there.
    if (isAnnouncing_)
        announce(*this, textAnnouncements(rows_.text(), storage.snapshot(), changes));
    const std::vector<VisibleRow> before = std::move(visible_);
    if (changes.size() == 1) {
        rows_.replaceText(storage.snapshot(), changes[0].oldRange, changes[0].newLength);
    } else {
        rows_.setText(storage.snapshot());
    }
    const ViewScroll scroll = scrolling();
    origin_ = scroll.clamped({mapped(origin_.location, changes), origin_.offset});
    visible_ = scroll.visibleRows(origin_);
    repaintChangedRows(before, changes);
    colorVisibleRows();
    setDecorations(makeDecorations());
    if (delegate_)
        delegate_->textViewDidChangeRows();
}

void TavrelTextView::storageDidChangeTokens(const TextStorage& storage, TextRange range)
{
    rows_.setRecolouredText(storage.snapshot());
    for (const VisibleRow& row : visible_) {
        if (row.row.start() < range.end() && row.row.end() > range.location)
            update(rowRect(row));
    }
}

void TavrelTextView::repaintChangedRows(const std::vector<VisibleRow>& before,
                                        std::span<const TextChange> changes)
{
    if (changes.size() > maximumComparedChanges) {
        update();
        return;
    }
    const std::size_t shared = std::min(before.size(), visible_.size());
    for (std::size_t i = 0; i < visible_.size(); ++i) {
        const VisibleRow& now = visible_[i];
        if (i < shared && before[i].top == now.top && !isTouched(before[i].row, changes) &&
            mapped(before[i].row.start(), changes) == now.row.start() &&
            mapped(before[i].row.end(), changes) == now.row.end())
            continue;
        update(rowRect(now));
    }
    if (before.size() > visible_.size()) {
        const double bottom = visible_.empty() ? 0 : visible_.back().top + font_.rowHeight();
        update(0, static_cast<int>(std::floor(bottom)), width(), height());
    }
}

QRect TavrelTextView::rowRect(const VisibleRow& row) const
{
    return QRectF(0, row.top, width(), font_.rowHeight()).toAlignedRect();
}

// --- Scrolling

void TavrelTextView::setScrollOrigin(ScrollOrigin origin)
{
    moveTo(scrolling().clamped(origin));
}

void TavrelTextView::scrollBy(double distance)
{
    moveTo(scrolling().movedBy(origin_, distance));
}

void TavrelTextView::scrollToVisible(TextRange range)
{
    moveTo(scrolling().showing(origin_, range));
}

void TavrelTextView::moveTo(ScrollOrigin origin)
{
    if (origin == origin_)
        return;
    closeCompletions();
    const std::vector<VisibleRow> before = std::move(visible_);
    origin_ = origin;
    visible_ = scrolling().visibleRows(origin_);

    // A row in both pictures tells how far the picture has moved.
    std::optional<double> moved;
    for (const VisibleRow& old : before) {
        if (!visible_.empty() && old.row.start() == visible_.front().row.start())
            moved = visible_.front().top - old.top;
    }
    for (const VisibleRow& now : visible_) {
        if (!moved && !before.empty() && now.row.start() == before.front().row.start())
            moved = now.top - before.front().top;
    }
    const bool isWhole = moved && *moved == std::floor(*moved) &&
                         devicePixelRatioF() == std::floor(devicePixelRatioF());
    // A move that leaves little in place is drawn anew in one piece: that is one picture, not two.
    if (!isWhole || std::abs(*moved) > height() * largestBlitPart) {
        decorations_ = makeDecorations();
        update();
        colorVisibleRows();
        if (delegate_)
            delegate_->textViewDidChangeRows();
        return;
    }
    const int dy = static_cast<int>(*moved);
    scroll(0, dy);
    decorations_.moveBy(dy);
    setDecorations(makeDecorations());
    colorVisibleRows();
    if (delegate_)
        delegate_->textViewDidScroll(dy);
}

// --- Decorations

DecorationMetrics TavrelTextView::decorationMetrics() const
{
    DecorationMetrics metrics;
    metrics.left = linePadding;
    metrics.rowHeight = font_.rowHeight();
    metrics.cursorWidth = cursorWidth;
    metrics.viewWidth = width();
    metrics.newlineWidth = font_.advance() / 2;
    return metrics;
}

ViewDecorations TavrelTextView::makeDecorations() const
{
    DecorationState state;
    state.selectedRanges = pane_.selectedRanges();
    state.marker = pane_.activeTab().marker;
    if (isFirstResponder()) {
        const TextRange selection = pane_.selectedRange();
        if (selection.isEmpty())
            state.primaryCursor = std::min(selection.location, rows_.text().length());
        state.secondaryCursors = pane_.secondaryCursorLocations();
    }
    if (dropLocation_)  // Where the text would go stands a cursor, whatever has the keys.
        state.primaryCursor = std::min(*dropLocation_, rows_.text().length());
    return ViewDecorations::make(state, visible_, decorationMetrics());
}

void TavrelTextView::setDecorations(ViewDecorations decorations)
{
    const QRegion changed = decorations_.changesTo(decorations);
    const bool movesPrimary = decorations_.primary != decorations.primary;
    decorations_ = std::move(decorations);
    if (movesPrimary)
        updateMicroFocus(Qt::ImCursorRectangle);
    if (!preedit_.isEmpty())
        update();  // What stands beside composed text is not drawn where it is.
    else if (!changed.isEmpty())
        update(changed);
}

void TavrelTextView::refreshDecorations()
{
    closeStaleCompletions();
    setDecorations(makeDecorations());
    announceSelection();
}

void TavrelTextView::announceSelection()
{
    const TextRange selection = pane_.selectedRange();
    if (!isAnnouncing_ || selection == announcedSelection_)
        return;
    const bool wasSelected = !std::exchange(announcedSelection_, selection).isEmpty();
    const auto offset = [](std::size_t location) {
        return static_cast<int>(std::min<std::size_t>(location, 0x7FFFFFFF));
    };
    if (wasSelected || !selection.isEmpty()) {
        QAccessibleTextSelectionEvent event(this, offset(selection.location),
                                            offset(selection.end()));
        QAccessible::updateAccessibility(&event);
    }
    QAccessibleTextCursorEvent event(this, offset(selection.end()));
    QAccessible::updateAccessibility(&event);
}

// --- Places

std::size_t TavrelTextView::offsetAt(QPointF point) const
{
    if (rows_.text().isEmpty() || visible_.empty())
        return 0;
    const VisibleRow* hit = &visible_.front();
    for (const VisibleRow& row : visible_) {
        if (row.top <= point.y())
            hit = &row;
    }
    const TextRow& row = hit->row;
    const bool isBelow = point.y() >= hit->top + font_.rowHeight();
    if (isBelow && row.end() == rows_.text().length())
        return rows_.text().length();
    const RowHit inRow = row.layout->hitAt(row.index, point.x() - linePadding);
    return std::min(row.segment.start + inRow.nearestEdge(), rows_.text().length());
}

std::optional<QRectF> TavrelTextView::cursorRectAt(std::size_t location) const
{
    const TextRow row = rows_.row(location);
    for (const VisibleRow& each : visible_) {
        if (each.row.start() == row.start())
            return cursorRect(each, location, decorationMetrics());
    }
    return std::nullopt;
}

bool TavrelTextView::isFirstResponder() const
{
    return window()->focusWidget() == this;
}

}  // namespace tavrel
