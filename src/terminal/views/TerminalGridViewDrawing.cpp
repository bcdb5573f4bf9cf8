#include "terminal/views/TerminalGridView.h"

#include "terminal/TerminalEmulator.h"

#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QTextLayout>

#include <vector>

namespace tavrel {

void TerminalGridView::resizeEvent(QResizeEvent*)
{
    refresh();
}

void TerminalGridView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRegion& region = event->region();
    painter.fillRect(event->rect(), qtColor(appearance_.colors.defaultBackground));
    std::vector<GridPainterRow> rows;
    for (std::size_t index = 0; index < shown_.size(); ++index) {
        if (region.intersects(rowRect(index)))
            rows.push_back({shown_[index].cells, shown_[index].selected, rowTop(index)});
    }
    painter_->paint(painter, rows);
    for (std::size_t index = 0; index < shown_.size(); ++index) {
        const ShownRow& row = shown_[index];
        const auto column = static_cast<std::size_t>(row.cursorColumn);
        if (row.cursorColumn < 0 || column >= row.cells.size() ||
            !region.intersects(rowRect(index)))
            continue;
        const QPointF corner(font_->geometry().left(row.cursorColumn), rowTop(index));
        painter_->paintCursor(painter, corner, row.cells[column].character);
    }
    if (!preedit_.isEmpty())
        paintPreedit(painter);
}

std::optional<QPointF> TerminalGridView::cursorCorner() const
{
    if (!emulator_)
        return std::nullopt;
    const std::int64_t screenTop = visibleRowCount(*emulator_) - emulator_->rows();
    return cellRect({screenTop + emulator_->cursorY(), emulator_->cursorX()}).topLeft();
}

// What an input method is composing stands over the cells behind the cursor.
void TerminalGridView::paintPreedit(QPainter& painter)
{
    const std::optional<QPointF> corner = cursorCorner();
    if (!corner)
        return;
    QTextLayout layout(preedit_, font_->font());
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (!line.isValid()) {
        layout.endLayout();
        return;
    }
    line.setLineWidth(1e6);
    layout.endLayout();
    const QRectF box(*corner, QSizeF(line.naturalTextWidth(), font_->cellHeight()));
    painter.fillRect(box, qtColor(appearance_.colors.selection));
    painter.setPen(qtColor(appearance_.colors.defaultForeground));
    const double baseline = box.bottom() - font_->baselineOffset();
    layout.draw(&painter, {box.left(), baseline - line.ascent()});
    painter.fillRect(QRectF(box.left(), box.bottom() - 1, box.width(), 1),
                     qtColor(appearance_.colors.defaultForeground));
}

}  // namespace tavrel
