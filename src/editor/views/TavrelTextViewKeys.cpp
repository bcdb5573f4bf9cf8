#include "editor/views/TavrelTextView.h"

#include "editor/views/StandardKeys.h"
#include "platform/qt/KeyEvents.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

#include <algorithm>

namespace tavrel {

namespace {

// How much text around the cursor an input method gets to see, to each side.
constexpr std::size_t surroundingReach = 1024;

std::u16string units(const QString& text)
{
    return text.toStdU16String();
}

bool isTypedText(const QString& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar unit) {
        return unit.unicode() >= 0x20 && unit.unicode() != 0x7F;
    });
}

}  // namespace

bool TavrelTextView::isTyping(const QKeyEvent& event, const KeyEvent& key)
{
    // AltGr is no modifier here: what it types is text like any other.
    constexpr std::uint64_t chords = controlModifier | commandModifier | optionModifier;
    return (key.modifierFlags & chords) == 0 && isTypedText(event.text());
}

bool TavrelTextView::event(QEvent* event)
{
    // While this view has the focus every key is offered to it first, so neither a menu's shortcut
    // nor the menu bar's own keys (Alt, F10) may take one away. What the pane does not know comes
    // back to the menus through `menuShortcut`.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    const bool result = QWidget::event(event);
    if (event->type() == QEvent::ScreenChangeInternal)
        updateScale();
    return result;
}

bool TavrelTextView::focusNextPrevChild(bool)
{
    return false;
}

void TavrelTextView::keyPressEvent(QKeyEvent* event)
{
    event->accept();
    const KeyEvent key = keyEventFromQt(*event, appearance_.commandKey);
    if (isShowingCompletions() && handleCompletionKey(*event, key))
        return;
    if (keyInterceptor && keyInterceptor(key))
        return;
    takeKey(*event, key);
}

void TavrelTextView::takeKey(const QKeyEvent& event, const KeyEvent& key)
{
    if (isLoneModifier(event) || pane_.keyDown(key))
        return;
    if (menuShortcut && menuShortcut(event))
        return;
    if (!handleUnboundKey(event, key) && isTyping(event, key))
        pane_.insertText(units(event.text()));
    pane_.keyDidInput(key);
}

// The keys that every text field knows, for those that the key map leaves alone.
bool TavrelTextView::handleUnboundKey(const QKeyEvent& event, const KeyEvent& key)
{
    const TextRange selection = pane_.selectedRange();
    const bool isOngoing = drag_.range() == selection;
    const std::size_t head = isOngoing ? drag_.head() : selection.end();
    const bool keepsGoal =
        goal_ && goal_->selection == selection && goal_->revision == storage_->revision();
    const auto goalX = keepsGoal ? std::optional(goal_->x) : std::nullopt;
    if (const auto motion = standardMotion(event, rows_, selection, head, goalX)) {
        // Only cursors that another motion leaves behind go.
        if (motion->isVertical)
            pane_.clearSecondaryCursors();
        if (motion->extendsSelection) {
            extendSelection(motion->location);
        } else {
            pane_.setSelectedRange({motion->location, 0});
        }
        goal_.reset();
        if (motion->goalX)
            goal_ = {pane_.selectedRange(), storage_->revision(), *motion->goalX};
        scrollToVisible({motion->location, 0});
        return true;
    }
    if (const auto erased = standardErasure(event, rows_, selection)) {
        pane_.replaceText(*erased, {});
        return true;
    }
    constexpr std::uint64_t modifiers = controlModifier | commandModifier | optionModifier;
    if ((key.modifierFlags & modifiers) != 0)
        return false;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        pane_.runCommand(EditorCommand{"newLine", {}});
        return true;
    case Qt::Key_Backspace:
        pane_.runCommand(EditorCommand{"erase", {}});
        return true;
    case Qt::Key_Tab:
        pane_.insertText(u"\t");
        return true;
    default:
        return false;
    }
}

void TavrelTextView::extendSelection(std::size_t head)
{
    const TextRange selection = pane_.selectedRange();
    std::size_t anchor = selection.location;
    if (drag_.range() == selection)
        anchor = drag_.anchor();
    drag_ = SelectionDrag(rows_.text(), anchor, SelectionUnit::character);
    pane_.setSelectedRange(drag_.movedTo(rows_.text(), head));
}

void TavrelTextView::focusInEvent(QFocusEvent*)
{
    refreshDecorations();
    if (delegate_)
        delegate_->textViewDidBecomeFirstResponder();
}

void TavrelTextView::focusOutEvent(QFocusEvent*)
{
    closeCompletions();
    refreshDecorations();
    if (delegate_)
        delegate_->textViewDidEndEditing();
}

// --- Input methods

void TavrelTextView::inputMethodEvent(QInputMethodEvent* event)
{
    event->accept();
    if (isEndingPreedit_)
        return;
    const auto updateCursorRow = [this] {
        if (const auto rect = cursorRectAt(pane_.selectedRange().location))
            update(0, static_cast<int>(rect->top()), width(), static_cast<int>(rect->height()) + 1);
    };
    updateCursorRow();
    preedit_.set(*event, font_, appearance_.theme);
    const bool replaces = event->replacementLength() > 0;
    if (!event->commitString().isEmpty() || replaces) {
        const std::u16string text = units(event->commitString());
        std::optional<TextRange> range;
        if (replaces) {
            const auto cursor = static_cast<qint64>(pane_.selectedRange().location);
            const qint64 start = std::max<qint64>(cursor + event->replacementStart(), 0);
            range = clampedRange({static_cast<std::size_t>(start),
                                  static_cast<std::size_t>(event->replacementLength())},
                                 rows_.text().length());
        }
        const auto commit = [&] {
            pane_.insertText(text, range);
            KeyEvent key;
            key.characters = text;
            pane_.keyDidInput(key);
        };
        if (isShowingCompletions())
            typeOn(commit);
        else
            commit();
    }
    updateCursorRow();
    updateMicroFocus();
}

QVariant TavrelTextView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    const TextSnapshot& text = rows_.text();
    const TextRange selection = clampedRange(pane_.selectedRange(), text.length());
    const std::size_t before = std::min(selection.location, surroundingReach);
    const auto around = [&](std::size_t from, std::size_t length) {
        return QString::fromStdU16String(text.text({from, length}));
    };
    switch (query) {
    case Qt::ImEnabled:
        return true;
    case Qt::ImCursorRectangle:
        if (const auto place = preeditPlace())
            return preeditCursorRect(*place);
        return cursorRectAt(selection.location).value_or(QRectF());
    case Qt::ImFont:
        return font_.font();
    case Qt::ImCursorPosition:
        return static_cast<int>(before);
    case Qt::ImAnchorPosition:
        return static_cast<int>(before + std::min(selection.length, surroundingReach));
    case Qt::ImAbsolutePosition:
        return static_cast<int>(std::min<std::size_t>(selection.location, 0x7FFFFFFF));
    case Qt::ImSurroundingText:
        return around(selection.location - before,
                      before + std::min(selection.length, surroundingReach) + surroundingReach);
    case Qt::ImTextBeforeCursor:
        return around(selection.location - before, before);
    case Qt::ImTextAfterCursor:
        return around(selection.location, surroundingReach);
    case Qt::ImCurrentSelection:
        return around(selection.location, std::min(selection.length, surroundingReach));
    case Qt::ImHints:
        return static_cast<int>(Qt::ImhMultiLine | Qt::ImhNoPredictiveText |
                                Qt::ImhNoAutoUppercase);
    default:
        return QWidget::inputMethodQuery(query);
    }
}

}  // namespace tavrel
