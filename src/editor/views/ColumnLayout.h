#pragma once

#include "editor/views/SegmentLayout.h"

namespace tavrel {

/// Rows of printable ASCII and tabs in a fixed-pitch font: every position is a multiplication.
class ColumnLayout final : public SegmentLayout {
public:
    /// `text` must be a column text and `font` must have columns.
    ColumnLayout(std::u16string text, const EditorFont& font, const WrapSettings& settings);

    double xAt(std::size_t row, std::size_t offset) const override;
    RowHit hitAt(std::size_t row, double x) const override;
    std::vector<RowSpan> spans(std::size_t row, std::size_t start, std::size_t end) const override;
    void paint(QPainter& painter, std::size_t row, QPointF topLeft, RowSpan clip,
               std::span<const TokenRun> runs, const ViewTheme& theme) const override;

private:
    std::size_t columnAt(std::size_t row, std::size_t offset) const;

    const EditorFont& font_;
    std::size_t tabWidth_;
    bool hasTabs_;
};

}  // namespace tavrel
