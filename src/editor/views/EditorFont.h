#pragma once

#include <QFont>
#include <QRawFont>
#include <QString>

#include <array>

namespace tavrel {

/// A font with what laying out and drawing a row of text needs of it, measured once.
///
/// All lengths are in logical pixels. Rows are a whole number of device pixels high at every scale,
/// so that scrolling moves rows without blurring them.
class EditorFont {
public:
    /// `size` is in logical pixels and at least 1. A family that is not installed gives the
    /// system's fixed-width font. `scale` is the number of device pixels in a logical one.
    explicit EditorFont(const QString& family, int size, double scale = 1.0);

    const QFont& font() const { return font_; }
    const QRawFont& rawFont() const { return rawFont_; }
    /// The width of a column: of a space.
    double advance() const { return advance_; }
    double rowHeight() const { return rowHeight_; }
    /// From the top of a row to its baseline.
    double baseline() const { return baseline_; }

    /// Whether all printable ASCII characters are `advance()` wide and one glyph each, whatever
    /// stands beside them, so that rows of them can be laid out by counting.
    bool hasColumns() const { return hasColumns_; }
    /// The glyph of a printable ASCII character; that of a space for anything else.
    quint32 glyph(char16_t unit) const
    {
        return unit >= firstGlyph && unit < endGlyph ? glyphs_[unit - firstGlyph] : glyphs_[0];
    }

private:
    static constexpr char16_t firstGlyph = 0x20;
    static constexpr char16_t endGlyph = 0x7F;

    void measureColumns();

    QFont font_;
    QRawFont rawFont_;
    double advance_ = 0;
    double rowHeight_ = 0;
    double baseline_ = 0;
    bool hasColumns_ = false;
    std::array<quint32, endGlyph - firstGlyph> glyphs_{};
};

}  // namespace tavrel
