#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>

namespace tavrel {

/// A colour as it is drawn, each part from 0 to 1.
struct TerminalRgb {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const TerminalRgb&) const = default;
};

inline constexpr std::size_t ansiColorCount = 16;

/// The colour of a palette index: the first 16 are the theme's, where it has exactly 16 and else
/// built-in ones; then a cube of 6 by 6 by 6, then 24 greys; any other index is white.
TerminalRgb paletteColor(int index, std::span<const TerminalRgb> ansiPalette = {});

}  // namespace tavrel
