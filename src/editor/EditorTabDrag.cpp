#include "editor/EditorTabDrag.h"

#include "editor/EditorPane.h"
#include "editor/OpenDocuments.h"

#include <array>
#include <unistd.h>

namespace tavrel {

namespace {

/// A text that no other drag on the desktop has.
std::string freshToken()
{
    std::array<unsigned char, 16> bytes{};
    // Where the system has no numbers to give, a drag from another process is still refused: there
    // is no drag in progress here then.
    static_cast<void>(::getentropy(bytes.data(), bytes.size()));
    std::string token;
    for (const unsigned char byte : bytes) {
        token += "0123456789abcdef"[byte >> 4];
        token += "0123456789abcdef"[byte & 0xF];
    }
    return token;
}

}  // namespace

std::string EditorTabDrag::begin(EditorPane& source, std::size_t sourceIndex)
{
    end();
    if (sourceIndex >= source.tabs().size() || source.isFieldEditor())
        return {};
    dragged_ = DraggedEditorTab{source.weakReference(), sourceIndex, freshToken(),
                                source.tabs()[sourceIndex]};
    return dragged_->token;
}

bool EditorTabDrag::canDrop(EditorPane& target, std::string_view token) const
{
    if (!dragged_ || dragged_->token != token || target.isFieldEditor())
        return false;
    const EditorPane* source = dragged_->source.get();
    return source && source != &target && dragged_->sourceIndex < source->tabs().size() &&
           source->tabs()[dragged_->sourceIndex] == dragged_->tab.lock();
}

void EditorTabDrag::drop(EditorPane& target, std::string_view token)
{
    if (!canDrop(target, token))
        return;
    EditorPane& source = *dragged_->source.get();
    const std::size_t index = dragged_->sourceIndex;
    end();
    moveTab(source, index, target);
}

}  // namespace tavrel
