#include "terminal/views/TerminalFont.h"

#include <QFontMetricsF>

#include <gtest/gtest.h>

#include <cmath>

namespace tavrel {
namespace {

bool isWhole(double value)
{
    return std::abs(value - std::round(value)) < 1e-6;
}

TEST(TerminalFont, CellsAreWholeDevicePixelsAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        for (const int size : {6, 9, 12, 13, 20}) {
            const TerminalFont font(QString(), size, scale);
            EXPECT_TRUE(isWhole(font.cellWidth() * scale)) << size << " at " << scale;
            EXPECT_TRUE(isWhole(font.cellHeight() * scale)) << size << " at " << scale;
            EXPECT_TRUE(isWhole(font.baselineOffset() * scale)) << size << " at " << scale;
        }
    }
}

TEST(TerminalFont, ACellIsAsHighAsTheFontAndOneMore)
{
    const TerminalFont font(QString(), 12, 1);
    const QFontMetricsF metrics(font.font());
    EXPECT_EQ(font.cellHeight(),
              std::ceil(metrics.ascent() + metrics.descent() + metrics.leading()) + 1);
    EXPECT_EQ(font.baselineOffset(), std::ceil(metrics.descent()));
    EXPECT_NEAR(font.cellWidth(), metrics.horizontalAdvance(QLatin1Char('0')), 0.5);
}

TEST(TerminalFont, AFontThatIsNotInstalledGivesAFixedWidthOne)
{
    const TerminalFont font(QStringLiteral("No Such Font At All"), 12, 1);
    const QFontMetricsF metrics(font.font());
    EXPECT_EQ(metrics.horizontalAdvance(QLatin1Char('i')),
              metrics.horizontalAdvance(QLatin1Char('M')));
}

TEST(TerminalFont, ASizeOfNothingIsStillACell)
{
    const TerminalFont font(QString(), 0, 0);
    EXPECT_GE(font.cellWidth(), 1);
    EXPECT_GE(font.cellHeight(), 1);
}

TEST(TerminalFont, LettersHaveAGlyphInBothWeights)
{
    TerminalFont font(QString(), 12, 1);
    EXPECT_NE(font.glyph(U'a', TerminalWeight::regular), 0u);
    EXPECT_NE(font.glyph(U'a', TerminalWeight::bold), 0u);
    EXPECT_NE(font.glyph(U'é', TerminalWeight::regular), 0u);
}

TEST(TerminalFont, WhatTheFontLacksIsMadeToFitACell)
{
    TerminalFont font(QString(), 12, 1);
    for (const char32_t character : {U'日', U'\U0001F600', U'\u0301', U'\u0915', U'\uE0B0'}) {
        if (font.glyph(character, TerminalWeight::regular) != 0)
            continue;
        for (const TerminalFont::Piece& piece : font.pieces(character, TerminalWeight::regular)) {
            EXPECT_GE(piece.position.x(), -1);
            const double advance = piece.font->advancesForGlyphIndexes({piece.glyph}).value(0).x();
            EXPECT_LE(piece.position.x() + advance, font.cellWidth() + 1)
                << std::hex << static_cast<int>(character);
        }
    }
}

TEST(TerminalFont, EveryCharacterThereIsCanBeAskedFor)
{
    TerminalFont font(QString(), 12, 1);
    for (char32_t character = 0x20; character < 0x110000; character += 97) {
        if (font.glyph(character, TerminalWeight::bold) == 0)
            font.pieces(character, TerminalWeight::bold);
    }
    EXPECT_NE(font.glyph(U'x', TerminalWeight::bold), 0u);
}

TEST(TerminalFont, OtherFontsAreOpenedOnceForEachSize)
{
    TerminalFont font(QString(), 12, 1);
    std::size_t lacking = 0;
    for (char32_t character = 0x2100; character < 0x2C00; ++character) {
        if (font.glyph(character, TerminalWeight::regular) != 0)
            continue;
        font.pieces(character, TerminalWeight::regular);
        ++lacking;
    }
    // Thousands of characters of a few families, in steps of a quarter of a pixel.
    EXPECT_LE(font.otherFontCount(), lacking / 10 + 20);
}

}  // namespace
}  // namespace tavrel
