#pragma once

#include "terminal/ModeList.h"
#include "terminal/TerminalStyle.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <vector>

namespace tavrel {

/// The parameters of the control sequence that is being read: numbers between semicolons, any
/// number of them, in a fixed amount of memory.
///
/// A parameter that is left out, holds a colon, or does not fit 64 bits counts as 0, which in every
/// sequence means the same as leaving it out. Others are limited to `mostValue`, far above all that
/// makes a difference. Where a list is longer than what is kept, the graphic rendition and the
/// modes that it may turn out to be are worked out as it is read.
class ControlSequenceParameters {
public:
    static constexpr std::int32_t mostValue = 1 << 30;

    /// Begins a sequence. `pen` is what a graphic rendition would change; it may not change
    /// otherwise before the sequence ends.
    void begin(TerminalStyle pen);
    /// Whether nothing has been read yet.
    bool isEmpty() const { return isEmpty_; }
    /// Reads up to the first byte that belongs to no parameter, or to the end; gives its place.
    const std::uint8_t* read(const std::uint8_t* at, const std::uint8_t* end);
    /// Reads what is by far the most there is: one or two whole parameters of digits with the final
    /// byte behind them, all within the eight bytes at `at`. Gives the number of bytes before the
    /// final one; or nothing, and then none is read.
    std::optional<std::size_t> readWhole(const std::uint8_t* at);
    /// Ends the last parameter. The questions below are for after that.
    void finish() { endParameter(); }

    std::int32_t first() const { return overflow_ ? overflow_->first : list_[0]; }
    /// 0 where there is none.
    std::int32_t second() const;
    /// The pen after the parameters as a graphic rendition.
    TerminalStyle rendition() const;
    /// The parameters as modes, or others with the same effect.
    std::vector<std::int32_t> modes() const;

private:
    static constexpr std::size_t keptCount = 32;

    struct Overflow {
        std::int32_t first;
        std::int32_t second;
        TerminalStyle pen;
        ModeList modes;
    };

    static std::int32_t numberOf(std::uint64_t digits, int bits);
    void endParameter();
    void makeRoom();

    TerminalStyle pen_;
    // The first ones, or those that have not gone into `overflow_` as a graphic rendition yet.
    std::array<std::int32_t, keptCount> list_{};
    std::size_t count_ = 0;
    // The one being read.
    std::uint64_t value_ = 0;
    bool isBroken_ = false;
    bool isEmpty_ = true;
    std::optional<Overflow> overflow_;
    std::size_t modesDone_ = 0;  // How many of `list_` have gone into `overflow_` as modes.
};

inline void ControlSequenceParameters::begin(TerminalStyle pen)
{
    pen_ = pen;
    count_ = 0;
    value_ = 0;
    isBroken_ = false;
    isEmpty_ = true;
    modesDone_ = 0;
    if (overflow_) [[unlikely]]
        overflow_.reset();
}

inline const std::uint8_t* ControlSequenceParameters::read(const std::uint8_t* at,
                                                           const std::uint8_t* end)
{
    constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    const std::uint8_t* const begin = at;
    std::uint64_t value = value_;
    for (; at < end; ++at) {
        const unsigned digit = *at - unsigned{'0'};
        if (digit < 10) {
            if (value >= most / 10 && value > (most - digit) / 10) [[unlikely]] {
                isBroken_ = true;
                value = 0;
            }
            value = value * 10 + digit;
        } else if (*at == ';') {
            value_ = value;
            endParameter();
            value = 0;
        } else if (*at == ':') {
            isBroken_ = true;
        } else {
            break;
        }
    }
    value_ = value;
    isEmpty_ &= at == begin;
    return at;
}

inline std::optional<std::size_t> ControlSequenceParameters::readWhole(const std::uint8_t* at)
{
    if constexpr (std::endian::native != std::endian::little)
        return std::nullopt;
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t lows = ones * 0x7F;
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    // Digits become their values, and all else is larger: where numbers end cannot be foretold, so
    // their ends are worked out from the bits that tell, and nothing branches on them.
    word ^= ones * '0';
    const std::uint64_t others = (((word & lows) + ones * (0x80 - 10)) | word) & ~lows;
    if (others == 0) [[unlikely]]
        return std::nullopt;
    const int first = std::countr_zero(others) & ~7;
    list_[0] = numberOf(word, first);
    count_ = 1;
    int final = first;
    if ((word >> first & 0xFF) == (';' ^ '0')) {
        const std::uint64_t behindFirst = others & (others - 1);
        if (behindFirst == 0)
            return std::nullopt;
        final = std::countr_zero(behindFirst) & ~7;
        list_[1] = numberOf(word >> (first + 8), final - first - 8);
        count_ = 2;
    }
    const std::uint64_t finalByte = (word >> final & 0xFF) ^ '0';
    if (finalByte < '@' || finalByte >= 0x80)
        return std::nullopt;
    return static_cast<std::size_t>(final / 8);
}

inline std::int32_t ControlSequenceParameters::numberOf(std::uint64_t digits, int bits)
{
    // Moved to the end, so that they stand behind leading zeros; then pairs, then fours of digits
    // become numbers side by side.
    digits = digits << 8 << (56 - bits);
    digits = digits * 10 + (digits >> 8);
    constexpr std::uint64_t evenPairs = 0x000000FF000000FF;
    return static_cast<std::int32_t>(((digits & evenPairs) * 0x000F424000000064 +
                                      ((digits >> 16) & evenPairs) * 0x0000271000000001) >>
                                     32);
}

inline void ControlSequenceParameters::endParameter()
{
    list_[count_++] =
        isBroken_ ? 0 : static_cast<std::int32_t>(std::min<std::uint64_t>(value_, mostValue));
    value_ = 0;
    isBroken_ = false;
    if (count_ == keptCount) [[unlikely]]
        makeRoom();
}

}  // namespace tavrel
