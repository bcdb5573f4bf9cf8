#include "terminal/GraphicRendition.h"

#include <array>
#include <optional>

namespace tavrel {
namespace {

// What a code by itself does; 38 and 48 are not among them.
constexpr void applyCode(int code, TerminalStyle& pen)
{
    switch (code) {
    case 0:
        pen = TerminalStyle();
        break;
    case 1:
        pen.add(TerminalCellFlags::bold);
        break;
    case 2:
        pen.add(TerminalCellFlags::dim);
        break;
    case 3:
        pen.add(TerminalCellFlags::italic);
        break;
    case 4:
        pen.add(TerminalCellFlags::underline);
        break;
    case 7:
        pen.add(TerminalCellFlags::inverse);
        break;
    case 22:
        pen.remove(TerminalCellFlags::bold | TerminalCellFlags::dim);
        break;
    case 23:
        pen.remove(TerminalCellFlags::italic);
        break;
    case 24:
        pen.remove(TerminalCellFlags::underline);
        break;
    case 27:
        pen.remove(TerminalCellFlags::inverse);
        break;
    case 39:
        pen.setForeground(TerminalColor::defaultForeground());
        break;
    case 49:
        pen.setBackground(TerminalColor::defaultBackground());
        break;
    default:
        if (code >= 30 && code <= 37)
            pen.setForeground(TerminalColor::palette(code - 30));
        else if (code >= 40 && code <= 47)
            pen.setBackground(TerminalColor::palette(code - 40));
        else if (code >= 90 && code <= 97)
            pen.setForeground(TerminalColor::palette(code - 82));
        else if (code >= 100 && code <= 107)
            pen.setBackground(TerminalColor::palette(code - 92));
    }
}

// The bits of a pen that a code leaves, and those that it sets.
struct BitChange {
    std::uint64_t kept;
    std::uint64_t set;
};

// Codes follow each other without a pattern that a processor could foretell, so what they do is
// looked up and not branched on. A bit that comes out as it went in, whatever it was, is kept.
constexpr auto changes = [] {
    std::array<BitChange, 108> table{};
    for (std::size_t code = 0; code < table.size(); ++code) {
        TerminalStyle zeros = TerminalStyle::fromBits(0);
        TerminalStyle ones = TerminalStyle::fromBits(~std::uint64_t{0});
        applyCode(static_cast<int>(code), zeros);
        applyCode(static_cast<int>(code), ones);
        table[code] = {ones.bits() & ~zeros.bits(), zeros.bits()};
    }
    return table;
}();

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
            if (static_cast<std::size_t>(code) < changes.size()) {
                const BitChange change = changes[static_cast<std::size_t>(code)];
                pen = TerminalStyle::fromBits((pen.bits() & change.kept) | change.set);
            }
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
