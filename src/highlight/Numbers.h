#pragma once

#include "highlight/ScannedText.h"

#include <cstddef>

namespace tavrel {

// Where a number ends that begins at `location`, with a digit or with "." and a digit. A ".", an
// exponent and a "'" count only with a digit behind them. A suffix of word characters belongs to
// the number.

/// C and C++: "'" separates digits; hexadecimal numbers may have a fraction and an exponent.
std::size_t cNumberEnd(ScannedText& text, std::size_t location);

/// The other languages: "_" and "'" separate digits; "0x", "0b" and "0o" begin whole numbers.
std::size_t numberEnd(ScannedText& text, std::size_t location);

/// Decimal digits, a fraction and an exponent; no sign, no separators and no suffix.
std::size_t plainDecimalEnd(ScannedText& text, std::size_t location);

/// Whether a number begins at `location`, where `unit` stands.
inline bool startsNumber(ScannedText& text, std::size_t location, char16_t unit)
{
    return isAsciiDigit(unit) || (unit == u'.' && isAsciiDigit(text.unitAt(location + 1)));
}

}  // namespace tavrel
