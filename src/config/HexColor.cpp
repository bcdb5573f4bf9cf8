#include "config/HexColor.h"

#include "config/ConfigText.h"

#include <charconv>

namespace tavrel {
namespace {

constexpr int hexadecimal = 16;

}  // namespace

std::optional<Color> parseHexColor(std::string_view text)
{
    constexpr std::size_t length = 6;
    const std::string trimmed = trimmedUtf8(text, Trim::newlines);
    std::string_view digits = trimmed;
    if (digits.starts_with('#'))
        digits.remove_prefix(1);
    if (digits.size() != length)
        return std::nullopt;
    if (digits.starts_with('+'))
        digits.remove_prefix(1);

    std::uint32_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number, hexadecimal);
    if (read.ec != std::errc() || read.ptr != end)
        return std::nullopt;
    return Color{static_cast<std::uint8_t>(number >> 16), static_cast<std::uint8_t>(number >> 8),
                 static_cast<std::uint8_t>(number)};
}

std::string hexText(Color color)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "#";
    for (const std::uint8_t component : {color.red, color.green, color.blue}) {
        text.push_back(digits[component / hexadecimal]);
        text.push_back(digits[component % hexadecimal]);
    }
    return text;
}

}  // namespace tavrel
