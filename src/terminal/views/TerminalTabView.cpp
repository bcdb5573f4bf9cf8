#include "terminal/views/TerminalTabView.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace tavrel {

namespace {

constexpr int cornerRadius = 4;
constexpr int spacing = 3;
constexpr int insetTop = 2;
constexpr int insetLeft = 6;
constexpr int insetBottom = 2;
constexpr int insetRight = 8;
constexpr int closeSize = 10;
constexpr int titleSize = 11;
constexpr float closeAlpha = 0.7F;

QFont fontOf(const QWidget& widget, int size, QFont::Weight weight)
{
    QFont font = widget.font();
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

}  // namespace

TerminalTabCloseButton::TerminalTabCloseButton(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setText(QStringLiteral("x"));
    setFont(fontOf(*this, closeSize, QFont::DemiBold));
    setAccessibleName(QStringLiteral("Close Terminal"));
    connect(this, &QAbstractButton::clicked, this, [this] {
        if (onClose)
            onClose();
    });
}

void TerminalTabCloseButton::setTint(const QColor& tint)
{
    tint_ = tint;
    tint_.setAlphaF(closeAlpha);
    update();
}

QSize TerminalTabCloseButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 4, metrics.height()};
}

void TerminalTabCloseButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QColor color = tint_;
    if (isDown())
        color.setAlphaF(1);
    painter.setPen(color);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

TerminalTabView::TerminalTabView(const QString& title, bool isActive, const Colors& colors,
                                 QWidget* parent)
    : QWidget(parent), title_(title), isActive_(isActive), colors_(colors),
      closeButton_(new TerminalTabCloseButton(this))
{
    setFocusPolicy(Qt::NoFocus);
    setFont(fontOf(*this, titleSize, QFont::Medium));
    setAccessibleName(title);
    closeButton_->setTint(colors.text);
    resize(sizeHint());
}

QSize TerminalTabView::sizeHint() const
{
    const QFontMetrics metrics(font());
    const QSize close = closeButton_->sizeHint();
    return {insetLeft + close.width() + spacing + metrics.horizontalAdvance(title_) + insetRight,
            insetTop + std::max(close.height(), metrics.height()) + insetBottom};
}

void TerminalTabView::resizeEvent(QResizeEvent*)
{
    const QSize close = closeButton_->sizeHint();
    closeButton_->setGeometry(insetLeft, insetTop, close.width(),
                              height() - insetTop - insetBottom);
}

void TerminalTabView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (isActive_) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors_.selection);
        painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
    }
    painter.setPen(colors_.text);
    const int left = closeButton_->geometry().right() + 1 + spacing;
    const QRect box(left, insetTop, width() - left - insetRight, height() - insetTop - insetBottom);
    const QString shown = fontMetrics().elidedText(title_, Qt::ElideRight, box.width());
    painter.drawText(box, Qt::AlignLeft | Qt::AlignVCenter, shown);
}

void TerminalTabView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && onSelect)
        onSelect();
    else if (event->button() == Qt::RightButton && onRename)
        onRename();
}

}  // namespace tavrel
