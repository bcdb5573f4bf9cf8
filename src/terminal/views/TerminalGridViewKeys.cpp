#include "terminal/views/TerminalGridView.h"

#include "platform/Utf8.h"
#include "platform/qt/KeyEvents.h"
#include "terminal/TerminalEmulator.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

namespace tavrel {

bool TerminalGridView::event(QEvent* event)
{
    // While this view has the focus every key is offered to it first, so neither a menu's shortcut
    // nor the menu bar's own keys (Alt, F10) may take one away. What it does not know comes back
    // to the menus through `menuShortcut`.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    const bool result = QWidget::event(event);
    if (event->type() == QEvent::ScreenChangeInternal && devicePixelRatioF() != font_->scale())
        measureFont();
    return result;
}

bool TerminalGridView::focusNextPrevChild(bool)
{
    return false;
}

bool TerminalGridView::isFirstResponder() const
{
    return window()->focusWidget() == this;
}

CursorKeys TerminalGridView::cursorKeys() const
{
    return emulator_ && emulator_->applicationCursorKeys() ? CursorKeys::application
                                                           : CursorKeys::normal;
}

void TerminalGridView::keyPressEvent(QKeyEvent* event)
{
    event->accept();
    if (isLoneModifier(*event))
        return;
    const KeyEvent key = keyEventFromQt(*event, appearance_.commandKey);
    const KeyRoute route = keyRoute(key, appearance_.commandKey, cursorKeys(), isBoundChord);
    if (route.command && keyCommandHandler && keyCommandHandler(*route.command))
        return;
    if (route.bytes)
        sendTyped(*route.bytes);
    else if (route.command && menuShortcut)
        menuShortcut(*route.command);
}

void TerminalGridView::sendTyped(std::string_view bytes)
{
    clearSelection();
    if (onInput)
        onInput(bytes);
}

void TerminalGridView::focusInEvent(QFocusEvent*)
{
    updateScroll();
    showRows();
    if (didBecomeFirstResponder)
        didBecomeFirstResponder();
}

void TerminalGridView::focusOutEvent(QFocusEvent*)
{
    updateScroll();
    showRows();
}

// --- Input methods

void TerminalGridView::inputMethodEvent(QInputMethodEvent* event)
{
    preedit_ = event->preeditString();
    if (!event->commitString().isEmpty())
        sendTyped(utf8FromUtf16(event->commitString().toStdU16String()));
    // The composed text may reach over the end of its row.
    update();
    updateMicroFocus();
    event->accept();
}

QVariant TerminalGridView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    switch (query) {
    case Qt::ImEnabled:
        return true;
    case Qt::ImCursorRectangle: {
        const QPointF corner = cursorCorner().value_or(QPointF());
        return QRectF(corner, QSizeF(font_->cellWidth(), font_->cellHeight()));
    }
    case Qt::ImFont:
        return font_->font();
    case Qt::ImHints:
        return static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    default:
        return QWidget::inputMethodQuery(query);
    }
}

}  // namespace tavrel
