#include "editor/EditorDocument.h"

#include <algorithm>
#include <utility>

namespace tavrel {

EditorDocument::EditorDocument(std::optional<std::filesystem::path> fileUrl, TextSnapshot text)
    : url(std::move(fileUrl)), textStorage_(std::move(text))
{
}

void EditorDocument::setText(const TextSnapshot& text)
{
    if (!(text == this->text()))
        textStorage_.replace({0, textStorage_.length()}, text);
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

void EditorDocument::postDidChange(const EditorPane* source, bool needsStyling)
{
    // A copy: an observer may come or go while it is told.
    const std::vector<EditorDocumentObserver*> observers = observers_;
    for (EditorDocumentObserver* observer : observers) {
        const bool isStillThere =
            std::find(observers_.begin(), observers_.end(), observer) != observers_.end();
        if (isStillThere)
            observer->editorDocumentDidChange(*this, source, needsStyling);
    }
}

}  // namespace tavrel
