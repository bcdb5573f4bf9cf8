#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tavrel {

/// A question that stops the user before text is lost. The buttons stand in this order, and the
/// first is the one that Return presses.
struct EditorPaneAlert {
    std::u16string message;
    std::u16string information;
    std::vector<std::u16string> buttons;
    std::size_t escapeButton = 0;  // Which of them Escape and closing the window press, from 0.
};

}  // namespace tavrel
