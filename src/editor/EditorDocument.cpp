#include "editor/EditorDocument.h"

#include "editor/TextDifference.h"

#include <algorithm>
#include <utility>

namespace tavrel {

EditorDocument::EditorDocument(std::optional<std::filesystem::path> fileUrl, TextSnapshot text)
    : url(std::move(fileUrl)), textStorage_(std::move(text))
{
}

void EditorDocument::setText(const TextSnapshot& text)
{
    if (const std::optional<TextEdit> edit = differingStretch(this->text(), text))
        textStorage_.replace(edit->range, edit->replacement);
}

bool EditorDocument::isEmpty() const
{
    return !url && !isModified && text().isEmpty();
}

void EditorDocument::addObserver(EditorDocumentObserver& observer)
{
    observers_.push_back(&observer);
}

void EditorDocument::removeObserver(EditorDocumentObserver& observer)
{
    const auto place = std::find(observers_.begin(), observers_.end(), &observer);
    if (place != observers_.end())
        observers_.erase(place);
}

template<class Tell>
void EditorDocument::tellObservers(Tell tell)
{
    // A copy: an observer may come or go while it is told.
    const std::vector<EditorDocumentObserver*> observers = observers_;
    for (EditorDocumentObserver* observer : observers) {
        if (std::find(observers_.begin(), observers_.end(), observer) != observers_.end())
            tell(*observer);
    }
}

void EditorDocument::postDidChange(const EditorPane* source, bool needsStyling)
{
    tellObservers([&](EditorDocumentObserver& observer) {
        observer.editorDocumentDidChange(*this, source, needsStyling);
    });
}

void EditorDocument::postDidMove()
{
    tellObservers(
        [this](EditorDocumentObserver& observer) { observer.editorDocumentDidMove(*this); });
}

void EditorDocument::postDidChangeGitLineDiff()
{
    tellObservers([this](EditorDocumentObserver& observer) {
        observer.editorDocumentDidChangeGitLineDiff(*this);
    });
}

}  // namespace tavrel
