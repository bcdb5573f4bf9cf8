#include "terminal/ControlSequenceParameters.h"

#include "terminal/GraphicRendition.h"

#include <algorithm>
#include <limits>

namespace tavrel {

void ControlSequenceParameters::begin(TerminalStyle pen)
{
    pen_ = pen;
    count_ = 0;
    value_ = 0;
    isBroken_ = false;
    isEmpty_ = true;
    if (overflow_)
        overflow_.reset();
    modesDone_ = 0;
}

const std::uint8_t* ControlSequenceParameters::read(const std::uint8_t* at, const std::uint8_t* end)
{
    constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    const std::uint8_t* const begin = at;
    std::uint64_t value = value_;
    for (; at < end; ++at) {
        const unsigned digit = *at - unsigned{'0'};
        if (digit < 10) {
            if (value > (most - digit) / 10) [[unlikely]] {
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

void ControlSequenceParameters::endParameter()
{
    list_[count_++] =
        isBroken_ ? 0 : static_cast<std::int32_t>(std::min<std::uint64_t>(value_, mostValue));
    value_ = 0;
    isBroken_ = false;
    if (count_ == keptCount)
        makeRoom();
}

void ControlSequenceParameters::makeRoom()
{
    if (!overflow_)
        overflow_ = Overflow{list_[0], list_[1], pen_, {}};
    for (std::size_t i = modesDone_; i < count_; ++i)
        overflow_->modes.append(list_[i]);
    const std::size_t done = applyGraphicRendition(list_, RenditionEnd::isOpen, overflow_->pen);
    std::copy(list_.begin() + static_cast<std::ptrdiff_t>(done), list_.end(), list_.begin());
    count_ -= done;
    modesDone_ = count_;
}

std::int32_t ControlSequenceParameters::second() const
{
    if (overflow_)
        return overflow_->second;
    return count_ > 1 ? list_[1] : 0;
}

TerminalStyle ControlSequenceParameters::rendition() const
{
    TerminalStyle pen = overflow_ ? overflow_->pen : pen_;
    applyGraphicRendition({list_.data(), count_}, RenditionEnd::isThere, pen);
    return pen;
}

std::vector<std::int32_t> ControlSequenceParameters::modes() const
{
    if (!overflow_)
        return {list_.begin(), list_.begin() + static_cast<std::ptrdiff_t>(count_)};
    ModeList modes = overflow_->modes;
    for (std::size_t i = modesDone_; i < count_; ++i)
        modes.append(list_[i]);
    return modes.modes();
}

}  // namespace tavrel
