#pragma once

#include "editor/views/ViewTheme.h"

#include <QAbstractSlider>
#include <QWheelEvent>

namespace tavrel {

/// A vertical scroll bar in the editor's colours: a thumb on a plain ground. It is drawn with every
/// scroll, so it is drawn with two rectangles and not by the style.
///
/// A click beside the thumb moves a page, dragging the thumb moves it.
class EditorScrollBar final : public QAbstractSlider {
public:
    EditorScrollBar(const ViewTheme& theme, QWidget* parent);

    void setTheme(const ViewTheme& theme);

    static constexpr int thickness = 14;

    /// Where the thumb stands; empty when there is nothing to scroll.
    QRect thumbRect() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    static constexpr int minimumThumb = 24;

    int thumbLength() const;

    ViewTheme theme_;
    int grabOffset_ = 0;  // From the thumb's top to the mouse that holds it.
};

}  // namespace tavrel
