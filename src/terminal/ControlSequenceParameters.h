#pragma once

#include "terminal/ModeList.h"
#include "terminal/TerminalStyle.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
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

    std::size_t readShort(const std::uint8_t* at);
    const std::uint8_t* readLong(const std::uint8_t* at, const std::uint8_t* end);
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
    const std::uint8_t* const begin = at;
    while (at < end) {
        const std::size_t length = value_ == 0 && end - at >= 8 ? readShort(at) : 8;
        at = length < 8 ? at + length : readLong(at, end);
        if (at == end)
            break;
        if (*at == ';')
            endParameter();
        else if (*at == ':')
            isBroken_ = true;
        else
            break;
        ++at;
    }
    isEmpty_ &= at == begin;
    return at;
}

// Takes the digits that the next eight bytes begin with into `value_`, and gives their number; with
// 8 of them it takes none. How many there are cannot be foretold, so there is no branch on it.
inline std::size_t ControlSequenceParameters::readShort(const std::uint8_t* at)
{
    if constexpr (std::endian::native != std::endian::little)
        return 8;
    std::uint64_t digits;
    std::memcpy(&digits, at, sizeof digits);
    digits ^= 0x3030303030303030;
    const std::uint64_t others =
        (((digits & 0x7F7F7F7F7F7F7F7F) + 0x7676767676767676) | digits) & 0x8080808080808080;
    if (others == 0) [[unlikely]]
        return 8;
    const int length = std::countr_zero(others) / 8;
    // Moved to the end, so that they stand behind leading zeros; then pairs, then fours of digits
    // become numbers side by side.
    digits = digits << 8 << (56 - 8 * length);
    digits = digits * 10 + (digits >> 8);
    constexpr std::uint64_t evenPairs = 0x000000FF000000FF;
    value_ = ((digits & evenPairs) * 0x000F424000000064 +
              ((digits >> 16) & evenPairs) * 0x0000271000000001) >>
             32;
    return static_cast<std::size_t>(length);
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
