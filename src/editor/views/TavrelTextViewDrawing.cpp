#include "editor/views/TavrelTextView.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace tavrel {

namespace {

// More colours than this in one row are not told apart.
constexpr std::size_t maximumRunsInRow = 4096;

std::vector<TokenRun> runsOf(const TextSnapshot& text, const TextRow& row)
{
    std::vector<TokenRun> runs;
    std::size_t start = row.start() - row.segment.start;
    const TokenRuns tokens = text.tokens({row.start(), row.contentEnd() - row.start()});
    for (const TokenRuns::Run& run : tokens.runs()) {
        if (runs.size() == maximumRunsInRow)
            break;
        runs.push_back({start, start + run.length, run.token});
        start += run.length;
    }
    return runs;
}

}  // namespace

void TavrelTextView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRegion& region = event->region();
    const QRect bounds = event->rect();
    const std::optional<PreeditPlace> preedit = preeditPlace();
    painter.fillRect(bounds, QColor::fromRgb(appearance_.theme.background));
    for (const QRectF& rect : decorations_.selection) {
        const QRectF shown = besidePreedit(rect, preedit);
        if (shown.intersects(bounds))
            painter.fillRect(shown, QColor::fromRgb(appearance_.theme.selection));
    }
    for (const VisibleRow& row : visible_) {
        const QRect rect = rowRect(row);
        if (!rect.intersects(bounds))
            continue;
        const QRect clip = region.rectCount() == 1 ? rect & bounds : (region & rect).boundingRect();
        if (clip.isEmpty())
            continue;
        if (preedit && preedit->row == &row)
            paintPreeditRow(painter, *preedit);
        else
            paintRow(painter, row, clip);
    }
    if (decorations_.marker) {
        QColor color = QColor::fromRgb(appearance_.theme.marker);
        color.setAlphaF(0.9F);
        painter.fillRect(besidePreedit(*decorations_.marker, preedit), color);
    }
    const QColor cursorColor = QColor::fromRgb(appearance_.theme.cursor);
    for (const QRectF& rect : decorations_.cursors) {
        if (!preedit || rect != decorations_.primary)
            painter.fillRect(besidePreedit(rect, preedit), cursorColor);
    }
    if (preedit && preedit_.hasCursor() && isFirstResponder())
        painter.fillRect(preeditCursorRect(*preedit), cursorColor);
}

void TavrelTextView::paintRow(QPainter& painter, const VisibleRow& row, const QRect& clip) const
{
    const std::vector<TokenRun> runs = runsOf(rows_.text(), row.row);
    // Letters may lean out of their columns a little.
    const RowSpan span{clip.left() - linePadding - font_.advance(),
                       clip.right() + 1 - linePadding + font_.advance()};
    row.row.layout->paint(painter, row.row.index, {linePadding, row.top}, span, runs,
                          appearance_.theme);
}

// --- Text that is being composed

// What follows the cursor in its row moves to the right by the width of the composed text. Where
// that text is wider than the room there is, the whole row moves to the left.
std::optional<TavrelTextView::PreeditPlace> TavrelTextView::preeditPlace() const
{
    if (preedit_.isEmpty())
        return std::nullopt;
    const std::size_t location = pane_.selectedRange().location;
    const TextRow row = rows_.row(location);
    for (const VisibleRow& each : visible_) {
        if (each.row.start() != row.start())
            continue;
        const double x = cursorRect(each, location, decorationMetrics()).left();
        const double room = width() - cursorWidth - x;
        return PreeditPlace{&each, x, std::min(room - preedit_.width(), 0.0)};
    }
    return std::nullopt;
}

QRectF TavrelTextView::preeditCursorRect(const PreeditPlace& place) const
{
    return {std::floor(place.x + place.shift + preedit_.cursorX()), place.row->top, cursorWidth,
            font_.rowHeight()};
}

// Where something that stands at `rect` is drawn.
QRectF TavrelTextView::besidePreedit(const QRectF& rect,
                                     const std::optional<PreeditPlace>& place) const
{
    if (!place || rect.center().y() < place->row->top ||
        rect.center().y() >= place->row->top + font_.rowHeight())
        return rect;
    return rect.translated(place->shift + (rect.left() >= place->x ? preedit_.width() : 0), 0);
}

void TavrelTextView::paintPreeditRow(QPainter& painter, const PreeditPlace& place) const
{
    const QRect whole = rowRect(*place.row);
    const double width = preedit_.width();
    painter.save();
    painter.translate(place.shift, 0);
    const double before = place.x;
    painter.save();
    painter.setClipRect(QRectF(0, whole.top(), before, whole.height()), Qt::IntersectClip);
    paintRow(painter, *place.row, whole);
    painter.restore();
    painter.save();
    painter.translate(width, 0);
    painter.setClipRect(QRectF(before, whole.top(), whole.width(), whole.height()),
                        Qt::IntersectClip);
    paintRow(painter, *place.row, whole);
    painter.restore();
    preedit_.paint(painter, {place.x, place.row->top}, appearance_.theme);
    painter.restore();
}

void TavrelTextView::commitPreedit()
{
    if (!preedit_.isEmpty())
        QGuiApplication::inputMethod()->commit();
}

// Nothing is composed any more, because the text that it stood in is no longer shown.
void TavrelTextView::endPreedit()
{
    if (preedit_.isEmpty())
        return;
    preedit_.clear();
    isEndingPreedit_ = true;  // Some input methods type what they give up.
    QGuiApplication::inputMethod()->reset();
    isEndingPreedit_ = false;
    update();
}

}  // namespace tavrel
