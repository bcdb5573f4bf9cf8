#pragma once

#include "editor/RowLayout.h"
#include "editor/TextSnapshot.h"
#include "editor/views/LineSegment.h"
#include "editor/views/SegmentCache.h"
#include "editor/views/SegmentLayout.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace tavrel {

class EditorFont;

/// One row of the text as it is shown. A value that stays readable when the text goes on changing.
struct TextRow {
    LineSegment segment;
    std::shared_ptr<const SegmentLayout> layout;
    std::size_t index = 0;  // In the layout.

    std::size_t start() const { return segment.start + layout->rowStart(index); }
    /// Where the next row starts: behind the terminator, if the row has one.
    std::size_t end() const { return isLastOfSegment() ? segment.nextStart : contentEnd(); }
    std::size_t contentEnd() const { return segment.start + layout->rowEnd(index); }
    bool isLastOfSegment() const { return index + 1 == layout->rowCount(); }
    bool endsLine() const { return isLastOfSegment() && segment.isLastOfLine; }
    bool startsLine() const { return index == 0 && segment.startsLine(); }
    TextRange range() const { return {start(), end() - start()}; }

    /// The left edge of the unit at `location`, which is clamped to the row.
    double xAt(std::size_t location) const;
};

/// The rows of a text, laid out where they are asked for and nowhere else. Finding a row costs
/// O(log n) and the layout of at most one segment, however long the text or the line.
class ViewRows final : public RowLayout {
public:
    /// `font` must outlive this object or be replaced first.
    explicit ViewRows(const EditorFont& font) : font_(&font) {}

    void setText(TextSnapshot text);
    /// Another state of the same text: what `range` held before is now `newLength` units long.
    void replaceText(TextSnapshot text, TextRange range, std::size_t newLength);
    /// The same text in other colours.
    void setRecolouredText(TextSnapshot text) { text_ = std::move(text); }
    void setFont(const EditorFont& font);
    void setWrap(const WrapSettings& wrap);
    void setRowsPerPage(std::size_t rows) { rowsPerPage_ = rows; }

    const TextSnapshot& text() const { return text_; }
    const WrapSettings& wrap() const { return wrap_; }

    TextRow row(std::size_t location) const;
    std::optional<TextRow> rowAfter(const TextRow& row) const;
    std::optional<TextRow> rowBefore(const TextRow& row) const;

    /// A measure of how far down the text `location` stands, in rows, without laying anything out:
    /// the lines before it and a row for every `columns` units. Grows with the location. O(log n).
    std::size_t estimate(std::size_t location) const;
    /// The first location whose estimate is at least `estimate`. O(log² n).
    std::size_t locationOfEstimate(std::size_t estimate) const;

    // RowLayout
    TextRange rowAt(std::size_t location) const override { return row(location).range(); }
    double xAt(std::size_t location) const override { return row(location).xAt(location); }
    std::size_t locationAt(TextRange row, double x) const override;
    std::size_t rowsPerPage() const override { return rowsPerPage_; }

private:
    TextSnapshot text_;
    const EditorFont* font_;
    WrapSettings wrap_;
    std::size_t rowsPerPage_ = 1;
    mutable SegmentCache cache_;
};

}  // namespace tavrel
