#include "editor/EditorGitMarks.h"

#include "editor/EditorPane.h"
#include "editor/TextEncoder.h"
#include "git/GitLineDiffer.h"

#include <utility>

namespace tavrel {

void EditorGitMarks::schedule(double delaySeconds)
{
    if (!pane_.services().gitLineDiffer || pane_.isFieldEditor())
        return;
    const std::shared_ptr<EditorDocument>& shown = pane_.activeTab().document;
    const std::shared_ptr<EditorDocument> former = pendingDocument_.lock();
    if (pendingGitDiffRefresh_.isPending() && former && former != shown)
        leaveToOtherViews(former);
    pendingDocument_ = shown;
    pendingGitDiffRefresh_.schedule(pane_.services().mainQueue, delaySeconds,
                                    [this] { refresh(); });
}

// The pane where a text is edited asks for the marks, and no longer does once it shows another one.
void EditorGitMarks::leaveToOtherViews(const std::shared_ptr<EditorDocument>& document)
{
    for (EditorPane* other : pane_.editors()) {
        if (other == &pane_ || other->activeTab().document != document)
            continue;
        other->gitMarks().schedule(delayAfterEdit);
        return;
    }
}

void EditorGitMarks::refresh()
{
    if (isUnderWay_) {
        wantsAnother_ = true;
        return;
    }
    const std::shared_ptr<EditorDocument> document = pane_.activeTab().document;
    if (!document->url) {
        apply(*document, std::nullopt);
        return;
    }
    isUnderWay_ = true;
    pane_.services().gitLineDiffer->compute(
        document->url->native(), [text = document->text()] { return encodedText(text); },
        [pane = pane_.weakReference(),
         asked = std::weak_ptr(document)](std::optional<GitLineDiff> diff) {
            if (EditorPane* present = pane.get())
                present->gitMarks().receive(asked.lock(), std::move(diff));
        });
}

void EditorGitMarks::receive(const std::shared_ptr<EditorDocument>& document,
                             std::optional<GitLineDiff> diff)
{
    isUnderWay_ = false;
    const bool isStillActive = document && document == pane_.activeTab().document && document->url;
    if (isStillActive)
        apply(*document, std::move(diff));
    else if (document)
        leaveToOtherViews(document);
    if (std::exchange(wantsAnother_, false))
        refresh();
}

void EditorGitMarks::apply(EditorDocument& document, std::optional<GitLineDiff> diff)
{
    if (document.gitLineDiff == diff)
        return;
    document.gitLineDiff = std::move(diff);
    document.postDidChangeGitLineDiff();
}

}  // namespace tavrel
