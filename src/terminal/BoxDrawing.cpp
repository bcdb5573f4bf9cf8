#include "terminal/BoxDrawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace tavrel {
namespace {

// The weights of a line in the table below.
constexpr char noLine = '0';
constexpr char lightLine = '1';
constexpr char heavyLine = '2';
constexpr char doubleLine = '3';

// The lines of U+2500 to U+257F: what leads from the middle to the left, up, right and down. A dash
// has "-" and "|" with its number of pieces and its weight; an arc or diagonal has "~" and the
// number of its stroke.
constexpr std::array<std::string_view, 128> lineTable{
    // U+2500
    "1010", "2020", "0101", "0202", "-31", "-32", "|31", "|32", "-41", "-42", "|41", "|42", "0011",
    "0021", "0012", "0022",
    // U+2510
    "1001", "2001", "1002", "2002", "0110", "0120", "0210", "0220", "1100", "2100", "1200", "2200",
    "0111", "0121", "0211", "0112",
    // U+2520
    "0212", "0221", "0122", "0222", "1101", "2101", "1201", "1102", "1202", "2201", "2102", "2202",
    "1011", "2011", "1021", "2021",
    // U+2530
    "1012", "2012", "1022", "2022", "1110", "2110", "1120", "2120", "1210", "2210", "1220", "2220",
    "1111", "2111", "1121", "2121",
    // U+2540
    "1211", "1112", "1212", "2211", "1221", "2112", "1122", "2221", "2122", "2212", "1222", "2222",
    "-21", "-22", "|21", "|22",
    // U+2550
    "3030", "0303", "0031", "0013", "0033", "3001", "1003", "3003", "0130", "0310", "0330", "3100",
    "1300", "3300", "0131", "0313",
    // U+2560
    "0333", "3101", "1303", "3303", "3031", "1013", "3033", "3130", "1310", "3330", "3131", "1313",
    "3333", "~0", "~1", "~2",
    // U+2570
    "~3", "~4", "~5", "~6", "1000", "0100", "0010", "0001", "2000", "0200", "0020", "0002", "1020",
    "0102", "2010", "0201"};

struct LineWidths {
    int light;
    int heavy;
    int offset;  // Of each of two parallel lines from where a light one stands.
};

LineWidths lineWidths(int width, int height)
{
    const int light = std::max(std::min(width, height) / 7, 1);
    return {light, std::max(light * 2, 2), light};
}

/// Draws along one of the two axes: "level" lines go from left to right. For upright ones the axes
/// are exchanged on the way in and out.
class ArmDrawer {
public:
    ArmDrawer(BoxShape& shape, int width, int height, bool isUpright)
        : shape_(shape), isUpright_(isUpright), length_(isUpright ? height : width),
          breadth_(isUpright ? width : height), widths_(lineWidths(width, height))
    {
    }

    /// The arm from the middle to the start or the end of the axis. `before` and `behind` are the
    /// weights across, towards the start and the end of the other axis, `opposite` that of the arm
    /// beyond the middle.
    void arm(char weight, bool towardsEnd, char before, char behind, char opposite)
    {
        if (weight == noLine)
            return;
        if (weight != doubleLine) {
            const int thickness = weight == heavyLine ? widths_.heavy : widths_.light;
            const bool hasBoth = before == doubleLine && behind == doubleLine;
            const bool hasOne = before == doubleLine || behind == doubleLine;
            const int reach = crossReach(before, behind);
            if (opposite == noLine && hasBoth)
                line(thickness, 0, towardsEnd, -widths_.offset);
            else if (opposite == noLine && hasOne)
                line(thickness, 0, towardsEnd, widths_.offset);
            else
                line(thickness, 0, towardsEnd, reach);
            return;
        }
        parallel(-widths_.offset, towardsEnd, before, behind, opposite);
        parallel(widths_.offset, towardsEnd, behind, before, opposite);
    }

    void dashes(int pieces, char weight)
    {
        const int thickness = weight == heavyLine ? widths_.heavy : widths_.light;
        const int start = (breadth_ - thickness) / 2;
        const int gap = std::max(length_ / (pieces * 4), 1);
        for (int piece = 0; piece < pieces; ++piece) {
            const int from = length_ * piece / pieces;
            const int to = length_ * (piece + 1) / pieces;
            add(from + gap / 2, start, std::max(to - from - gap, 1), thickness);
        }
    }

private:
    /// How far beyond the middle a line goes to fill the corner that it makes with those across.
    int crossReach(char before, char behind) const
    {
        const char most = std::max(before == doubleLine ? lightLine : before,
                                   behind == doubleLine ? lightLine : behind);
        return most == heavyLine ? (widths_.heavy - widths_.light) / 2 : 0;
    }

    void parallel(int offset, bool towardsEnd, char near, char far, char opposite)
    {
        if (near == doubleLine)
            line(widths_.light, offset, towardsEnd, -widths_.offset);
        else if (far == doubleLine && opposite == noLine)
            line(widths_.light, offset, towardsEnd, widths_.offset);
        else
            line(widths_.light, offset, towardsEnd, 0);
    }

    /// A line from the edge to the middle and `reach` pixels beyond it, or short of it.
    void line(int thickness, int offset, bool towardsEnd, int reach)
    {
        const int middle = (length_ - widths_.light) / 2;
        const int across = (breadth_ - thickness) / 2;
        const int start = offset == 0 ? across : (breadth_ - widths_.light) / 2 + offset;
        const int from = towardsEnd ? middle - reach : 0;
        const int to = towardsEnd ? length_ : middle + widths_.light + reach;
        add(from, start, to - from, thickness);
    }

    void add(int along, int across, int length, int thickness)
    {
        const int first = std::clamp(along, 0, length_);
        const int last = std::clamp(along + length, first, length_);
        const int near = std::clamp(across, 0, std::max(breadth_ - 1, 0));
        const int far = std::clamp(across + thickness, near + 1, std::max(breadth_, near + 1));
        if (last == first)
            return;
        if (isUpright_)
            shape_.parts.push_back({near, first, far - near, last - first});
        else
            shape_.parts.push_back({first, near, last - first, far - near});
    }

    BoxShape& shape_;
    bool isUpright_;
    int length_;
    int breadth_;
    LineWidths widths_;
};

void addLines(BoxShape& shape, std::string_view lines, int width, int height)
{
    ArmDrawer level(shape, width, height, false);
    ArmDrawer upright(shape, width, height, true);
    if (lines[0] == '~') {
        shape.stroke = static_cast<CellStroke>(lines[1] - '0');
    } else if (lines[0] == '-') {
        level.dashes(lines[1] - '0', lines[2]);
    } else if (lines[0] == '|') {
        upright.dashes(lines[1] - '0', lines[2]);
    } else {
        const char left = lines[0];
        const char up = lines[1];
        const char right = lines[2];
        const char down = lines[3];
        level.arm(left, false, up, down, right);
        level.arm(right, true, up, down, left);
        upright.arm(up, false, left, right, down);
        upright.arm(down, true, left, right, up);
    }
}

int eighths(int length, int count)
{
    return std::max((length * count + 4) / 8, 1);
}

// Which quarters U+2596 to U+259F fill: bits for top left, top right, bottom left, bottom right.
constexpr std::array quadrants{4, 8, 1, 13, 9, 7, 11, 2, 6, 14};

void addBlocks(BoxShape& shape, char32_t character, int width, int height)
{
    const auto add = [&](int left, int top, int right, int bottom, double coverage = 1) {
        if (right > left && bottom > top)
            shape.parts.push_back({left, top, right - left, bottom - top, coverage});
    };
    const int halfWidth = (width + 1) / 2;
    const int halfHeight = (height + 1) / 2;
    if (character == 0x2580) {
        add(0, 0, width, halfHeight);
    } else if (character <= 0x2588) {
        const int part = static_cast<int>(character - 0x2580);
        const int filled = part == 4 ? height - halfHeight : eighths(height, part);
        add(0, height - filled, width, height);
    } else if (character <= 0x258F) {
        const int part = static_cast<int>(0x2590 - character);
        add(0, 0, part == 4 ? halfWidth : eighths(width, part), height);
    } else if (character == 0x2590) {
        add(halfWidth, 0, width, height);
    } else if (character <= 0x2593) {
        add(0, 0, width, height, 0.25 * static_cast<double>(character - 0x2590));
    } else if (character == 0x2594) {
        add(0, 0, width, eighths(height, 1));
    } else if (character == 0x2595) {
        add(width - eighths(width, 1), 0, width, height);
    } else {
        const int bits = quadrants[character - 0x2596];
        if (bits & 1)
            add(0, 0, halfWidth, halfHeight);
        if (bits & 2)
            add(halfWidth, 0, width, halfHeight);
        if (bits & 4)
            add(0, halfHeight, halfWidth, height);
        if (bits & 8)
            add(halfWidth, halfHeight, width, height);
    }
}

}  // namespace

BoxShape boxShape(char32_t character, int width, int height)
{
    width = std::max(width, 1);
    height = std::max(height, 1);
    BoxShape shape;
    shape.lineWidth = lineWidths(width, height).light;
    shape.lineLeft = (width - shape.lineWidth) / 2;
    shape.lineTop = (height - shape.lineWidth) / 2;
    if (!isBoxCharacter(character))
        return shape;
    if (character < 0x2580)
        addLines(shape, lineTable[character - 0x2500], width, height);
    else
        addBlocks(shape, character, width, height);
    return shape;
}

}  // namespace tavrel
