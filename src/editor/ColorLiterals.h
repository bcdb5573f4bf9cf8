#pragma once

#include "config/HexColor.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <optional>

namespace tavrel {

class TextSnapshot;

/// "#" and six hexadecimal digits in a text, with no part of a word behind them.
struct ColorLiteral {
    static constexpr std::size_t length = 7;

    TextRange range;
    Color color;

    bool operator==(const ColorLiteral&) const = default;
};

/// The literal that begins at `location`.
std::optional<ColorLiteral> colorLiteralFrom(const TextSnapshot& text, std::size_t location);

/// The first literal that holds `offset`, its two ends included, or that stands next to a quotation
/// mark on which the offset lies. Looks at a few units only.
std::optional<ColorLiteral> colorLiteralAt(const TextSnapshot& text, std::size_t offset);

}  // namespace tavrel
