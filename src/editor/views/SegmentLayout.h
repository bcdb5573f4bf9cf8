#pragma once

#include "highlight/SyntaxToken.h"

#include <QPointF>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QPainter;

namespace tavrel {

class EditorFont;
struct ViewTheme;

/// Where a row meets a point: the character under it, or the nearest one.
struct RowHit {
    std::size_t start = 0;  // The character, in units from the segment's start.
    std::size_t end = 0;    // Behind it. The same as `start` where the row has no characters.
    double fraction = 0;    // How far across it the point lies, from 0 to 1.

    std::size_t nearestEdge() const { return fraction > 0.5 ? end : start; }
};

/// How wide a row may be.
struct WrapSettings {
    double width = 0;          // In logical pixels; rows are wrapped behind blanks.
    std::size_t tabWidth = 2;  // In columns.
    bool wraps = true;         // False in one-line fields, where a line is one row.

    bool operator==(const WrapSettings&) const = default;
};

/// A stretch of one colour, in units from the segment's start.
struct TokenRun {
    std::size_t start = 0;
    std::size_t end = 0;
    SyntaxToken token = SyntaxToken::foreground;
};

/// A stretch of a row in logical pixels from its left edge.
struct RowSpan {
    double left = 0;
    double right = 0;
};

/// A segment of a line broken into rows. Immutable; offsets are units from the segment's start and
/// are clamped to the row that they are asked of.
class SegmentLayout {
public:
    /// Text of printable ASCII and tabs in a font with columns is laid out by counting, which costs
    /// next to nothing. Everything else is shaped: other scripts, both directions, emoji.
    /// `font` must outlive the layout.
    static std::shared_ptr<const SegmentLayout> make(std::u16string text, const EditorFont& font,
                                                     const WrapSettings& settings);
    virtual ~SegmentLayout() = default;

    const std::u16string& text() const { return text_; }
    std::size_t rowCount() const { return rowStarts_.size(); }
    std::size_t rowStart(std::size_t row) const { return rowStarts_[row]; }
    std::size_t rowEnd(std::size_t row) const
    {
        return row + 1 < rowStarts_.size() ? rowStarts_[row + 1] : text_.size();
    }
    /// The row that shows `offset`: where the text is broken, the one that begins there.
    std::size_t rowAt(std::size_t offset) const;

    /// The left edge of the unit at `offset`; behind the last one, its right edge.
    virtual double xAt(std::size_t row, std::size_t offset) const = 0;
    virtual RowHit hitAt(std::size_t row, double x) const = 0;
    /// What [`start`, `end`) covers of the row, in order from the left.
    virtual std::vector<RowSpan> spans(std::size_t row, std::size_t start,
                                       std::size_t end) const = 0;
    /// Draws what of the row lies between `clip`'s edges. `runs` are in order and without overlap;
    /// units outside of all of them are plain text.
    virtual void paint(QPainter& painter, std::size_t row, QPointF topLeft, RowSpan clip,
                       std::span<const TokenRun> runs, const ViewTheme& theme) const = 0;

    /// About how much memory this object may come to take.
    virtual std::size_t memoryBytes() const
    {
        return sizeof(*this) + text_.size() * sizeof(char16_t) +
               rowStarts_.size() * sizeof(std::uint32_t);
    }

protected:
    explicit SegmentLayout(std::u16string text) : text_(std::move(text)) {}

    std::u16string text_;
    std::vector<std::uint32_t> rowStarts_{0};
};

}  // namespace tavrel
