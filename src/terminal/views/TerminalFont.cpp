#include "terminal/views/TerminalFont.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

// Wider than a cell by less than this is the rounding of the cell.
constexpr double widthSlack = 1.0;

QFont fontOf(const QString& family, int size)
{
    QFont font =
        family.isEmpty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QFont(family);
    font.setStyleHint(QFont::Monospace);
    font.setWeight(QFont::Normal);
    font.setPixelSize(std::max(size, 1));
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferFullHinting);
    return font;
}

QFont boldOf(QFont font)
{
    font.setWeight(QFont::Bold);
    return font;
}

}  // namespace

TerminalFont::TerminalFont(const QString& family, int size, double scale)
    : font_(fontOf(family, size)), scale_(scale > 0 ? scale : 1)
{
    const QFontMetricsF metrics(font_);
    const double width = metrics.horizontalAdvance(QLatin1Char('0'));
    cellWidth_ = std::max(std::round(width * scale_), 1.0) / scale_;
    const double height =
        std::max(std::ceil(metrics.ascent() + metrics.descent() + metrics.leading()) + 1, 1.0);
    cellHeight_ = std::max(std::ceil(height * scale_), 1.0) / scale_;
    baselineOffset_ = std::ceil(metrics.descent() * scale_) / scale_;
    for (const TerminalWeight weight : {TerminalWeight::regular, TerminalWeight::bold}) {
        auto face = std::make_unique<Face>();
        face->description = weight == TerminalWeight::bold ? boldOf(font_) : font_;
        face->font = QRawFont::fromFont(face->description);
        for (char32_t character = 0x21; character < asciiEnd; ++character)
            face->ascii[character] = lookUp(*face, character);
        faces_[indexOf(weight)] = std::move(face);
    }
}

quint32 TerminalFont::lookUp(const Face& face, char32_t character) const
{
    const QList<quint32> indexes =
        face.font.glyphIndexesForString(QString::fromUcs4(&character, 1));
    if (indexes.size() != 1 || indexes[0] == 0)
        return 0;
    const QList<QPointF> advances = face.font.advancesForGlyphIndexes(indexes);
    // A mark that has no width of its own would stand over the cell before it.
    const bool fits =
        advances.size() == 1 && advances[0].x() > 0 && advances[0].x() <= cellWidth_ + widthSlack;
    return fits ? indexes[0] : 0;
}

quint32 TerminalFont::glyph(char32_t character, TerminalWeight weight)
{
    Face& face = *faces_[indexOf(weight)];
    if (character < asciiEnd)
        return face.ascii[character];
    const auto known = face.glyphs.find(character);
    if (known != face.glyphs.end())
        return known->second;
    if (face.glyphs.size() >= mostCharacters)
        face.glyphs.clear();
    return face.glyphs[character] = lookUp(face, character);
}

const std::vector<TerminalFont::Piece>& TerminalFont::pieces(char32_t character,
                                                             TerminalWeight weight)
{
    Face& face = *faces_[indexOf(weight)];
    const auto known = face.pieces.find(character);
    if (known != face.pieces.end())
        return known->second;
    if (face.pieces.size() >= mostCharacters)
        face.pieces.clear();
    return face.pieces[character] = layOut(face, character);
}

std::vector<TerminalFont::Piece> TerminalFont::layOut(const Face& face, char32_t character)
{
    QTextLayout layout(QString::fromUcs4(&character, 1), face.description);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (!line.isValid()) {
        layout.endLayout();
        return {};
    }
    line.setLineWidth(1e6);
    layout.endLayout();
    const double width = line.naturalTextWidth();
    const double wanted = width > cellWidth_ ? cellWidth_ / width : 1;
    const double shift = std::max(cellWidth_ - width, 0.0) / 2;
    std::vector<Piece> pieces;
    for (const QGlyphRun& run : line.glyphRuns()) {
        const QRawFont original = run.rawFont();
        const double whole = original.pixelSize();
        // In whole steps, so that a font is kept in a few sizes and not in one for each width.
        const double size = wanted < 1 ? std::max(std::floor(whole * wanted * 4) / 4, 1.0) : whole;
        const double shrink = whole > 0 ? size / whole : 1;
        const QRawFont* keptFont = kept(original, size);
        const QList<quint32> indexes = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        // Where no font has the character the toolkit has a sign of its own, which keeps its size.
        const QList<QPointF> advances = keptFont->advancesForGlyphIndexes(indexes);
        const bool isTooWide = std::ranges::any_of(advances, [&](const QPointF& advance) {
            return advance.x() > cellWidth_ + widthSlack;
        });
        if (isTooWide || indexes.contains(0))
            return {{&face.font, 0, QPointF()}};
        for (qsizetype i = 0; i < indexes.size() && i < positions.size(); ++i) {
            const QPointF fromBaseline(positions[i].x() * shrink + shift,
                                       (positions[i].y() - line.ascent()) * shrink);
            pieces.push_back({keptFont, indexes[i], fromBaseline});
        }
    }
    return pieces;
}

const QRawFont* TerminalFont::kept(const QRawFont& font, double pixelSize)
{
    for (const auto& other : otherFonts_) {
        if (other->original == font && other->pixelSize == pixelSize)
            return &other->sized;
    }
    otherFonts_.push_back(std::make_unique<OtherFont>(OtherFont{font, pixelSize, font}));
    QRawFont& sized = otherFonts_.back()->sized;
    if (sized.pixelSize() != pixelSize)
        sized.setPixelSize(pixelSize);
    return &sized;
}

}  // namespace tavrel
