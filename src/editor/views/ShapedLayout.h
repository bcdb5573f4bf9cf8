#pragma once

#include "editor/views/SegmentLayout.h"

#include <QTextLayout>

#include <memory>
#include <vector>

namespace tavrel {

/// Rows of any text, shaped by the toolkit. Lines run from left to right as a whole; what is
/// written from right to left stands reordered within its row.
class ShapedLayout final : public SegmentLayout {
public:
    ShapedLayout(std::u16string text, const EditorFont& font, const WrapSettings& settings);
    ~ShapedLayout() override;

    double xAt(std::size_t row, std::size_t offset) const override;
    RowHit hitAt(std::size_t row, double x) const override;
    std::vector<RowSpan> spans(std::size_t row, std::size_t start, std::size_t end) const override;
    void paint(QPainter& painter, std::size_t row, QPointF topLeft, RowSpan clip,
               std::span<const TokenRun> runs, const ViewTheme& theme) const override;
    std::size_t memoryBytes() const override;

private:
    // A row with the layout whose only line is that row; its text may go on behind it.
    struct MeasuredRow {
        std::size_t length = 0;
        std::unique_ptr<QTextLayout> layout;
    };

    std::unique_ptr<QTextLayout> shape(std::size_t start, std::size_t length) const;
    MeasuredRow measure(std::size_t start, std::size_t limit, std::size_t columns) const;
    MeasuredRow rowFrom(std::size_t start, std::size_t columns) const;
    std::size_t breakBefore(std::size_t start, std::size_t fits) const;
    const QTextLayout& rowLayout(std::size_t row) const;

    const EditorFont& font_;
    WrapSettings settings_;
    // Each row is shaped by itself: where measuring has not done it, when it is first asked for.
    mutable std::vector<std::unique_ptr<QTextLayout>> rows_;
};

}  // namespace tavrel
