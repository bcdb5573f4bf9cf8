#pragma once

#include "terminal/StoredRow.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>

namespace tavrel {

/// The rows that have left the top of the screen, oldest first, in pages of 256 rows.
///
/// Adding a row, dropping the oldest and taking the newest back cost no more than the row. Pages
/// that become empty are used again, and pages of nothing but the same blanks are one page that is
/// held several times. A row has at most 65,535 cells.
class TerminalHistory {
public:
    std::size_t rowCount() const { return rowCount_; }
    /// `index` counts from the oldest row and lies below `rowCount()`. Valid until a change.
    StoredRow row(std::size_t index) const;
    /// The memory that the rows take, spare room included.
    std::size_t memoryBytes() const;

    /// Appends `row`, of a grid that is `columns` wide.
    void append(TerminalScreenRow& row, int columns);
    /// Appends `count` rows of `columns` blanks. Costs no more than a pointer for each 256 of them.
    void appendBlankRows(std::size_t count, TerminalStyle style, int columns);
    /// Moves the newest row into `row`; there must be one.
    void takeNewest(TerminalScreenRow& row, int columns);
    /// Removes the `count` oldest rows; there must be as many.
    void dropOldest(std::size_t count);
    /// Cuts every row to `columns` cells.
    void cut(int columns);

private:
    static constexpr std::size_t pageRows = 256;

    struct Page {
        std::array<StoredRow::Header, pageRows> headers;
        std::size_t rowCount = 0;
        std::unique_ptr<std::uint8_t[]> bytes;
        std::size_t size = 0;
        std::size_t capacity = 0;

        void reserve(std::size_t newCapacity);
    };

    // The newest page, with room for a row of `size` bytes.
    Page& pageFor(std::size_t size);
    std::shared_ptr<Page> emptyPage();
    static std::shared_ptr<Page> copyOf(const Page& page);
    void finishPage(Page& page);

    // All but the newest are full; none is empty. One that is held several times is full of blanks,
    // and is copied before a row is taken from it.
    std::deque<std::shared_ptr<Page>> pages_;
    std::shared_ptr<Page> spare_;
    std::size_t firstRow_ = 0;  // The place of the oldest row in the first page.
    std::size_t rowCount_ = 0;
    std::size_t lastPageSize_ = 0;  // The bytes of the page filled last, a guess for the next.
};

}  // namespace tavrel
