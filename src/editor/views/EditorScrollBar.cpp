#include "editor/views/EditorScrollBar.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace tavrel {

EditorScrollBar::EditorScrollBar(const ViewTheme& theme, QWidget* parent)
    : QAbstractSlider(parent), theme_(theme)
{
    setOrientation(Qt::Vertical);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

void EditorScrollBar::setTheme(const ViewTheme& theme)
{
    theme_ = theme;
    update();
}

int EditorScrollBar::thumbLength() const
{
    const double whole = static_cast<double>(maximum()) - minimum() + pageStep();
    const int length = static_cast<int>(height() * (pageStep() / std::max(whole, 1.0)));
    return std::clamp(length, std::min(minimumThumb, height()), height());
}

QRect EditorScrollBar::thumbRect() const
{
    if (maximum() <= minimum())
        return {};
    const double room = height() - thumbLength();
    const double part = (static_cast<double>(sliderPosition()) - minimum()) /
                        (static_cast<double>(maximum()) - minimum());
    return {0, static_cast<int>(room * part), width(), thumbLength()};
}

void EditorScrollBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(theme_.background));
    const QRect thumb = thumbRect();
    if (thumb.isEmpty())
        return;
    QColor color = QColor::fromRgb(theme_.gutter);
    color.setAlphaF(isSliderDown() ? 0.9F : 0.5F);
    painter.fillRect(thumb.adjusted(3, 1, -3, -1), color);
}

void EditorScrollBar::mousePressEvent(QMouseEvent* event)
{
    const QRect thumb = thumbRect();
    if (event->button() != Qt::LeftButton || thumb.isEmpty())
        return;
    const int y = event->position().toPoint().y();
    if (y < thumb.top()) {
        triggerAction(SliderPageStepSub);
    } else if (y > thumb.bottom()) {
        triggerAction(SliderPageStepAdd);
    } else {
        grabOffset_ = y - thumb.top();
        setSliderDown(true);
        update();
    }
}

void EditorScrollBar::mouseMoveEvent(QMouseEvent* event)
{
    if (!isSliderDown())
        return;
    const double room = std::max(height() - thumbLength(), 1);
    const double part = (event->position().y() - grabOffset_) / room;
    const double span = static_cast<double>(maximum()) - minimum();
    setSliderPosition(minimum() + static_cast<int>(span * std::clamp(part, 0.0, 1.0)));
}

void EditorScrollBar::mouseReleaseEvent(QMouseEvent*)
{
    setSliderDown(false);
    update();
}

}  // namespace tavrel
