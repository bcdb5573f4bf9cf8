#include "editor/views/TavrelTextView.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTextLayout>

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
    painter.fillRect(bounds, QColor::fromRgb(appearance_.theme.background));
    for (const QRectF& rect : decorations_.selection) {
        if (rect.intersects(bounds))
            painter.fillRect(rect, QColor::fromRgb(appearance_.theme.selection));
    }
    for (const VisibleRow& row : visible_) {
        const QRect rect = rowRect(row);
        if (!rect.intersects(bounds))
            continue;
        const QRect clip = region.rectCount() == 1 ? rect & bounds : (region & rect).boundingRect();
        if (!clip.isEmpty())
            paintRow(painter, row, clip);
    }
    if (decorations_.marker) {
        QColor color = QColor::fromRgb(appearance_.theme.marker);
        color.setAlphaF(0.9F);
        painter.fillRect(*decorations_.marker, color);
    }
    if (!preedit_.isEmpty())
        paintPreedit(painter);
    for (const QRectF& rect : decorations_.cursors)
        painter.fillRect(rect, QColor::fromRgb(appearance_.theme.cursor));
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

void TavrelTextView::paintPreedit(QPainter& painter) const
{
    const std::optional<QRectF> cursor = cursorRectAt(pane_.selectedRange().location);
    if (!cursor)
        return;
    QTextLayout layout(preedit_, font_.font());
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (!line.isValid()) {
        layout.endLayout();
        return;
    }
    line.setLineWidth(1e6);
    layout.endLayout();
    const QRectF box(cursor->left(), cursor->top(), line.naturalTextWidth(), font_.rowHeight());
    painter.fillRect(box, QColor::fromRgb(appearance_.theme.selection));
    painter.setPen(QColor::fromRgb(appearance_.theme.foreground));
    layout.draw(&painter, {box.left(), box.top() + font_.baseline() - line.ascent()});
    painter.fillRect(QRectF(box.left(), box.bottom() - 1, box.width(), 1),
                     QColor::fromRgb(appearance_.theme.foreground));
}

}  // namespace tavrel
