#include "terminal/ControlSequenceParameters.h"

#include "terminal/GraphicRendition.h"

#include <algorithm>

namespace tavrel {

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
