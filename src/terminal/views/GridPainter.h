#pragma once

#include "platform/TextRange.h"
#include "terminal/BoxDrawing.h"
#include "terminal/CellRuns.h"
#include "terminal/GridColors.h"
#include "terminal/views/TerminalFont.h"

#include <QPointF>
#include <QRectF>
#include <QRgb>

#include <map>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

class QPainter;
class QRawFont;

namespace tavrel {

/// One row as it is to be drawn.
struct GridPainterRow {
    std::span<const TerminalCell> cells;
    ColumnRange selected;
    double top = 0;  // In the painter's coordinates.
};

QColor qtColor(const TerminalRgb& color);

/// Draws rows of cells: first what they are filled with, then their characters, collected into one
/// call for each font and colour, since a call costs as much as dozens of glyphs.
///
/// Holds no state between two pictures but memory. Main thread only.
class GridPainter {
public:
    GridPainter(TerminalFont& font, const GridColors& colors) : font_(font), colors_(colors) {}

    /// Draws the rows over ground that is filled with the default background already.
    void paint(QPainter& painter, std::span<const GridPainterRow> rows);

    /// Draws the block cursor over a cell that has been drawn, whose left top corner is `corner`.
    void paintCursor(QPainter& painter, QPointF corner, char32_t character);

private:
    struct BatchKey {
        const QRawFont* font;
        QRgb color;
        double slantBaseline;  // Slanted glyphs lean about their row's own baseline; else none.
        auto operator<=>(const BatchKey&) const = default;
    };
    struct Batch {
        std::vector<quint32> glyphs;
        std::vector<QPointF> positions;
    };
    struct Style {
        CellColors colors;
        QRgb text;
        TerminalWeight weight;
        bool isSlanted;
    };
    struct Box {
        char32_t character;
        QPointF corner;
        QRgb color;
    };

    static constexpr double noSlant = -1e9;

    void collect(QPainter& painter, const GridPainterRow& row, const CellRun& run);
    void addCharacter(const GridPainterRow& row, int column, const Style& style);
    Batch& batch(const BatchKey& key);
    void drawBatches(QPainter& painter);
    void drawBox(QPainter& painter, const Box& box);
    const BoxShape& shape(char32_t character);

    TerminalFont& font_;
    const GridColors& colors_;
    std::map<BatchKey, Batch> batches_;
    std::vector<CellRun> runs_;
    std::vector<Box> boxes_;
    std::vector<std::pair<QRectF, QRgb>> underlines_;
    std::unordered_map<char32_t, BoxShape> shapes_;
    std::optional<BatchKey> lastKey_;
    Batch* lastBatch_ = nullptr;
};

}  // namespace tavrel
