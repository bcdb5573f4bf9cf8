#include "terminal/views/TerminalGridView.h"

#include "platform/Pasteboard.h"
#include "terminal/TerminalEmulator.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QMenu>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

constexpr double rowsPerWheelStep = 3;
constexpr double anglePerWheelStep = 120;
constexpr int autoscrollMilliseconds = 30;
constexpr double clickSlop = 5;

}  // namespace

void TerminalGridView::wheelEvent(QWheelEvent* event)
{
    const double rows = event->pixelDelta().isNull()
                            ? event->angleDelta().y() / anglePerWheelStep * rowsPerWheelStep
                            : event->pixelDelta().y() / font_->cellHeight();
    wheelRest_ -= rows;
    const double whole = std::trunc(wheelRest_);
    wheelRest_ -= whole;
    if (whole != 0)
        scrollBy(static_cast<std::int64_t>(whole));
    event->accept();
}

void TerminalGridView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const bool isNear = (event->position() - clickPoint_).manhattanLength() < clickSlop;
    const auto interval =
        static_cast<ulong>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    const bool isSoon = event->timestamp() - clickTime_ <= interval;
    clickCount_ = clickCount_ >= 2 && isNear && isSoon ? clickCount_ + 1 : 1;
    press(*event);
}

void TerminalGridView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    clickCount_ = clickCount_ >= 3 ? clickCount_ + 1 : 2;
    press(*event);
}

bool TerminalGridView::isOpeningClick(const QMouseEvent& event) const
{
    return event.modifiers().testFlag(
        appearance_.commandKey == CommandKey::ctrl ? Qt::ControlModifier : Qt::MetaModifier);
}

void TerminalGridView::press(const QMouseEvent& event)
{
    clickTime_ = event.timestamp();
    clickPoint_ = event.position();
    const GridPosition position = positionAt(event.position());
    if (emulator_ && isOpeningClick(event)) {
        if (const auto link = linkAt(*emulator_, position)) {
            if (openLink)
                openLink(*link);
            return;
        }
    }
    if (!preedit_.isEmpty())
        QGuiApplication::inputMethod()->commit();
    setFocus(Qt::MouseFocusReason);
    dragAnchor_.reset();
    if (!emulator_)
        return;
    if (clickCount_ >= 3) {
        setSelection(rowSelection(*emulator_, position.row));
    } else if (clickCount_ == 2) {
        setSelection(wordSelection(*emulator_, position, appearance_.wordCharacters));
    } else {
        clearSelection();
        dragAnchor_ = clampedPosition(*emulator_, position);
        droppedRows_ = static_cast<std::int64_t>(emulator_->droppedRowCount());
    }
}

void TerminalGridView::mouseMoveEvent(QMouseEvent* event)
{
    if (!dragAnchor_)
        return;
    dragPoint_ = event->position();
    dragTo(dragPoint_);
    const bool isOutside = dragPoint_.y() < 0 || dragPoint_.y() >= height();
    if (isOutside && !autoscrollTimer_.isActive())
        autoscrollTimer_.start(autoscrollMilliseconds, this);
    else if (!isOutside)
        autoscrollTimer_.stop();
}

void TerminalGridView::dragTo(QPointF point)
{
    if (!emulator_ || !dragAnchor_)
        return;
    point.setY(std::clamp(point.y(), 0.0, std::max(height() - 1.0, 0.0)));
    setSelection(selectionBetween(*dragAnchor_, clampedPosition(*emulator_, positionAt(point))));
}

void TerminalGridView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        endDrag();
}

void TerminalGridView::hideEvent(QHideEvent*)
{
    endDrag();  // Nobody will hear of the button's release.
}

void TerminalGridView::endDrag()
{
    dragAnchor_.reset();
    autoscrollTimer_.stop();
}

void TerminalGridView::autoscroll()
{
    // The farther the mouse is outside, the faster: a row for each row's height.
    const double beyond = dragPoint_.y() < 0 ? dragPoint_.y() : dragPoint_.y() - height() + 1;
    const double rows = std::clamp(beyond / font_->cellHeight(), -20.0, 20.0);
    scrollBy(static_cast<std::int64_t>(rows < 0 ? std::floor(rows) : std::ceil(rows)));
    dragTo(dragPoint_);
}

void TerminalGridView::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto link = emulator_ && event->reason() == QContextMenuEvent::Mouse
                          ? linkAt(*emulator_, positionAt(event->pos()))
                          : std::nullopt;
    if (link) {
        menu->addAction(QStringLiteral("Open Link"), this, [this, address = *link] {
            if (openLink)
                openLink(address);
        });
        menu->addAction(QStringLiteral("Copy Link"), this,
                        [this, address = *link] { pasteboard_.setContents({address}); });
    } else {
        QAction* copyAction = menu->addAction(QStringLiteral("Copy"), this, [this] { copy(); });
        copyAction->setEnabled(selection_.has_value());
        menu->addAction(QStringLiteral("Paste"), this, [this] { paste(); });
    }
    menu->popup(event->globalPos());
}

}  // namespace tavrel
