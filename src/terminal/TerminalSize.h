#pragma once

namespace tavrel {

/// The size of a terminal in cells.
struct TerminalSize {
    int columns = 80;
    int rows = 24;

    bool operator==(const TerminalSize&) const = default;
};

}  // namespace tavrel
