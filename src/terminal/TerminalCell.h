#pragma once

#include "terminal/TerminalColor.h"

#include <cstdint>

namespace tavrel {

/// How the character of a cell is drawn, apart from its colours: a set of bits.
struct TerminalCellFlags {
    std::uint8_t rawValue = 0;

    static const TerminalCellFlags bold, dim, italic, underline, inverse;

    constexpr bool isEmpty() const { return rawValue == 0; }
    /// Whether all of `flags` are there.
    constexpr bool contains(TerminalCellFlags flags) const
    {
        return (rawValue & flags.rawValue) == flags.rawValue;
    }
    constexpr TerminalCellFlags operator|(TerminalCellFlags other) const
    {
        return {static_cast<std::uint8_t>(rawValue | other.rawValue)};
    }
    constexpr bool operator==(const TerminalCellFlags&) const = default;
};

inline constexpr TerminalCellFlags TerminalCellFlags::bold{1};
inline constexpr TerminalCellFlags TerminalCellFlags::dim{2};
inline constexpr TerminalCellFlags TerminalCellFlags::italic{4};
inline constexpr TerminalCellFlags TerminalCellFlags::underline{8};
inline constexpr TerminalCellFlags TerminalCellFlags::inverse{16};

/// One place of the grid, as readers see it. The default cell is a blank in the theme's colours.
///
/// Any code point takes one cell, wide and combining ones too. The emulator itself keeps cells in
/// a packed form; see `TerminalRow`.
struct TerminalCell {
    char32_t character = U' ';
    TerminalColor foreground = TerminalColor::defaultForeground();
    TerminalColor background = TerminalColor::defaultBackground();
    TerminalCellFlags flags;

    bool operator==(const TerminalCell&) const = default;
};

static_assert(sizeof(TerminalCell) <= 16);

}  // namespace tavrel
