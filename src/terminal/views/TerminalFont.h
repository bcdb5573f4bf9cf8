#pragma once

#include "terminal/GridGeometry.h"

#include <QFont>
#include <QList>
#include <QPointF>
#include <QRawFont>
#include <QString>

#include <array>
#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

namespace tavrel {

enum class TerminalWeight {
    regular,
    bold,
};

/// A font with what drawing a grid of cells needs of it: the size of a cell and a glyph for each
/// character, looked up once.
///
/// Lengths are logical pixels. A cell is a whole number of device pixels wide and high at every
/// scale, so that neighbours meet without a seam and rows move without blurring.
class TerminalFont {
public:
    /// A piece of what a character looks like: one glyph, from the left end of its cell's baseline.
    struct Piece {
        const QRawFont* font;  // Lives as long as this object.
        quint32 glyph;
        QPointF position;
    };

    /// `size` is in logical pixels and at least 1. An empty family, and one that is not installed,
    /// gives the system's fixed-width font. `scale` is the number of device pixels in a logical
    /// one.
    TerminalFont(const QString& family, int size, double scale);

    const QFont& font() const { return font_; }
    const QRawFont& rawFont(TerminalWeight weight) const { return faces_[indexOf(weight)]->font; }
    double cellWidth() const { return cellWidth_; }
    double cellHeight() const { return cellHeight_; }
    /// From the baseline to the lower edge of a cell.
    double baselineOffset() const { return baselineOffset_; }
    double scale() const { return scale_; }
    GridGeometry geometry() const { return {cellWidth_, cellHeight_}; }

    /// The glyph of a character that the font has and that fits a cell; 0 for any other.
    quint32 glyph(char32_t character, TerminalWeight weight);

    /// What to draw for a character whose `glyph` is 0: glyphs of other fonts, made smaller where
    /// they are wider than a cell. Valid until the next call.
    const std::vector<Piece>& pieces(char32_t character, TerminalWeight weight);

    /// How many fonts, in how many sizes, `pieces` has needed so far.
    std::size_t otherFontCount() const { return otherFonts_.size(); }

private:
    static constexpr char32_t asciiEnd = 0x80;
    // Programs may print any character; past this many the tables begin anew.
    static constexpr std::size_t mostCharacters = 20'000;

    struct Face {
        QFont description;
        QRawFont font;
        std::array<quint32, asciiEnd> ascii{};
        std::unordered_map<char32_t, quint32> glyphs;
        std::unordered_map<char32_t, std::vector<Piece>> pieces;
    };
    static std::size_t indexOf(TerminalWeight weight) { return static_cast<std::size_t>(weight); }

    quint32 lookUp(const Face& face, char32_t character) const;
    std::vector<Piece> layOut(const Face& face, char32_t character);
    const QRawFont* kept(const QRawFont& font, double pixelSize);

    QFont font_;
    double scale_;
    double cellWidth_ = 1;
    double cellHeight_ = 1;
    double baselineOffset_ = 0;
    std::array<std::unique_ptr<Face>, 2> faces_;
    /// A font of other characters in the size that fits. Making one opens its file, so a size of a
    /// font is made once.
    struct OtherFont {
        QRawFont original;
        double pixelSize;
        QRawFont sized;
    };
    std::vector<std::unique_ptr<OtherFont>> otherFonts_;
};

}  // namespace tavrel
