#include "terminal/views/GridPainter.h"

#include "terminal/RowLinks.h"

#include <QGlyphRun>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

constexpr double slant = 0.2;
constexpr double cursorAlpha = 0.8;
constexpr std::size_t mostKeptBatches = 64;

/// The colour that `color` gives over `ground`, so that parts drawn over one another do not add up.
QRgb blended(const TerminalRgb& color, const TerminalRgb& ground)
{
    const auto part = [&](double over, double under) {
        const double value = over * color.alpha + under * (1 - color.alpha);
        return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    };
    return qRgb(part(color.red, ground.red), part(color.green, ground.green),
                part(color.blue, ground.blue));
}

QPainterPath pathOf(CellStroke stroke, const BoxShape& shape, double width, double height)
{
    const double x = shape.lineLeft + shape.lineWidth / 2.0;
    const double y = shape.lineTop + shape.lineWidth / 2.0;
    const double radius = std::min(width - x, height - y);
    QPainterPath path;
    const auto arc = [&](double edgeX, double edgeY) {
        const double towardsX = edgeX > x ? 1 : -1;
        const double towardsY = edgeY > y ? 1 : -1;
        path.moveTo(x, edgeY);
        path.lineTo(x, y + towardsY * radius);
        path.quadTo(x, y, x + towardsX * radius, y);
        path.lineTo(edgeX, y);
    };
    const auto diagonal = [&](double fromY, double toY) {
        path.moveTo(0, fromY);
        path.lineTo(width, toY);
    };
    switch (stroke) {
    case CellStroke::arcRightDown:
        arc(width, height);
        break;
    case CellStroke::arcLeftDown:
        arc(0, height);
        break;
    case CellStroke::arcLeftUp:
        arc(0, 0);
        break;
    case CellStroke::arcRightUp:
        arc(width, 0);
        break;
    case CellStroke::risingDiagonal:
        diagonal(height, 0);
        break;
    case CellStroke::fallingDiagonal:
        diagonal(0, height);
        break;
    case CellStroke::crossedDiagonals:
        diagonal(height, 0);
        diagonal(0, height);
        break;
    }
    return path;
}

}  // namespace

QColor qtColor(const TerminalRgb& color)
{
    const auto part = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(part(color.red), part(color.green), part(color.blue),
                            part(color.alpha));
}

void GridPainter::paint(QPainter& painter, std::span<const GridPainterRow> rows)
{
    for (const GridPainterRow& row : rows) {
        runs_.clear();
        appendCellRuns(row.cells, row.selected, rowLinks(row.cells), runs_);
        for (const CellRun& run : runs_)
            collect(painter, row, run);
    }
    drawBatches(painter);
    for (const Box& box : boxes_)
        drawBox(painter, box);
    for (const auto& [rect, color] : underlines_)
        painter.fillRect(rect, QColor::fromRgb(color));
    boxes_.clear();
    underlines_.clear();
}

void GridPainter::collect(QPainter& painter, const GridPainterRow& row, const CellRun& run)
{
    const TerminalCell& cell = row.cells[static_cast<std::size_t>(run.start)];
    const CellColors colors = cellColors(cell, run.state, colors_);
    const double left = font_.geometry().left(run.start);
    const double width = run.length * font_.cellWidth();
    if (run.state.isSelected || colors.fill != colors_.defaultBackground)
        painter.fillRect(QRectF(left, row.top, width, font_.cellHeight()), qtColor(colors.fill));
    const bool isUnderlined = cell.flags.contains(TerminalCellFlags::underline) || run.state.isLink;
    if (run.isBlank && !isUnderlined)
        return;

    const Style style{colors, blended(colors.text, colors.fill),
                      cell.flags.contains(TerminalCellFlags::bold) ? TerminalWeight::bold
                                                                   : TerminalWeight::regular,
                      cell.flags.contains(TerminalCellFlags::italic)};
    for (int column = run.start; column < run.start + run.length; ++column)
        addCharacter(row, column, style);
    if (isUnderlined) {
        const double pixel = 1 / font_.scale();
        const double baseline = row.top + font_.cellHeight() - font_.baselineOffset();
        const double below = std::max(std::floor(font_.baselineOffset() / 2 / pixel), 1.0) * pixel;
        underlines_.emplace_back(QRectF(left, baseline + below - pixel, width, pixel), style.text);
    }
}

void GridPainter::addCharacter(const GridPainterRow& row, int column, const Style& style)
{
    const char32_t character = row.cells[static_cast<std::size_t>(column)].character;
    if (character == U' ')
        return;
    const double left = font_.geometry().left(column);
    if (isBoxCharacter(character)) {
        boxes_.push_back({character, QPointF(left, row.top), style.text});
        return;
    }
    const double baseline = row.top + font_.cellHeight() - font_.baselineOffset();
    const double slantBaseline = style.isSlanted ? baseline : noSlant;
    const QPointF origin(left, style.isSlanted ? 0 : baseline);
    if (const quint32 glyph = font_.glyph(character, style.weight)) {
        Batch& into = batch({&font_.rawFont(style.weight), style.text, slantBaseline});
        into.glyphs.push_back(glyph);
        into.positions.push_back(origin);
        return;
    }
    for (const TerminalFont::Piece& piece : font_.pieces(character, style.weight)) {
        Batch& into = batch({piece.font, style.text, slantBaseline});
        into.glyphs.push_back(piece.glyph);
        into.positions.push_back(origin + piece.position);
    }
}

GridPainter::Batch& GridPainter::batch(const BatchKey& key)
{
    if (!lastKey_ || *lastKey_ != key) {
        lastKey_ = key;
        lastBatch_ = &batches_[key];
    }
    return *lastBatch_;
}

void GridPainter::drawBatches(QPainter& painter)
{
    QGlyphRun run;
    for (const auto& [key, batch] : batches_) {
        if (batch.glyphs.empty())
            continue;
        run.setRawFont(*key.font);
        run.setRawData(batch.glyphs.data(), batch.positions.data(),
                       static_cast<int>(batch.glyphs.size()));
        painter.setPen(QColor::fromRgb(key.color));
        if (key.slantBaseline == noSlant) {
            painter.drawGlyphRun(QPointF(), run);
            continue;
        }
        const QTransform upright = painter.transform();
        painter.translate(0, key.slantBaseline);
        painter.shear(-slant, 0);
        painter.drawGlyphRun(QPointF(), run);
        painter.setTransform(upright);
    }
    // The memory of a few colours is kept. Pictures of many would make the table grow for ever.
    if (batches_.size() > mostKeptBatches) {
        batches_.clear();
    } else {
        for (auto& [key, batch] : batches_) {
            batch.glyphs.clear();
            batch.positions.clear();
        }
    }
    lastKey_.reset();
    lastBatch_ = nullptr;
}

const BoxShape& GridPainter::shape(char32_t character)
{
    const auto known = shapes_.find(character);
    if (known != shapes_.end())
        return known->second;
    const auto pixels = [&](double length) {
        return static_cast<int>(std::lround(length * font_.scale()));
    };
    return shapes_[character] =
               boxShape(character, pixels(font_.cellWidth()), pixels(font_.cellHeight()));
}

void GridPainter::drawBox(QPainter& painter, const Box& box)
{
    const BoxShape& shape = this->shape(box.character);
    const double pixel = 1 / font_.scale();
    for (const CellPart& part : shape.parts) {
        QColor color = QColor::fromRgb(box.color);
        color.setAlphaF(static_cast<float>(part.coverage));
        painter.fillRect(QRectF(box.corner.x() + part.left * pixel,
                                box.corner.y() + part.top * pixel, part.width * pixel,
                                part.height * pixel),
                         color);
    }
    if (!shape.stroke)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(QRectF(box.corner, QSizeF(font_.cellWidth(), font_.cellHeight())),
                        Qt::IntersectClip);
    painter.translate(box.corner);
    painter.scale(pixel, pixel);
    QPen pen(QColor::fromRgb(box.color), shape.lineWidth);
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(pathOf(*shape.stroke, shape, font_.cellWidth() * font_.scale(),
                            font_.cellHeight() * font_.scale()));
    painter.restore();
}

void GridPainter::paintCursor(QPainter& painter, QPointF corner, char32_t character)
{
    QColor block = qtColor(colors_.cursor);
    block.setAlphaF(static_cast<float>(cursorAlpha));
    painter.fillRect(QRectF(corner, QSizeF(font_.cellWidth(), font_.cellHeight())), block);
    const TerminalCell cell{character};
    GridPainterRow row{{&cell, 1}, {}, corner.y()};
    const QPointF shift(corner.x() - GridGeometry::leftInset, 0);
    const QRgb text = blended(colors_.defaultBackground, colors_.defaultBackground);
    painter.translate(shift);
    addCharacter(row, 0, {{}, text, TerminalWeight::regular, false});
    drawBatches(painter);
    for (const Box& box : boxes_)
        drawBox(painter, box);
    boxes_.clear();
    painter.translate(-shift);
}

}  // namespace tavrel
