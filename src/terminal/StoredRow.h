#pragma once

#include "terminal/TerminalScreenRow.h"

#include <cstdint>

namespace tavrel {

/// A row of the history in its small form. Its cells from `length()` on are default cells.
///
/// Blanks at the end that look like the default cell are left out, characters take one, two or four
/// bytes each by the largest among them, and styles are runs, none at all where every cell has the
/// default style. Lines of a log take about one byte a character so.
class StoredRow {
public:
    /// What a row needs beside its bytes.
    struct Header {
        std::uint32_t offset;        // Where its bytes begin in their page.
        std::uint16_t length;        // Cells; cutting a row lowers it and leaves the bytes alone.
        std::uint8_t characterSize;  // Bytes of a character; 0 where all are blanks.
        bool hasRuns;

        /// Whether it is one of several rows of blanks that may share their bytes.
        bool isBlank() const { return characterSize == 0 && hasRuns; }
    };

    StoredRow(Header header, const std::uint8_t* bytes) : header_(header), bytes_(bytes) {}

    int length() const { return header_.length; }
    // For a column below `length()`. The style costs O(log runs).

    char32_t character(int column) const;
    TerminalStyle style(int column) const { return runStyle(runAt(column)); }
    TerminalCell cell(int column) const { return style(column).cell(character(column)); }
    /// The next column where another style begins, limited to `length()`.
    int runEnd(int column) const;
    /// Puts the cells into `row`, which has the width `columns`.
    void restore(TerminalScreenRow& row, int columns) const;

    // How a row is made: `encodedSize` bytes of room, at most, are filled by `encode`.

    /// The row without the default cells at its end, in a form that `encode` takes.
    struct Source {
        std::span<const char32_t> characters;
        std::span<const TerminalStyle> styles;
    };
    static Source sourceOf(const TerminalScreenRow& row);
    /// The most bytes that `encode` may need.
    static std::size_t mostBytes(const Source& source);
    /// Writes `source` to `bytes` and `header`, apart from the offset; gives the bytes used.
    static std::size_t encode(const Source& source, Header& header, std::uint8_t* bytes);
    /// The same for `length` blanks of one style; it takes `blankBytes` bytes.
    static void encodeBlanks(int length, TerminalStyle style, Header& header, std::uint8_t* bytes);
    static constexpr std::size_t blankBytes = 2 + 2 + 8;

private:
    int runCount() const;
    int runStart(int run) const;
    int runAt(int column) const;
    TerminalStyle runStyle(int run) const;
    const std::uint8_t* characterBytes() const;

    Header header_;
    // The number of runs, where each starts, their styles; then the characters.
    const std::uint8_t* bytes_;
};

}  // namespace tavrel
