#include "terminal/BoxDrawing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavrel {
namespace {

constexpr int width = 8;
constexpr int height = 16;

/// Which pixels of the cell a shape fills.
std::vector<std::string> pixelsOf(char32_t character)
{
    std::vector<std::string> pixels(height, std::string(width, '.'));
    for (const CellPart& part : boxShape(character, width, height).parts) {
        for (int y = part.top; y < part.top + part.height; ++y) {
            for (int x = part.left; x < part.left + part.width; ++x)
                pixels.at(static_cast<std::size_t>(y)).at(static_cast<std::size_t>(x)) = '#';
        }
    }
    return pixels;
}

std::string columnOf(const std::vector<std::string>& pixels, std::size_t x)
{
    std::string column;
    for (const std::string& row : pixels)
        column.push_back(row[x]);
    return column;
}

bool isFilled(std::string_view pixels)
{
    return pixels.find('.') == std::string_view::npos;
}

TEST(BoxDrawing, ALevelLineReachesBothEdges)
{
    const auto pixels = pixelsOf(U'─');
    EXPECT_TRUE(isFilled(pixels[7]));
    EXPECT_EQ(columnOf(pixels, 0), columnOf(pixels, width - 1));
}

TEST(BoxDrawing, AnUprightLineReachesBothEdges)
{
    const auto pixels = pixelsOf(U'│');
    EXPECT_TRUE(isFilled(columnOf(pixels, 3)));
    EXPECT_EQ(pixels.front(), pixels.back());
}

TEST(BoxDrawing, HeavyLinesAreThicker)
{
    const auto count = [](const std::string& pixels) {
        return std::count(pixels.begin(), pixels.end(), '#');
    };
    EXPECT_EQ(count(columnOf(pixelsOf(U'━'), 0)), 2 * count(columnOf(pixelsOf(U'─'), 0)));
    EXPECT_EQ(count(pixelsOf(U'┃')[0]), 2 * count(pixelsOf(U'│')[0]));
}

/// What leaves the cell at its edges, which is all that a neighbour sees.
struct Edges {
    std::string left, top, right, bottom;
    bool operator==(const Edges&) const = default;
};

Edges edgesOf(char32_t character)
{
    const auto pixels = pixelsOf(character);
    return {columnOf(pixels, 0), pixels.front(), columnOf(pixels, width - 1), pixels.back()};
}

TEST(BoxDrawing, CornersMeetTheLinesBesideThem)
{
    const struct {
        std::u32string_view corners;  // Top left, top right, bottom left, bottom right.
        char32_t level;
        char32_t upright;
    } frames[] = {{U"┌┐└┘", U'─', U'│'},
                  {U"┏┓┗┛", U'━', U'┃'},
                  {U"╔╗╚╝", U'═', U'║'},
                  {U"╒╕╘╛", U'═', U'│'},
                  {U"╓╖╙╜", U'─', U'║'}};
    for (const auto& frame : frames) {
        const std::string level = edgesOf(frame.level).left;
        const std::string upright = edgesOf(frame.upright).top;
        EXPECT_EQ(edgesOf(frame.corners[0]).right, level);
        EXPECT_EQ(edgesOf(frame.corners[0]).bottom, upright);
        EXPECT_EQ(edgesOf(frame.corners[1]).left, level);
        EXPECT_EQ(edgesOf(frame.corners[1]).bottom, upright);
        EXPECT_EQ(edgesOf(frame.corners[2]).right, level);
        EXPECT_EQ(edgesOf(frame.corners[2]).top, upright);
        EXPECT_EQ(edgesOf(frame.corners[3]).left, level);
        EXPECT_EQ(edgesOf(frame.corners[3]).top, upright);
    }
}

TEST(BoxDrawing, CrossingsReachAllFourEdges)
{
    for (const char32_t crossing : {U'┼', U'╋', U'╬', U'╪', U'╫'}) {
        const Edges edges = edgesOf(crossing);
        EXPECT_EQ(edges.left, edges.right);
        EXPECT_EQ(edges.top, edges.bottom);
        EXPECT_NE(edges.left.find('#'), std::string::npos);
        EXPECT_NE(edges.top.find('#'), std::string::npos);
    }
}

// Every filled pixel of a corner of two lines hangs together with the others of its line.
TEST(BoxDrawing, ACornerOfTwoLinesIsTwoCorners)
{
    const std::vector<std::string> expected = {
        "........", "........", "........", "........", "........", "........",
        "..######", "..#.....", "..#.####", "..#.#...", "..#.#...", "..#.#...",
        "..#.#...", "..#.#...", "..#.#...", "..#.#...",
    };
    EXPECT_EQ(pixelsOf(U'╔'), expected);
}

TEST(BoxDrawing, ACrossingOfTwoLinesLeavesItsMiddleFree)
{
    const auto pixels = pixelsOf(U'╬');
    EXPECT_EQ(pixels[6], "###.####");
    EXPECT_EQ(pixels[7], "........");
    EXPECT_EQ(pixels[8], "###.####");
    EXPECT_EQ(pixels[9], "..#.#...");
}

TEST(BoxDrawing, ALightLineEndsAtTheTwoThatItMeets)
{
    EXPECT_EQ(pixelsOf(U'╟')[7], "..#.####");
    EXPECT_EQ(pixelsOf(U'╢')[7], "###.#...");
    EXPECT_EQ(pixelsOf(U'╫')[7], "########");
}

TEST(BoxDrawing, HalvesFillTheCellBetweenThem)
{
    const auto upper = pixelsOf(U'▀');
    const auto lower = pixelsOf(U'▄');
    const auto left = pixelsOf(U'▌');
    const auto right = pixelsOf(U'▐');
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            EXPECT_NE(upper[y][x], lower[y][x]);
            EXPECT_NE(left[y][x], right[y][x]);
        }
    }
}

TEST(BoxDrawing, HalvesFillACellOfOddSizeToo)
{
    const auto area = [](char32_t character) {
        int sum = 0;
        for (const CellPart& part : boxShape(character, 7, 15).parts)
            sum += part.width * part.height;
        return sum;
    };
    EXPECT_EQ(area(U'▀') + area(U'▄'), 7 * 15);
    EXPECT_EQ(area(U'▌') + area(U'▐'), 7 * 15);
    EXPECT_EQ(area(U'▚') + area(U'▞'), 7 * 15);
}

TEST(BoxDrawing, TheFullBlockFillsItsCell)
{
    for (const std::string& row : pixelsOf(U'█'))
        EXPECT_TRUE(isFilled(row));
}

TEST(BoxDrawing, EighthsGrow)
{
    std::size_t filled = 0;
    for (char32_t character = 0x2581; character <= 0x2588; ++character) {
        const std::string column = columnOf(pixelsOf(character), 0);
        const auto now = static_cast<std::size_t>(std::count(column.begin(), column.end(), '#'));
        EXPECT_GT(now, filled);
        EXPECT_EQ(column.back(), '#');
        filled = now;
    }
    EXPECT_EQ(filled, static_cast<std::size_t>(height));
}

TEST(BoxDrawing, ShadesCoverTheirCellInPart)
{
    EXPECT_EQ(boxShape(U'░', 8, 16).parts, (std::vector<CellPart>{{0, 0, 8, 16, 0.25}}));
    EXPECT_EQ(boxShape(U'▒', 8, 16).parts, (std::vector<CellPart>{{0, 0, 8, 16, 0.5}}));
    EXPECT_EQ(boxShape(U'▓', 8, 16).parts, (std::vector<CellPart>{{0, 0, 8, 16, 0.75}}));
}

TEST(BoxDrawing, ArcsAndDiagonalsAreStrokes)
{
    EXPECT_EQ(boxShape(U'╭', 8, 16).stroke, CellStroke::arcRightDown);
    EXPECT_EQ(boxShape(U'╮', 8, 16).stroke, CellStroke::arcLeftDown);
    EXPECT_EQ(boxShape(U'╯', 8, 16).stroke, CellStroke::arcLeftUp);
    EXPECT_EQ(boxShape(U'╰', 8, 16).stroke, CellStroke::arcRightUp);
    EXPECT_EQ(boxShape(U'╱', 8, 16).stroke, CellStroke::risingDiagonal);
    EXPECT_EQ(boxShape(U'╲', 8, 16).stroke, CellStroke::fallingDiagonal);
    EXPECT_EQ(boxShape(U'╳', 8, 16).stroke, CellStroke::crossedDiagonals);
}

TEST(BoxDrawing, EveryCharacterHasAShapeInsideItsCellAtEverySize)
{
    for (int w = 2; w <= 24; ++w) {
        for (int h = 2; h <= 40; h += 3) {
            for (char32_t character = 0x2500; character <= 0x259F; ++character) {
                const BoxShape shape = boxShape(character, w, h);
                EXPECT_TRUE(shape.stroke || !shape.parts.empty())
                    << std::hex << static_cast<int>(character) << " at " << std::dec << w << "x"
                    << h;
                for (const CellPart& part : shape.parts) {
                    ASSERT_GE(part.left, 0);
                    ASSERT_GE(part.top, 0);
                    ASSERT_GT(part.width, 0);
                    ASSERT_GT(part.height, 0);
                    ASSERT_LE(part.left + part.width, w);
                    ASSERT_LE(part.top + part.height, h);
                }
            }
        }
    }
}

}  // namespace
}  // namespace tavrel
