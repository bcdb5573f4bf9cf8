#pragma once

#include <cstdint>

namespace tavrel {

/// Which rows of a terminal are in sight. Rows are absolute: row 0 is the oldest of the history.
///
/// A value. While it follows the output the last rows are in sight; a reader who has scrolled up
/// stays on the same text, also while the oldest rows of a full history are thrown away.
class GridScroll {
public:
    /// The first row in sight.
    std::int64_t top() const { return top_; }
    bool isFollowing() const { return isFollowing_; }
    std::int64_t lastTop() const { return rowCount_ > shownCount_ ? rowCount_ - shownCount_ : 0; }
    std::int64_t shownCount() const { return shownCount_; }

    /// There are `rowCount` rows, of which `shownCount` fit; `droppedCount` rows have been thrown
    /// away at the start of the history since the terminal began.
    void update(std::int64_t rowCount, std::int64_t shownCount, std::int64_t droppedCount);

    /// The user's own scrolling; it decides anew whether the output is followed.
    void scrollTo(std::int64_t top);
    void scrollBy(std::int64_t rows) { scrollTo(top_ + rows); }

    /// Typing brings the end back into sight.
    void follow();

private:
    std::int64_t top_ = 0;
    std::int64_t rowCount_ = 0;
    std::int64_t shownCount_ = 1;
    std::int64_t droppedCount_ = 0;
    bool isFollowing_ = true;
};

}  // namespace tavrel
