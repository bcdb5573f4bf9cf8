#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

/// An opaque colour of three 8-bit components.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const Color&) const = default;
};

/// The colour of a text such as "#1F2430": six hexadecimal digits of either case, the "#" optional,
/// white space and line ends around it ignored. A "+" may stand for the first digit, as the sign
/// of the number. Nothing for any other text; there are no short forms.
std::optional<Color> parseHexColor(std::string_view text);

/// The colour as "#" and six digits, letters in capitals.
std::string hexText(Color color);

}  // namespace tavrel
