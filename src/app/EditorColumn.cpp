#include "app/EditorColumn.h"

#include "app/ModalDialogs.h"
#include "editor/views/CodeEditorView.h"
#include "terminal/TerminalViewController.h"
#include "terminal/views/TerminalGridView.h"
#include "terminal/views/TerminalPanel.h"
#include "terminal/views/TerminalTabBar.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

namespace tavrel {

namespace {

// The last button does nothing.
EditorPaneAlert alertOf(const TerminalQuestion& question)
{
    return {question.message, question.information, question.buttons,
            question.buttons.empty() ? 0 : question.buttons.size() - 1};
}

}  // namespace

EditorColumn::EditorColumn(EditorPane& pane, Pasteboard& pasteboard, QWidget* parent,
                           const EditorAppearance& appearance)
    : QWidget(parent), pasteboard_(pasteboard),
      editorView_(new CodeEditorView(pane, this, appearance)),
      dividerColor_(QColor::fromRgb(appearance.theme.panelBackground))
{
    setFocusProxy(editorView_);
}

EditorColumn::~EditorColumn()
{
    // The views go while what they show is there.
    delete panel_;
    if (terminal_)
        terminal_->setDelegate(nullptr);
    delete editorView_;
}

void EditorColumn::setAppearance(const EditorAppearance& appearance)
{
    editorView_->setAppearance(appearance);
    dividerColor_ = QColor::fromRgb(appearance.theme.panelBackground);
    update();
    if (terminal_)
        terminal_->applyPreferences();
}

// --- The terminal

bool EditorColumn::makeTerminal()
{
    if (panel_)
        return true;
    if (!services_.makeTerminal)
        return false;
    terminal_ = services_.makeTerminal();
    if (!terminal_)
        return false;
    terminal_->setDelegate(this);
    panel_ = new TerminalPanel(*terminal_, pasteboard_, this);
    panel_->hide();
    panel_->gridView().menuShortcut = services_.runMenuShortcut;
    panel_->gridView().isBoundChord = [this](std::string_view chord) {
        return terminal_->isBound(chord) || (services_.isMenuChord && services_.isMenuChord(chord));
    };
    for (QWidget* widget : findChildren<QWidget*>())
        watchForDivider(*widget);
    setMouseTracking(true);
    return true;
}

bool EditorColumn::isTerminalVisible() const
{
    return panel_ && !panel_->isHidden();
}

bool EditorColumn::terminalHasFocus() const
{
    const QWidget* focused = window()->focusWidget();
    return panel_ && focused && (focused == panel_ || panel_->isAncestorOf(focused));
}

void EditorColumn::setTerminalVisible(bool isVisible)
{
    if (isVisible == isTerminalVisible() || (isVisible && !makeTerminal()))
        return;
    if (!isVisible && terminalHasFocus())
        editorView_->setFocus();
    dragOffset_.reset();  // A divider that goes away is held no more.
    // In its place before it is shown, so that its shell starts at the right size.
    if (isVisible)
        arrangeWithTerminal();
    panel_->setVisible(isVisible);
    arrange();
}

void EditorColumn::focusTerminal()
{
    if (isTerminalVisible())
        panel_->setFocus();
}

void EditorColumn::newTerminalTab()
{
    if (!isTerminalVisible())
        return;
    terminal_->newTab();
    panel_->setFocus();
}

bool EditorColumn::runInTerminal(std::string_view command)
{
    if (!terminalHasFocus())
        return false;
    if (command == "copy")
        panel_->gridView().copy();
    else if (command == "paste")
        panel_->gridView().paste();
    return true;
}

// --- What the terminal asks

void EditorColumn::terminalTabsDidChange(TerminalViewController&)
{
    if (services_.terminalTabsDidChange)
        services_.terminalTabsDidChange();
}

void EditorColumn::terminalWantsEditorFocus(TerminalViewController&, std::size_t index)
{
    if (services_.wantsEditorFocus)
        services_.wantsEditorFocus(index);
}

void EditorColumn::terminalDidRingBell(TerminalViewController&)
{
    QApplication::beep();
}

bool EditorColumn::terminalWantsAnswer(TerminalViewController&, const TerminalQuestion& question)
{
    return services_.dialogs && services_.dialogs().ask(alertOf(question)) == 0;
}

std::optional<std::u16string> EditorColumn::terminalWantsText(TerminalViewController&,
                                                              const TerminalQuestion& question,
                                                              const std::u16string& text)
{
    if (!services_.dialogs)
        return std::nullopt;
    return services_.dialogs().askForText(alertOf(question), text);
}

// --- Places

void EditorColumn::resizeEvent(QResizeEvent*)
{
    arrange();
}

void EditorColumn::arrange()
{
    if (isTerminalVisible())
        arrangeWithTerminal();
    else
        editorView_->setGeometry(0, 0, width(), height());
}

void EditorColumn::arrangeWithTerminal()
{
    const int position = split_.position(height());
    const int terminalTop = std::min(position + ColumnSplit::dividerThickness, height());
    editorView_->setGeometry(0, 0, width(), position);
    panel_->setGeometry(0, terminalTop, width(), height() - terminalTop);
    update(0, position, width(), ColumnSplit::dividerThickness);
}

void EditorColumn::paintEvent(QPaintEvent*)
{
    if (!isTerminalVisible())
        return;
    const QRect divider(0, split_.position(height()), width(), ColumnSplit::dividerThickness);
    QPainter painter(this);
    painter.fillRect(divider, dividerColor_);
    painter.fillRect(divider.x(), divider.center().y(), divider.width(), 1,
                     dividerColor_.lighter(160));
}

// --- The divider
//
// It takes the mouse a little beyond its own rectangle, over the edges of its neighbours, without a
// widget lying over them: that would keep the text from being scrolled by moving its picture.

bool EditorColumn::isOnDivider(int y) const
{
    if (!isTerminalVisible())
        return false;
    const int top = split_.position(height());
    return y >= top - ColumnSplit::dividerHitPadding &&
           y < top + ColumnSplit::dividerThickness + ColumnSplit::dividerHitPadding;
}

void EditorColumn::watchForDivider(QWidget& widget)
{
    widget.installEventFilter(this);
    widget.setMouseTracking(true);
}

bool EditorColumn::eventFilter(QObject* object, QEvent* event)
{
    const bool isMouse = event->type() == QEvent::MouseMove ||
                         event->type() == QEvent::MouseButtonPress ||
                         event->type() == QEvent::MouseButtonRelease;
    auto* widget = qobject_cast<QWidget*>(object);
    if (!isMouse || !widget)
        return QWidget::eventFilter(object, event);
    const auto& mouse = *static_cast<QMouseEvent*>(event);
    const int y = widget->mapTo(this, mouse.position().toPoint()).y();
    if (event->type() == QEvent::MouseButtonPress) {
        if (mouse.button() != Qt::LeftButton || !isOnDivider(y))
            return false;
        dragOffset_ = y - split_.position(height());
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        const bool wasDragging = dragOffset_ && mouse.button() == Qt::LeftButton;
        if (wasDragging)
            dragOffset_.reset();
        return wasDragging;
    }
    if (dragOffset_) {
        dragDivider(y);
        return true;
    }
    if (mouse.buttons() == Qt::NoButton)
        showDividerCursor(*widget, isOnDivider(y));
    return false;
}

void EditorColumn::showDividerCursor(QWidget& widget, bool isOn)
{
    const bool isShown = dividerCursorWidget_ == &widget;
    if (isOn == isShown)
        return;
    if (dividerCursorWidget_)
        dividerCursorWidget_->setCursor(ownCursor_);
    dividerCursorWidget_ = nullptr;
    if (!isOn)
        return;
    dividerCursorWidget_ = &widget;
    ownCursor_ = widget.cursor();
    widget.setCursor(Qt::SplitVCursor);
}

void EditorColumn::dragDivider(int y)
{
    split_.moveTo(y - *dragOffset_, height());
    arrange();
}

void EditorColumn::mousePressEvent(QMouseEvent* event)
{
    const int y = event->position().toPoint().y();
    if (event->button() == Qt::LeftButton && isOnDivider(y))
        dragOffset_ = y - split_.position(height());
}

void EditorColumn::mouseMoveEvent(QMouseEvent* event)
{
    const int y = event->position().toPoint().y();
    if (dragOffset_)
        dragDivider(y);
    else
        setCursor(isOnDivider(y) ? Qt::SplitVCursor : Qt::ArrowCursor);
}

void EditorColumn::mouseReleaseEvent(QMouseEvent*)
{
    dragOffset_.reset();
}

}  // namespace tavrel
