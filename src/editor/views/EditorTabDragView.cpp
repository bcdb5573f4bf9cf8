#include "editor/views/EditorTabDragView.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

constexpr int titlePixels = 11;
constexpr int closePixels = 10;
constexpr double titleLeft = EditorTabCloseMark::left + EditorTabCloseMark::hitSize + 2;
constexpr double titleLeftAlone = 12;
constexpr double titleRight = 12;

QFont systemFont(int pixels, QFont::Weight weight)
{
    QFont font = QApplication::font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

// A file's name is no markup.
QString toolTipOf(const QString& title)
{
    return Qt::mightBeRichText(title) ? Qt::convertFromPlainText(title) : title;
}

QRgb mixed(QRgb a, QRgb b)
{
    return qRgb((qRed(a) + qRed(b)) / 2, (qGreen(a) + qGreen(b)) / 2, (qBlue(a) + qBlue(b)) / 2);
}

}  // namespace

// --- The close mark

EditorTabCloseMark::EditorTabCloseMark(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    resize(static_cast<int>(hitSize), static_cast<int>(hitSize));
}

void EditorTabCloseMark::setColors(QRgb mark, QRgb ground)
{
    mark_ = mark;
    ground_ = ground;
    update();
}

void EditorTabCloseMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double margin = (hitSize - markSize) / 2;
    const QRectF area(margin, margin, markSize, markSize);
    if (underMouse()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgb(ground_));
        painter.drawEllipse(area);
    }
    painter.setPen(QColor::fromRgb(mark_));
    painter.setFont(systemFont(closePixels, QFont::DemiBold));
    painter.drawText(area, Qt::AlignCenter, QStringLiteral("\u00D7"));
}

void EditorTabCloseMark::enterEvent(QEnterEvent*)
{
    update();
}

void EditorTabCloseMark::leaveEvent(QEvent*)
{
    update();
}

// --- The tab

EditorTabDragView::EditorTabDragView(QWidget* parent)
    : QWidget(parent), closeMark_(new EditorTabCloseMark(this))
{
    setFocusPolicy(Qt::NoFocus);
    closeMark_->move(static_cast<int>(EditorTabCloseMark::left),
                     (tabHeight - closeMark_->height()) / 2);
    connect(closeMark_, &QAbstractButton::clicked, this, [this] {
        if (didClose)
            didClose(tabIndex_);
    });
}

QFont EditorTabDragView::titleFont(bool isActive)
{
    return systemFont(titlePixels, isActive ? QFont::DemiBold : QFont::Normal);
}

void EditorTabDragView::setFace(const Face& face, const ViewTheme& theme)
{
    const bool isOther = face != face_ || shownTitle_.isEmpty();
    face_ = face;
    titleColor_ = face.isActive ? theme.foreground : mixed(theme.foreground, theme.gutter);
    ground_ = face.isProminent ? theme.selection
              : face.isActive  ? mixed(theme.selection, theme.background)
                               : theme.background;
    closeMark_->setVisible(face.showsCloseButton);
    closeMark_->setColors(titleColor_, mixed(ground_, theme.gutter));
    if (isOther)
        measure();
    update();
}

void EditorTabDragView::measure()
{
    // What is active is wider, and the others must not move when another one becomes it.
    const QFontMetricsF metrics(titleFont(true));
    const double left = face_.showsCloseButton ? titleLeft : titleLeftAlone;
    const double room = maximumWidth - left - titleRight;
    shownTitle_ = metrics.elidedText(face_.title, Qt::ElideMiddle, room);
    const double width = left + metrics.horizontalAdvance(shownTitle_) + titleRight;
    preferredWidth_ = std::min(static_cast<int>(std::ceil(width)), maximumWidth);
    setAccessibleName(face_.title);
    setToolTip(shownTitle_ == face_.title ? QString() : toolTipOf(face_.title));
    closeMark_->setAccessibleName(QStringLiteral("Close ") + face_.title);
}

void EditorTabDragView::setHiddenForDrag(bool isHidden)
{
    isHiddenForDrag_ = isHidden;
    closeMark_->setVisible(!isHidden && face_.showsCloseButton);
    update();
}

void EditorTabDragView::paintEvent(QPaintEvent*)
{
    if (isHiddenForDrag_)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(ground_));
    painter.drawRoundedRect(QRectF(rect()), cornerRadius, cornerRadius);
    painter.setPen(QColor::fromRgb(titleColor_));
    painter.setFont(titleFont(face_.isActive));
    const double left = face_.showsCloseButton ? titleLeft : titleLeftAlone;
    painter.drawText(QRectF(left, 0, width() - left, height()),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shownTitle_);
}

void EditorTabDragView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    mouseDownPoint_ = event->position();
    if (didSelect)
        didSelect(tabIndex_);
}

void EditorTabDragView::mouseMoveEvent(QMouseEvent* event)
{
    if (!mouseDownPoint_ || !(event->buttons() & Qt::LeftButton))
        return;
    const QPointF way = event->position() - *mouseDownPoint_;
    if (std::hypot(way.x(), way.y()) < dragDistance)
        return;
    const QPoint grip = mouseDownPoint_->toPoint();
    mouseDownPoint_.reset();
    if (didStartDrag)
        didStartDrag(tabIndex_, grip);
}

void EditorTabDragView::mouseReleaseEvent(QMouseEvent*)
{
    mouseDownPoint_.reset();
}

}  // namespace tavrel
