#pragma once

#include <optional>
#include <vector>

namespace tavrel {

/// A filled part of a cell, in device pixels from the cell's top left corner.
struct CellPart {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    double coverage = 1;  // How much of the text's colour it shows, 0 to 1.

    bool operator==(const CellPart&) const = default;
};

/// A stroke that no rectangle can show. Arcs are named by the edges that they join.
enum class CellStroke {
    arcRightDown,
    arcLeftDown,
    arcLeftUp,
    arcRightUp,
    risingDiagonal,
    fallingDiagonal,
    crossedDiagonals,
};

/// How a line or block character fills its cell, so that it joins its neighbours without a gap
/// whatever the font.
struct BoxShape {
    std::vector<CellPart> parts;
    std::optional<CellStroke> stroke;
    int lineWidth = 1;  // Of `stroke`, in device pixels.
    int lineLeft = 0;   // Where an upright light line stands in the cell.
    int lineTop = 0;    // Where a level light line stands in the cell.
};

/// Whether `character` is one of the lines, corners and blocks of U+2500 to U+259F.
constexpr bool isBoxCharacter(char32_t character)
{
    return character >= 0x2500 && character <= 0x259F;
}

/// The shape of a character for which `isBoxCharacter` holds, in a cell of `width` by `height`
/// device pixels, each at least 1.
BoxShape boxShape(char32_t character, int width, int height);

}  // namespace tavrel
