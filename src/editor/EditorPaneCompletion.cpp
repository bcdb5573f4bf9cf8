// Which words a pane offers, and what happens when one is taken.

#include "editor/EditorPane.h"

#include "editor/Completion.h"

namespace tavrel {

std::vector<std::u16string> EditorPane::completionCandidates(TextRange partial)
{
    if (partial.isEmpty() || partial.end() > text().length())
        return {};
    BufferWords& bufferWords = document().bufferWords();
    bufferWords.update(text());
    const LanguageMode& language = *activeTab().language;
    const std::set<std::string> keywords = completionKeywords(language);
    const WordCounts* projectWords =
        delegate_ ? delegate_->editorPaneWantsProjectWords(*this, language.id) : nullptr;
    return tavrel::completionCandidates(text().text(partial), {.bufferWords = bufferWords.words(),
                                                               .projectWords = projectWords,
                                                               .keywords = keywords,
                                                               .types = language.types});
}

bool EditorPane::offerCompletions()
{
    const TextRange partial = partialWordRange(text(), selectedRange().location);
    const std::vector<std::u16string> candidates = completionCandidates(partial);
    if (candidates.empty())
        return false;
    if (view_)
        view_->paneWantsCompletions(partial, candidates);
    return true;
}

void EditorPane::acceptCompletion(TextRange partial, std::u16string_view word)
{
    replaceText(partial, TextSnapshot(word));
    lastActionWasTyping_ = false;
}

}  // namespace tavrel
