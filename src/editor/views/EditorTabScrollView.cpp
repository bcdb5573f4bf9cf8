#include "editor/views/EditorTabScrollView.h"

#include <QApplication>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

constexpr double anglePerWheelStep = 120;
constexpr double pixelsPerLine = 16;

// The movement of the wheel in pixels. A wheel with steps counts lines, finer devices count pixels.
QPointF wheelMovement(const QWheelEvent& event)
{
    if (!event.pixelDelta().isNull())
        return event.pixelDelta();
    return QPointF(event.angleDelta()) / anglePerWheelStep * QApplication::wheelScrollLines() *
           pixelsPerLine;
}

}  // namespace

EditorTabScrollView::EditorTabScrollView(const ViewTheme& theme, QWidget* parent)
    : QWidget(parent), theme_(theme)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

EditorTabDragView* EditorTabScrollView::makeTab()
{
    auto* view = new EditorTabDragView(this);
    view->didSelect = [this](int index) {
        if (didSelect)
            didSelect(index);
    };
    view->didClose = [this](int index) {
        if (didClose)
            didClose(index);
    };
    view->didStartDrag = [this](int index, QPoint grip) {
        if (didStartDrag)
            didStartDrag(index, grip);
    };
    view->setTabIndex(static_cast<int>(views_.size()));
    view->setVisible(true);
    return view;
}

void EditorTabScrollView::setTabs(Tabs tabs)
{
    if (tabs == tabs_)
        return;
    tabs_ = std::move(tabs);
    while (views_.size() > tabs_.titles.size()) {
        views_.back()->hide();
        views_.back()->deleteLater();  // It may be the one whose click is being handled.
        views_.pop_back();
    }
    while (views_.size() < tabs_.titles.size())
        views_.push_back(makeTab());
    showFaces();
    arrange();
    showActiveTab();
}

EditorTabDragView::Face EditorTabScrollView::faceOf(std::size_t index) const
{
    return {QString::fromStdU16String(tabs_.titles[index]), index == tabs_.activeIndex,
            index == tabs_.activeIndex && isProminent_, !tabs_.isLoneEmptyTab};
}

void EditorTabScrollView::showFaces()
{
    for (std::size_t i = 0; i < views_.size(); ++i) {
        if (const EditorTabDragView::Face face = faceOf(i); face != views_[i]->face())
            views_[i]->setFace(face, theme_);
    }
}

void EditorTabScrollView::setProminent(bool isProminent)
{
    isProminent_ = isProminent;
    showFaces();
}

void EditorTabScrollView::setTheme(const ViewTheme& theme)
{
    theme_ = theme;
    for (EditorTabDragView* view : views_)
        view->setFace(view->face(), theme_);
    update();
}

double EditorTabScrollView::contentWidth() const
{
    double width = 2.0 * margin;
    for (const EditorTabDragView* view : views_)
        width += view->preferredWidth();
    return width + tabSpacing * std::max<double>(static_cast<double>(views_.size()) - 1, 0);
}

void EditorTabScrollView::arrange()
{
    offset_ = std::clamp(offset_, 0.0, std::max(contentWidth() - width(), 0.0));
    const int top = (height() - EditorTabDragView::tabHeight) / 2;
    int left = margin - static_cast<int>(std::round(offset_));
    for (EditorTabDragView* view : views_) {
        view->setGeometry(left, top, view->preferredWidth(), EditorTabDragView::tabHeight);
        left += view->preferredWidth() + tabSpacing;
    }
}

void EditorTabScrollView::setScrollOffset(double offset)
{
    offset_ = offset;
    arrange();
}

void EditorTabScrollView::showActiveTab()
{
    if (tabs_.activeIndex >= views_.size())
        return;
    const QRect tab = views_[tabs_.activeIndex]->geometry();
    // Its start before its end where there is no room for both.
    const int beyond = std::max(tab.right() + 1 + margin - width(), 0);
    const double toRight = offset_ + beyond;
    const double leftEdge = tab.left() + offset_ - margin;
    setScrollOffset(std::min(toRight, leftEdge));
}

void EditorTabScrollView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(theme_.panelBackground));
}

void EditorTabScrollView::resizeEvent(QResizeEvent*)
{
    arrange();
    showActiveTab();
}

void EditorTabScrollView::wheelEvent(QWheelEvent* event)
{
    const QPointF moved = wheelMovement(*event);
    const double larger = std::abs(moved.x()) > std::abs(moved.y()) ? moved.x() : moved.y();
    setScrollOffset(offset_ - larger);
    event->accept();
}

}  // namespace tavrel
