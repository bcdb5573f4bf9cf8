#pragma once

#include <vector>

namespace tavrel {

/// The columns, from 0, at which a tab ends.
class TerminalTabStops {
public:
    explicit TerminalTabStops(int columns) { reset(columns); }

    /// Every eighth column but the first; none where there are fewer than nine.
    void reset(int columns)
    {
        isStop_.assign(static_cast<std::size_t>(columns), false);
        for (std::size_t column = 8; column < isStop_.size(); column += 8)
            isStop_[column] = true;
    }
    // `column` lies on the grid.
    void set(int column) { isStop_[static_cast<std::size_t>(column)] = true; }
    void clear(int column) { isStop_[static_cast<std::size_t>(column)] = false; }
    void clearAll() { isStop_.assign(isStop_.size(), false); }

    /// The first stop behind `column` and before `limit`; else `limit`.
    int next(int column, int limit) const
    {
        int at = column + 1;
        while (at < limit && !isStop_[static_cast<std::size_t>(at)])
            ++at;
        return at < limit ? at : limit;
    }

    /// In order.
    std::vector<int> columns() const
    {
        std::vector<int> columns;
        for (std::size_t column = 0; column < isStop_.size(); ++column)
            if (isStop_[column])
                columns.push_back(static_cast<int>(column));
        return columns;
    }

private:
    std::vector<bool> isStop_;
};

}  // namespace tavrel
