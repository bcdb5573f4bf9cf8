#pragma once

#include <memory>

namespace tavrel {

class EditorPane;

/// A reference to a pane that knows when the pane has gone. A value that may be carried through
/// other threads; only the main thread looks into it.
class WeakEditorPane {
public:
    WeakEditorPane() = default;
    explicit WeakEditorPane(std::weak_ptr<EditorPane*> pane) : pane_(std::move(pane)) {}

    /// Null once the pane has gone.
    EditorPane* get() const
    {
        const std::shared_ptr<EditorPane*> pane = pane_.lock();
        return pane ? *pane : nullptr;
    }

private:
    std::weak_ptr<EditorPane*> pane_;
};

}  // namespace tavrel
