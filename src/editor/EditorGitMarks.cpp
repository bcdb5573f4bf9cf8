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
    pendingGitDiffRefresh_.schedule(pane_.services().mainQueue, delaySeconds,
                                    [this] { refresh(); });
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
