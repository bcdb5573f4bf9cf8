#include "editor/views/TavrelTextView.h"

#include "platform/Pasteboard.h"

#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QStyleHints>
#include <QTimerEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavrel {

namespace {

constexpr double rowsPerWheelStep = 3;
constexpr double anglePerWheelStep = 120;
constexpr int autoscrollMilliseconds = 30;
constexpr double clickSlop = 5;

struct ContextItem {
    const char16_t* title;
    const char* command;  // Null for a separator.
};

constexpr ContextItem contextItems[] = {
    {u"Undo", "undo"}, {u"Redo", "redo"},   {u"", nullptr}, {u"Cut", "cut"},
    {u"Copy", "copy"}, {u"Paste", "paste"}, {u"", nullptr}, {u"Select All", "selectAll"},
};

Qt::KeyboardModifier commandModifierOf(CommandKey key)
{
    return key == CommandKey::ctrl ? Qt::ControlModifier : Qt::MetaModifier;
}

Qt::KeyboardModifier controlModifierOf(CommandKey key)
{
    return key == CommandKey::ctrl ? Qt::MetaModifier : Qt::ControlModifier;
}

}  // namespace

void TavrelTextView::wheelEvent(QWheelEvent* event)
{
    double distance = -event->pixelDelta().y();
    if (event->pixelDelta().isNull()) {
        const double steps = event->angleDelta().y() / anglePerWheelStep;
        distance = -steps * rowsPerWheelStep * font_.rowHeight();
    }
    // Only whole pixels move the picture without drawing it anew; what is left waits for the next.
    wheelRest_ += distance;
    const double whole = std::trunc(wheelRest_);
    wheelRest_ -= whole;
    if (whole != 0)
        scrollBy(whole);
    event->accept();
}

void TavrelTextView::mousePressEvent(QMouseEvent* event)
{
    closeCompletions();
    pane_.clearLastActionWasTyping();
    commitPreedit();
    if (event->button() == Qt::RightButton) {
        // A colour takes the place of the menu that would follow.
        hasTakenRightClick_ = pane_.beginColorPicking(offsetAt(event->position()));
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    hasTakenClick_ = handleSpecialClick(*event);
    if (hasTakenClick_)
        return;
    const bool isNear = (event->position() - clickPoint_).manhattanLength() < clickSlop;
    const auto interval =
        static_cast<ulong>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    const bool isSoon = event->timestamp() - clickTime_ <= interval;
    clickCount_ = clickCount_ == 2 && isNear && isSoon ? 3 : 1;
    beginDrag(*event);
}

bool TavrelTextView::handleSpecialClick(const QMouseEvent& event)
{
    const std::size_t location = offsetAt(event.position());
    const bool isCommand = event.modifiers() & commandModifierOf(appearance_.commandKey);
    const bool isControl = event.modifiers() & controlModifierOf(appearance_.commandKey);
    if (isControl && !isCommand)
        return pane_.beginColorPicking(location);
    if (isCommand) {
        if (const std::optional<std::u16string> link = pane_.linkAt(location)) {
            followLink(QString::fromStdU16String(*link));
            return true;
        }
        setFocus(Qt::MouseFocusReason);
        pane_.toggleCursor(location);
        return true;
    }
    const auto keys = event.modifiers() & ~Qt::KeypadModifier;
    return keys == Qt::NoModifier && pane_.clickedAt(location);
}

void TavrelTextView::mouseDoubleClickEvent(QMouseEvent* event)
{
    closeCompletions();
    pane_.clearLastActionWasTyping();
    if (event->button() != Qt::LeftButton)
        return;
    // The second of two clicks that place cursors is a click like the first.
    if (event->modifiers() & commandModifierOf(appearance_.commandKey)) {
        handleSpecialClick(*event);
        return;
    }
    // What the first click opened may stand under the mouse now; the second one was not meant for
    // it.
    if (hasTakenClick_)
        return;
    clickCount_ = 2;
    beginDrag(*event);
}

void TavrelTextView::beginDrag(const QMouseEvent& event)
{
    clickTime_ = event.timestamp();
    clickPoint_ = event.position();
    setFocus(Qt::MouseFocusReason);
    const std::size_t location = offsetAt(event.position());
    const bool isPlain = event.modifiers() == Qt::NoModifier;
    if (clickCount_ == 1 && isPlain && isInSelection(event.position())) {
        // Until the mouse moves away nobody knows whether the text is to be carried off.
        textDragStart_ = event.position();
        return;
    }
    pane_.clearSecondaryCursors();
    const TextSnapshot& text = rows_.text();
    if (clickCount_ == 1 && (event.modifiers() & Qt::ShiftModifier)) {
        if (drag_.range() != pane_.selectedRange())
            drag_ = SelectionDrag::extending(pane_.selectedRange(), location);
        pane_.setSelectedRange(drag_.movedTo(text, location));
    } else {
        const SelectionUnit unit = clickCount_ == 1   ? SelectionUnit::character
                                   : clickCount_ == 2 ? SelectionUnit::word
                                                      : SelectionUnit::line;
        drag_ = SelectionDrag(text, location, unit);
        pane_.setSelectedRange(drag_.range());
    }
    isDragging_ = true;
}

void TavrelTextView::mouseMoveEvent(QMouseEvent* event)
{
    if (textDragStart_) {
        const double way = (event->position() - *textDragStart_).manhattanLength();
        if (way >= QGuiApplication::styleHints()->startDragDistance())
            dragText();
        return;
    }
    if (!isDragging_)
        return;
    dragTo(event->position());
    updateAutoscroll(event->position(), 0);
}

// Scrolls on for as long as the point is nearer to an edge than `margin`, or beyond it.
void TavrelTextView::updateAutoscroll(QPointF point, double margin)
{
    dragPoint_ = point;
    autoscrollMargin_ = margin;
    const bool isBeyond = point.y() < margin || point.y() >= height() - margin;
    if (isBeyond && !autoscrollTimer_.isActive())
        autoscrollTimer_.start(autoscrollMilliseconds, this);
    else if (!isBeyond)
        autoscrollTimer_.stop();
}

void TavrelTextView::dragTo(QPointF point)
{
    point.setY(std::clamp(point.y(), 0.0, std::max(height() - 1.0, 0.0)));
    const TextRange range = drag_.movedTo(rows_.text(), offsetAt(point));
    if (range != pane_.selectedRange())
        pane_.setSelectedRange(range);
}

void TavrelTextView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    isDragging_ = false;
    autoscrollTimer_.stop();
    if (std::exchange(textDragStart_, std::nullopt)) {
        pane_.clearSecondaryCursors();
        drag_ = SelectionDrag(rows_.text(), offsetAt(event->position()), SelectionUnit::character);
        pane_.setSelectedRange(drag_.range());
    }
}

void TavrelTextView::followLink(const QString& address)
{
    const QUrl url(address);
    const QString scheme = url.scheme().toLower();
    if (openLink)
        openLink(url);
    else if (scheme == QLatin1String("http") || scheme == QLatin1String("https"))
        QDesktopServices::openUrl(url);
}

// --- The menu

void TavrelTextView::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    if (isByMouse && std::exchange(hasTakenRightClick_, false))
        return;
    const std::size_t location =
        isByMouse ? offsetAt(event->pos()) : pane_.selectedRange().location;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (const std::optional<std::u16string> link = pane_.linkAt(location))
        addLinkItems(*menu, QString::fromStdU16String(*link));
    for (const ContextItem& item : contextItems) {
        if (!item.command) {
            menu->addSeparator();
            continue;
        }
        menu->addAction(QString::fromUtf16(item.title), this, [this, command = item.command] {
            pane_.runCommand(EditorCommand{command, {}});
        });
    }
    QPoint place = event->globalPos();
    const std::optional<QRectF> cursor = cursorRectAt(location);
    if (!isByMouse && cursor)
        place = mapToGlobal(cursor->bottomLeft().toPoint());
    menu->popup(place);
}

void TavrelTextView::addLinkItems(QMenu& menu, const QString& address)
{
    menu.addAction(QStringLiteral("Open Link"), this, [this, address] { followLink(address); });
    menu.addAction(QStringLiteral("Copy Link"), this, [this, address] {
        pane_.services().pasteboard.setContents({address.toStdU16String(), {}});
    });
    menu.addSeparator();
}

void TavrelTextView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != autoscrollTimer_.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    // The farther the mouse is outside, the faster: a row for each row's height.
    const double top = dragPoint_.y() - autoscrollMargin_;
    const double bottom = dragPoint_.y() - height() + autoscrollMargin_ + 1;
    const double rowCount = std::clamp((top < 0 ? top : bottom) / font_.rowHeight(), -20.0, 20.0);
    scrollBy((rowCount < 0 ? std::floor(rowCount) : std::ceil(rowCount)) * font_.rowHeight());
    if (dropLocation_)
        showDropLocation(offsetAt(dragPoint_));
    else
        dragTo(dragPoint_);
}

}  // namespace tavrel
