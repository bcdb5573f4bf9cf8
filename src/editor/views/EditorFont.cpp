#include "editor/views/EditorFont.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

// Sequences that fonts for programmers like to join into one glyph, each between two letters.
constexpr char16_t ligatureProbe[] =
    u"a->b=>c==d!=e===f<=g>=h&&i||j::k//l/*m*/n...o++p--q<!--fi fl ffi www 0x0";

QTextLine layOut(QTextLayout& layout)
{
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(1e6);
    layout.endLayout();
    return line;
}

}  // namespace

EditorFont::EditorFont(const QString& family, int size, double scale) : font_(family)
{
    font_.setStyleHint(QFont::Monospace);
    font_.setPixelSize(std::max(size, 1));
    // Whole-pixel advances: stems stay sharp, and each glyph is rasterised once instead of once for
    // every fraction of a pixel.
    font_.setHintingPreference(QFont::PreferFullHinting);
    rawFont_ = QRawFont::fromFont(font_);
    const QFontMetricsF metrics(font_);
    const double height = metrics.ascent() + metrics.descent() + metrics.leading();
    rowHeight_ = std::max(std::ceil(height * scale), 1.0) / scale;
    baseline_ = std::round(metrics.ascent() * scale) / scale;
    measureColumns();
}

void EditorFont::measureColumns()
{
    QString ascii;
    for (char16_t unit = firstGlyph; unit < endGlyph; ++unit)
        ascii.append(QChar(unit));
    const QList<quint32> indexes = rawFont_.glyphIndexesForString(ascii);
    if (indexes.size() != ascii.size())
        return;
    std::copy(indexes.begin(), indexes.end(), glyphs_.begin());

    // The width as the toolkit's own layout has it, so that both kinds of rows agree.
    QTextLayout spaces(QString(64, QLatin1Char('m')), font_);
    advance_ = layOut(spaces).naturalTextWidth() / 64;

    const QString probe = QString::fromUtf16(ligatureProbe) + ascii;
    QTextLayout layout(probe, font_);
    const QTextLine line = layOut(layout);
    QList<quint32> shaped;
    for (const QGlyphRun& run : line.glyphRuns())
        shaped += run.glyphIndexes();
    QList<quint32> expected;
    for (const QChar unit : probe)
        expected.append(glyph(unit.unicode()));
    const double width = advance_ * static_cast<double>(probe.size());
    hasColumns_ = shaped == expected && std::abs(line.naturalTextWidth() - width) < 0.01;
}

}  // namespace tavrel
