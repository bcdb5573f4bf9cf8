#pragma once

#include <cstddef>
#include <vector>

namespace tavrel {

/// The modes of a control sequence that lists more of them than anyone keeps: a short list that has
/// the same effect as the whole one, when each of its modes is set, or each is reset, in order.
class ModeList {
public:
    /// Modes that nothing knows are dropped.
    void append(int mode);
    const std::vector<int>& modes() const { return modes_; }

private:
    // At most five that are there once, one switch of screens, and three beside the cursor's on
    // either side of it: see `append`.
    std::vector<int> modes_;
    // Where the modes of the cursor behind the switch of screens begin, or all of them.
    std::ptrdiff_t segment_ = 0;
    bool hasSwitched_ = false;
};

}  // namespace tavrel
