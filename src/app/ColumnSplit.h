#pragma once

#include <algorithm>
#include <optional>

namespace tavrel {

/// Where the divider between an editor and the terminal under it stands, in logical pixels from the
/// top of their column: the height of the editor. A value.
class ColumnSplit {
public:
    static constexpr int preferredTerminalHeight = 190;
    static constexpr int dividerThickness = 5;
    /// How far beyond the divider, up and down, the mouse still takes hold of it.
    static constexpr int dividerHitPadding = 6;

    /// In a column of `height`, which may be anything. Until the user has moved the divider the
    /// terminal has its preferred height.
    int position(int height) const
    {
        const int most = std::max(height, 0);
        return std::clamp(chosen_.value_or(height - preferredTerminalHeight), 0, most);
    }

    /// The user has moved the divider; it stays at that distance from the top.
    void moveTo(int position, int height)
    {
        chosen_ = std::clamp(position, 0, std::max(height - dividerThickness, 0));
    }

    std::optional<int> chosen() const { return chosen_; }

private:
    std::optional<int> chosen_;
};

}  // namespace tavrel
