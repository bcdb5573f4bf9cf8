#pragma once

#include <algorithm>
#include <cstdint>

namespace tavrel {

/// A colour as a program names it: one of the theme's two defaults, one of the palette's 256, or a
/// direct one. A value of four bytes; equal colours have the same kind and the same payload.
class TerminalColor {
public:
    enum class Kind : std::uint8_t { defaultForeground, defaultBackground, palette, rgb };

    static constexpr TerminalColor defaultForeground() { return make(Kind::defaultForeground, 0); }
    static constexpr TerminalColor defaultBackground() { return make(Kind::defaultBackground, 0); }
    /// `index` and the three parts are limited to 0 to 255.
    static constexpr TerminalColor palette(int index) { return make(Kind::palette, byte(index)); }
    static constexpr TerminalColor rgb(int red, int green, int blue)
    {
        return make(Kind::rgb, byte(red) << 16 | byte(green) << 8 | byte(blue));
    }

    constexpr Kind kind() const { return static_cast<Kind>(bits_ >> payloadWidth); }
    /// The place in the palette; meaningful where the kind is `palette`.
    constexpr std::uint8_t index() const { return static_cast<std::uint8_t>(bits_); }
    // Meaningful where the kind is `rgb`.
    constexpr std::uint8_t red() const { return static_cast<std::uint8_t>(bits_ >> 16); }
    constexpr std::uint8_t green() const { return static_cast<std::uint8_t>(bits_ >> 8); }
    constexpr std::uint8_t blue() const { return static_cast<std::uint8_t>(bits_); }

    /// The colour as a number of `packedWidth` bits.
    constexpr std::uint32_t packed() const { return bits_; }
    static constexpr TerminalColor fromPacked(std::uint32_t bits)
    {
        TerminalColor color;
        color.bits_ = bits & packedMask;
        return color;
    }
    static constexpr int packedWidth = 26;
    static constexpr std::uint32_t packedMask = (1u << packedWidth) - 1;

    constexpr bool operator==(const TerminalColor&) const = default;

private:
    static constexpr int payloadWidth = 24;

    static constexpr std::uint32_t byte(int value)
    {
        return static_cast<std::uint32_t>(std::clamp(value, 0, 255));
    }
    static constexpr TerminalColor make(Kind kind, std::uint32_t payload)
    {
        return fromPacked(static_cast<std::uint32_t>(kind) << payloadWidth | payload);
    }

    std::uint32_t bits_ = 0;
};

}  // namespace tavrel
