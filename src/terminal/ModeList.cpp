#include "terminal/ModeList.h"

#include <algorithm>

namespace tavrel {

void ModeList::append(int mode)
{
    switch (mode) {
    case 1:
    case 4:
    case 7:
    case 25:
    case 2004:
        // These only take the value, so once is as good as often, and their place does not matter.
        if (std::find(modes_.begin(), modes_.begin() + segment_, mode) ==
            modes_.begin() + segment_) {
            modes_.insert(modes_.begin(), mode);
            ++segment_;
        }
        break;
    case 47:
    case 1047:
    case 1049:
        // On the screen that the first one leads to, the others of the list do nothing.
        if (!hasSwitched_) {
            modes_.push_back(mode);
            segment_ = static_cast<std::ptrdiff_t>(modes_.size());
            hasSwitched_ = true;
        }
        break;
    case 6:
    case 1048:
        // One sends the cursor home, the other keeps it or brings it back. Twice the same is once,
        // and of any row of them the last three leave the cursor and what is kept of it alike.
        if (static_cast<std::ptrdiff_t>(modes_.size()) > segment_ && modes_.back() == mode)
            break;
        modes_.push_back(mode);
        if (static_cast<std::ptrdiff_t>(modes_.size()) > segment_ + 3)
            modes_.erase(modes_.begin() + segment_);
        break;
    default:
        break;
    }
}

}  // namespace tavrel
