#pragma once

#include "editor/views/TavrelTextView.h"

#include <QFont>
#include <QWidget>

#include <cstddef>
#include <vector>

namespace tavrel {

/// The numbers of the lines at the left of a text view, counted from 1. A line ends at LF here, so
/// a wrapped line has one number, at its first row.
class EditorLineNumberGutterView final : public QWidget {
public:
    /// The text view is borrowed and outlives the gutter.
    EditorLineNumberGutterView(TavrelTextView& textView, QWidget* parent);

    /// The width that the numbers of the text take, in logical pixels.
    int preferredWidth() const;
    /// Reads the rows of the text view and draws the numbers that have changed.
    void refresh();
    /// The same after the picture has moved by `dy`.
    void scrolled(int dy);

    /// The numbers as drawn, from the top, and where their rows begin.
    struct Number {
        std::size_t value = 0;
        double top = 0;
        bool operator==(const Number&) const = default;
        auto operator<=>(const Number&) const = default;
    };
    const std::vector<Number>& numbers() const { return numbers_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    static constexpr int rightMargin = 9;
    static constexpr int minimumWidth = 52;

    std::vector<Number> makeNumbers() const;
    void setNumbers(std::vector<Number> numbers);

    TavrelTextView& textView_;
    std::vector<Number> numbers_;
};

}  // namespace tavrel
