#include "editor/views/SegmentLayout.h"
#include "editor/views/ColumnLayout.h"
#include "editor/views/EditorFont.h"
#include "editor/views/ShapedLayout.h"
#include "editor/views/ViewTheme.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <random>

namespace tavrel {
namespace {

class SegmentLayoutTest : public testing::Test {
protected:
    WrapSettings wrap(std::size_t columns) const
    {
        return {font.advance() * static_cast<double>(columns), 4, true};
    }

    QImage picture(const SegmentLayout& layout, std::span<const TokenRun> runs) const
    {
        const int height =
            static_cast<int>(font.rowHeight() * static_cast<double>(layout.rowCount()));
        QImage image(900, height, QImage::Format_RGB32);
        image.fill(0xFF000000);
        QPainter painter(&image);
        for (std::size_t row = 0; row < layout.rowCount(); ++row)
            layout.paint(painter, row, {5, static_cast<double>(row) * font.rowHeight()}, {-10, 900},
                         runs, ViewTheme{});
        return image;
    }

    EditorFont font{QStringLiteral("Menlo"), 13};
};

std::u16string randomCode(std::mt19937& random)
{
    const std::u16string_view words[] = {u"if ",     u"(x->y",       u") ",    u"\t",
                                         u"return ", u"a_long_name", u" ",     u"foo-bar/",
                                         u"; // ",   u"\"s\"",       u"!=== ", u"    "};
    std::u16string text;
    const std::size_t count = random() % 60;
    for (std::size_t i = 0; i < count; ++i)
        text += words[random() % std::size(words)];
    return text;
}

TEST_F(SegmentLayoutTest, TheFontHasColumnsAndWholePixels)
{
    EXPECT_TRUE(font.hasColumns());
    EXPECT_EQ(font.advance(), std::floor(font.advance()));
    EXPECT_EQ(font.rowHeight(), std::floor(font.rowHeight()));
    for (const double scale : {1.25, 1.5, 2.0}) {
        const EditorFont scaled(QStringLiteral("Menlo"), 13, scale);
        const double pixels = scaled.rowHeight() * scale;
        EXPECT_NEAR(pixels, std::round(pixels), 1e-9) << scale;
    }
}

TEST_F(SegmentLayoutTest, TextOfAsciiIsCountedAndTheRestIsShaped)
{
    const auto isCounted = [&](std::u16string text) {
        const auto layout = SegmentLayout::make(std::move(text), font, wrap(80));
        return dynamic_cast<const ColumnLayout*>(layout.get()) != nullptr;
    };
    EXPECT_TRUE(isCounted(u"int main()\t{}"));
    EXPECT_FALSE(isCounted(u"na\u00EFve"));
}

TEST_F(SegmentLayoutTest, CountingAndShapingAgree)
{
    std::mt19937 random(11);
    for (int round = 0; round < 60; ++round) {
        const std::u16string text = randomCode(random);
        SCOPED_TRACE(testing::Message() << "round " << round);
        const WrapSettings settings = wrap(10 + random() % 60);
        const ColumnLayout counted(text, font, settings);
        const ShapedLayout shaped(text, font, settings);
        ASSERT_EQ(counted.rowCount(), shaped.rowCount());
        for (std::size_t row = 0; row < counted.rowCount(); ++row) {
            ASSERT_EQ(counted.rowStart(row), shaped.rowStart(row));
            for (std::size_t at = counted.rowStart(row); at <= counted.rowEnd(row); ++at)
                ASSERT_NEAR(counted.xAt(row, at), shaped.xAt(row, at), 0.01) << at;
            for (double x = -3.25; x < 500; x += 7) {
                const RowHit a = counted.hitAt(row, x);
                const RowHit b = shaped.hitAt(row, x);
                ASSERT_EQ(a.nearestEdge(), b.nearestEdge()) << "row " << row << " x " << x;
            }
        }
        std::vector<TokenRun> runs;
        if (text.size() > 6)
            runs = {{1, 3, SyntaxToken::keyword}, {3, 6, SyntaxToken::string}};
        ASSERT_EQ(picture(counted, runs), picture(shaped, runs));
    }
}

TEST_F(SegmentLayoutTest, BlanksThatHangOverBelongToTheirRow)
{
    const auto layout = SegmentLayout::make(u"0123456789    next", font, wrap(10));
    ASSERT_EQ(layout->rowCount(), 2u);
    EXPECT_EQ(layout->rowEnd(0), 14u);
    EXPECT_EQ(layout->rowAt(13), 0u);
    EXPECT_EQ(layout->rowAt(14), 1u);
    EXPECT_EQ(layout->xAt(0, 13), 13 * font.advance());
}

TEST_F(SegmentLayoutTest, ShapedRowsHoldNoMoreThanFits)
{
    std::u16string ideographs(200, u'\u4E2D');
    const ShapedLayout layout(ideographs, font, wrap(40));
    EXPECT_GT(layout.rowCount(), 4u);
    for (std::size_t row = 0; row < layout.rowCount(); ++row)
        EXPECT_LE(layout.xAt(row, layout.rowEnd(row)), 40 * font.advance() + 0.02);
}

TEST_F(SegmentLayoutTest, ClicksFallBetweenWholeCharacters)
{
    // A family, a letter with marks, a flag: each one character of several units.
    const std::u16string text =
        u"\U0001F468\u200D\U0001F469\u200D\U0001F467e\u0301\u0302\U0001F1E9\U0001F1EAz";
    const ShapedLayout layout(text, font, wrap(80));
    std::set<std::size_t> edges;
    for (double x = 0; x < 300; x += 1) {
        edges.insert(layout.hitAt(0, x).nearestEdge());
    }
    EXPECT_EQ(edges, (std::set<std::size_t>{0, 8, 11, 15, 16}));
}

TEST_F(SegmentLayoutTest, ASelectionInMixedDirectionsMayHaveSeveralPieces)
{
    const std::u16string text = u"abc \u05D0\u05D1\u05D2 def";
    const ShapedLayout layout(text, font, wrap(80));
    EXPECT_EQ(layout.spans(0, 0, text.size()).size(), 1u);
    EXPECT_EQ(layout.spans(0, 2, 5).size(), 2u);
    EXPECT_TRUE(layout.spans(0, 3, 3).empty());
}

TEST_F(SegmentLayoutTest, AnyUnitsAreLaidOutAndDrawn)
{
    std::mt19937 random(13);
    for (int round = 0; round < 40; ++round) {
        std::u16string text;
        for (std::size_t i = random() % 80; i > 0; --i)
            text += static_cast<char16_t>(random() % 3 ? random() % 0x300 : random() % 0x10000);
        const auto layout = SegmentLayout::make(text, font, wrap(20));
        EXPECT_EQ(layout->rowEnd(layout->rowCount() - 1), text.size());
        for (std::size_t row = 0; row < layout->rowCount(); ++row) {
            for (double x = 0; x < 200; x += 20) {
                const RowHit hit = layout->hitAt(row, x);
                EXPECT_GE(hit.start, layout->rowStart(row));
                EXPECT_LE(hit.end, layout->rowEnd(row));
            }
        }
        picture(*layout, {});
    }
}

}  // namespace
}  // namespace tavrel
