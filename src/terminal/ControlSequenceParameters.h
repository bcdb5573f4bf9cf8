#pragma once

#include "terminal/ModeList.h"
#include "terminal/TerminalStyle.h"

#include <array>
#include <cstddef>
#include <cstdint>
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

}  // namespace tavrel
