#include "terminal/TerminalPalette.h"

namespace tavrel {
namespace {

constexpr std::array<TerminalRgb, ansiColorCount> builtInColors{{
    {0.1, 0.1, 0.1},
    {0.8, 0.25, 0.25},
    {0.3, 0.72, 0.36},
    {0.85, 0.72, 0.3},
    {0.32, 0.55, 0.9},
    {0.72, 0.42, 0.82},
    {0.3, 0.75, 0.78},
    {0.85, 0.85, 0.85},
    {0.4, 0.4, 0.4},
    {0.95, 0.4, 0.4},
    {0.45, 0.88, 0.5},
    {0.95, 0.87, 0.45},
    {0.5, 0.7, 1.0},
    {0.85, 0.58, 0.94},
    {0.45, 0.9, 0.92},
    {1.0, 1.0, 1.0},
}};

constexpr std::array cubeLevels{0.0, 0.37, 0.53, 0.68, 0.84, 1.0};

constexpr int firstOfCube = 16;
constexpr int firstGrey = 232;
constexpr int paletteSize = 256;

}  // namespace

TerminalRgb paletteColor(int index, std::span<const TerminalRgb> ansiPalette)
{
    if (index < 0 || index >= paletteSize)
        return {1, 1, 1};
    if (index < firstOfCube) {
        const auto at = static_cast<std::size_t>(index);
        return ansiPalette.size() == ansiColorCount ? ansiPalette[at] : builtInColors[at];
    }
    if (index < firstGrey) {
        const auto inCube = static_cast<std::size_t>(index - firstOfCube);
        return {cubeLevels[inCube / 36], cubeLevels[inCube / 6 % 6], cubeLevels[inCube % 6]};
    }
    const double grey = (index * 10 - 2312) / 255.0;
    return {grey, grey, grey};
}

}  // namespace tavrel
