#include "editor/views/ColumnLayout.h"

#include "editor/views/EditorFont.h"
#include "editor/views/RowWrap.h"
#include "editor/views/ViewTheme.h"

#include <QGlyphRun>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace tavrel {

namespace {

// Collects glyphs of one colour and draws them in one go; a row of source code has a few such runs.
class GlyphBatch {
public:
    GlyphBatch(QPainter& painter, const QRawFont& font) : painter_(painter)
    {
        run_.setRawFont(font);
    }

    void setColor(QRgb color)
    {
        if (hasColor_ && color == color_)
            return;
        flush();
        color_ = color;
        hasColor_ = true;
        painter_.setPen(QColor::fromRgba(color));
    }

    void add(quint32 glyph, QPointF at)
    {
        if (count_ == glyphs_.size())
            flush();
        glyphs_[count_] = glyph;
        positions_[count_] = at;
        ++count_;
    }

    void flush()
    {
        if (count_ == 0)
            return;
        run_.setRawData(glyphs_.data(), positions_.data(), static_cast<int>(count_));
        painter_.drawGlyphRun(QPointF(0, 0), run_);
        count_ = 0;
    }

private:
    QPainter& painter_;
    QGlyphRun run_;
    QRgb color_ = 0;
    bool hasColor_ = false;
    std::size_t count_ = 0;
    std::array<quint32, 256> glyphs_;
    std::array<QPointF, 256> positions_;
};

}  // namespace

ColumnLayout::ColumnLayout(std::u16string text, const EditorFont& font,
                           const WrapSettings& settings)
    : SegmentLayout(std::move(text)), font_(font),
      tabWidth_(std::max<std::size_t>(settings.tabWidth, 1)),
      hasTabs_(text_.find(u'\t') != std::u16string::npos)
{
    if (settings.wraps) {
        // A hair more, since the width of n columns may come out just below n advances.
        const double columns = std::floor(settings.width / font.advance() + 0.001);
        rowStarts_ =
            wrapColumns(text_, static_cast<std::size_t>(std::clamp(columns, 1.0, 1e6)), tabWidth_);
    }
}

std::size_t ColumnLayout::columnAt(std::size_t row, std::size_t offset) const
{
    const std::size_t start = rowStart(row);
    const std::size_t end = std::clamp(offset, start, rowEnd(row));
    if (!hasTabs_)
        return end - start;
    std::size_t column = 0;
    for (std::size_t i = start; i < end; ++i)
        column = columnAfter(text_[i], column, tabWidth_);
    return column;
}

double ColumnLayout::xAt(std::size_t row, std::size_t offset) const
{
    return static_cast<double>(columnAt(row, offset)) * font_.advance();
}

RowHit ColumnLayout::hitAt(std::size_t row, double x) const
{
    const std::size_t start = rowStart(row);
    const std::size_t end = rowEnd(row);
    if (start == end)
        return {start, start, 0};
    const double wanted = std::clamp(x / font_.advance(), 0.0, 1e9);
    std::size_t column = 0;
    std::size_t i = start;
    if (!hasTabs_) {
        column = std::min(static_cast<std::size_t>(wanted), end - start - 1);
        i = start + column;
    }
    for (;; ++i) {
        const std::size_t next = columnAfter(text_[i], column, tabWidth_);
        if (wanted < static_cast<double>(next) || i + 1 == end) {
            const double width = static_cast<double>(next - column);
            const double fraction = (wanted - static_cast<double>(column)) / width;
            return {i, i + 1, std::clamp(fraction, 0.0, 1.0)};
        }
        column = next;
    }
}

std::vector<RowSpan> ColumnLayout::spans(std::size_t row, std::size_t start, std::size_t end) const
{
    const RowSpan span{xAt(row, start), xAt(row, end)};
    if (span.left >= span.right)
        return {};
    return {span};
}

void ColumnLayout::paint(QPainter& painter, std::size_t row, QPointF topLeft, RowSpan clip,
                         std::span<const TokenRun> runs, const ViewTheme& theme) const
{
    GlyphBatch batch(painter, font_.rawFont());
    const double advance = font_.advance();
    const double baseline = topLeft.y() + font_.baseline();
    auto run = runs.begin();
    std::size_t column = 0;
    for (std::size_t i = rowStart(row); i < rowEnd(row); ++i) {
        const char16_t unit = text_[i];
        const double x = static_cast<double>(column) * advance;
        if (x > clip.right)
            break;
        column = columnAfter(unit, column, tabWidth_);
        while (run != runs.end() && run->end <= i)
            ++run;
        const bool isInRun = run != runs.end() && run->start <= i;
        const SyntaxToken token = isInRun ? run->token : SyntaxToken::foreground;
        const double right = static_cast<double>(column) * advance;
        if (right < clip.left)
            continue;
        if (isUnderlined(token)) {
            const QRectF line(topLeft.x() + x, baseline + 1, right - x, 1);
            painter.fillRect(line, QColor::fromRgba(theme.color(token)));
        }
        if (unit == u' ' || unit == u'\t')
            continue;
        batch.setColor(theme.color(token));
        batch.add(font_.glyph(unit), {topLeft.x() + x, baseline});
    }
    batch.flush();
}

}  // namespace tavrel
