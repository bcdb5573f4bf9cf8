#include "terminal/GraphicRendition.h"

#include <optional>

namespace tavrel {
namespace {

// A flag that a code adds or removes, or both colours' default.
bool applyFlags(std::int32_t code, TerminalStyle& pen)
{
    switch (code) {
    case 0:
        pen = TerminalStyle();
        return true;
    case 1:
        pen.add(TerminalCellFlags::bold);
        return true;
    case 2:
        pen.add(TerminalCellFlags::dim);
        return true;
    case 3:
        pen.add(TerminalCellFlags::italic);
        return true;
    case 4:
        pen.add(TerminalCellFlags::underline);
        return true;
    case 7:
        pen.add(TerminalCellFlags::inverse);
        return true;
    case 22:
        pen.remove(TerminalCellFlags::bold | TerminalCellFlags::dim);
        return true;
    case 23:
        pen.remove(TerminalCellFlags::italic);
        return true;
    case 24:
        pen.remove(TerminalCellFlags::underline);
        return true;
    case 27:
        pen.remove(TerminalCellFlags::inverse);
        return true;
    default:
        return false;
    }
}

void applySimpleColor(std::int32_t code, TerminalStyle& pen)
{
    if (code >= 30 && code <= 37)
        pen.setForeground(TerminalColor::palette(code - 30));
    else if (code == 39)
        pen.setForeground(TerminalColor::defaultForeground());
    else if (code >= 40 && code <= 47)
        pen.setBackground(TerminalColor::palette(code - 40));
    else if (code == 49)
        pen.setBackground(TerminalColor::defaultBackground());
    else if (code >= 90 && code <= 97)
        pen.setForeground(TerminalColor::palette(code - 82));
    else if (code >= 100 && code <= 107)
        pen.setBackground(TerminalColor::palette(code - 92));
}

struct ExtendedColor {
    TerminalColor color;
    std::size_t length;  // Of its codes, the 38 or 48 included.
};

// Reads the colour that `codes` begin with. One that is cut short is none, and its codes behind the
// first are then read one by one, as programs have come to count on.
std::optional<ExtendedColor> extendedColor(std::span<const std::int32_t> codes)
{
    if (codes.size() > 4 && codes[1] == 2)
        return ExtendedColor{TerminalColor::rgb(codes[2], codes[3], codes[4]), 5};
    if (codes.size() > 2 && codes[1] == 5)
        return ExtendedColor{TerminalColor::palette(codes[2]), 3};
    return std::nullopt;
}

}  // namespace

std::size_t applyGraphicRendition(std::span<const std::int32_t> codes, RenditionEnd end,
                                  TerminalStyle& pen)
{
    constexpr std::size_t longestColor = 5;
    std::size_t at = 0;
    while (at < codes.size()) {
        const std::int32_t code = codes[at];
        if (code != 38 && code != 48) {
            if (!applyFlags(code, pen))
                applySimpleColor(code, pen);
            ++at;
            continue;
        }
        if (end == RenditionEnd::isOpen && codes.size() - at < longestColor)
            return at;
        const auto extended = extendedColor(codes.subspan(at));
        if (extended && code == 38)
            pen.setForeground(extended->color);
        else if (extended)
            pen.setBackground(extended->color);
        at += extended ? extended->length : 1;
    }
    return at;
}

}  // namespace tavrel
