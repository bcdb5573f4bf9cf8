#pragma once

#include "terminal/TerminalCell.h"

#include <cstdint>

namespace tavrel {

/// The two colours and the flags of a cell in eight bytes: all of a cell but its character, and
/// the pen that new cells get theirs from.
class TerminalStyle {
public:
    constexpr TerminalStyle() = default;
    constexpr TerminalStyle(TerminalColor foreground, TerminalColor background,
                            TerminalCellFlags flags = {})
    {
        setForeground(foreground);
        setBackground(background);
        add(flags);
    }

    constexpr TerminalColor foreground() const
    {
        return TerminalColor::fromPacked(static_cast<std::uint32_t>(bits_));
    }
    constexpr TerminalColor background() const
    {
        return TerminalColor::fromPacked(static_cast<std::uint32_t>(bits_ >> backgroundShift));
    }
    constexpr TerminalCellFlags flags() const
    {
        return {static_cast<std::uint8_t>(bits_ >> flagsShift & 0x1F)};
    }

    constexpr void setForeground(TerminalColor color)
    {
        bits_ = (bits_ & ~colorMask) | color.packed();
    }
    constexpr void setBackground(TerminalColor color)
    {
        bits_ = (bits_ & ~(colorMask << backgroundShift)) |
                static_cast<std::uint64_t>(color.packed()) << backgroundShift;
    }
    constexpr void add(TerminalCellFlags flags) { bits_ |= flagBits(flags); }
    constexpr void remove(TerminalCellFlags flags) { bits_ &= ~flagBits(flags); }

    /// The style of what is erased with this pen: its background, all else by default.
    constexpr TerminalStyle blank() const
    {
        TerminalStyle style;
        style.setBackground(background());
        return style;
    }

    constexpr TerminalCell cell(char32_t character) const
    {
        return {character, foreground(), background(), flags()};
    }

    /// The style as a number, and back.
    constexpr std::uint64_t bits() const { return bits_; }
    static constexpr TerminalStyle fromBits(std::uint64_t bits)
    {
        TerminalStyle style;
        style.bits_ = bits;
        return style;
    }

    constexpr bool operator==(const TerminalStyle&) const = default;

private:
    static constexpr int flagsShift = TerminalColor::packedWidth;
    static constexpr int backgroundShift = 32;
    static constexpr std::uint64_t colorMask = TerminalColor::packedMask;

    static constexpr std::uint64_t flagBits(TerminalCellFlags flags)
    {
        return static_cast<std::uint64_t>(flags.rawValue & 0x1F) << flagsShift;
    }

    // The foreground, the flags above it, and the background in the upper half.
    std::uint64_t bits_ = TerminalColor::defaultForeground().packed() |
                          static_cast<std::uint64_t>(TerminalColor::defaultBackground().packed())
                              << backgroundShift;
};

static_assert(sizeof(TerminalStyle) == 8);

}  // namespace tavrel
