#pragma once

#include "editor/views/TavrelTextView.h"
#include "git/GitLineDiff.h"

#include <QFont>
#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tavrel {

/// The numbers of the lines at the left of a text view, counted from 1, and the marks of what
/// differs from the last commit. A line ends at LF here, so a wrapped line has one number, at its
/// first row.
class EditorLineNumberGutterView final : public QWidget {
public:
    /// The text view is borrowed and outlives the gutter.
    EditorLineNumberGutterView(TavrelTextView& textView, QWidget* parent);

    /// The width that the numbers of the text take, in logical pixels.
    int preferredWidth() const;
    /// Reads the rows of the text view and draws what of the gutter has changed.
    void refresh();
    /// The same after the picture has moved by `dy`.
    void scrolled(int dy);
    /// The marks from now on; none where nothing is known.
    void setLineDiff(std::optional<GitLineDiff> diff);

    /// A number as drawn, and where its row begins.
    struct Number {
        std::size_t value = 0;
        double top = 0;
        bool operator==(const Number&) const = default;
        auto operator<=>(const Number&) const = default;
    };
    /// From the top.
    const std::vector<Number>& numbers() const { return numbers_; }

    enum class MarkKind { added, modified, removed };
    /// A mark as drawn: a bar beside a row, or a short line where lines are missing.
    struct Mark {
        double top = 0;
        MarkKind kind = MarkKind::added;
        bool operator==(const Mark&) const = default;
        auto operator<=>(const Mark&) const = default;
    };
    /// From the top.
    const std::vector<Mark>& marks() const { return marks_; }
    /// What a mark covers.
    QRectF markRect(const Mark& mark) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    static constexpr int rightMargin = 9;
    static constexpr int minimumWidth = 52;

    void readRows();
    void addMarks(const VisibleRow& row, std::int64_t line, bool isFirstOfLine);
    void paintNumber(QPainter& painter, const Number& number) const;

    TavrelTextView& textView_;
    std::optional<GitLineDiff> lineDiff_;
    std::vector<Number> numbers_;
    std::vector<Mark> marks_;
};

}  // namespace tavrel
