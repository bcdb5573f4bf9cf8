// The text view and its list of completions: who gets a key, and when the list goes.

#include "editor/views/TavrelTextView.h"

#include "platform/qt/KeyEvents.h"

#include <QKeyEvent>

namespace tavrel {

void TavrelTextView::showCompletions(TextRange partial,
                                     const std::vector<std::u16string>& candidates)
{
    const std::optional<QRectF> cursor = cursorRectAt(partial.location);
    if (candidates.empty() || !cursor) {
        closeCompletions();
        return;
    }
    if (!completionList_) {
        completionList_ = new CompletionListView(window());
        completionList_->didClick = [this](int index) { acceptCompletion(index); };
        completionList_->didClickElsewhere = [this] { closeCompletions(); };
    }
    if (completionList_->parentWidget() != window())
        completionList_->setParent(window());
    completionRange_ = partial;
    const QPoint offset = mapTo(window(), QPoint());
    completionList_->present(candidates, font_.font(), appearance_.theme,
                             cursor->toAlignedRect().translated(offset), rect().translated(offset));
}

void TavrelTextView::closeCompletions()
{
    if (isTypingOn_ || !completionRange_)
        return;
    completionRange_.reset();
    if (completionList_)
        completionList_->hide();
}

// A list for a place where the cursor no longer stands.
void TavrelTextView::closeStaleCompletions()
{
    if (completionRange_ &&
        pane_.selectedRanges() != std::vector{TextRange{completionRange_->end(), 0}})
        closeCompletions();
}

void TavrelTextView::acceptCompletion(int index)
{
    if (!completionRange_ || !completionList_)
        return;
    const TextRange partial = *completionRange_;
    const std::u16string word = completionList_->words().at(index).toStdU16String();
    closeCompletions();
    pane_.acceptCompletion(partial, word);
}

// Carries out what goes on with the word, and offers what is left to choose from.
void TavrelTextView::typeOn(const std::function<void()>& input)
{
    isTypingOn_ = true;
    input();
    isTypingOn_ = false;
    const bool isAtWord = pane_.lastActionWasTyping() && pane_.selectedRange().isEmpty() &&
                          !pane_.hasSecondaryCursors();
    if (!isAtWord || !pane_.offerCompletions())
        closeCompletions();
}

// Whether the key is done with. Others close the list and then do what they always do.
bool TavrelTextView::handleCompletionKey(const QKeyEvent& event, const KeyEvent& key)
{
    if (isLoneModifier(event) || completionList_->handleKey(event))
        return true;
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && event.key() == Qt::Key_Escape) {
        closeCompletions();
        return true;
    }
    if (isPlain && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter ||
                    event.key() == Qt::Key_Tab)) {
        acceptCompletion(completionList_->chosenIndex());
        return true;
    }
    if (isTyping(event, key) || (isPlain && event.key() == Qt::Key_Backspace)) {
        typeOn([&] { takeKey(event, key); });
        return true;
    }
    closeCompletions();
    return false;
}

}  // namespace tavrel
