#include "editor/views/EditorScrollBar.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

namespace tavrel {

EditorScrollBar::EditorScrollBar(const ViewTheme& theme, QWidget* parent)
    : QScrollBar(Qt::Vertical, parent), theme_(theme)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
    setFixedWidth(thickness);
}

void EditorScrollBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(theme_.background));
    if (maximum() <= minimum())
        return;
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect thumb =
        style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    QColor color = QColor::fromRgb(theme_.gutter);
    color.setAlphaF(isSliderDown() ? 0.9F : 0.5F);
    painter.fillRect(thumb.adjusted(3, 2, -3, -2), color);
}

}  // namespace tavrel
