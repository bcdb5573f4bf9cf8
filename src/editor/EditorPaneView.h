#pragma once

#include "editor/EditorTab.h"
#include "platform/TextRange.h"

namespace tavrel {

class RowLayout;

/// What a pane tells the view that shows it. All of it happens on the main thread.
///
/// Changes of the text itself reach the view as an observer of the document's `TextStorage`.
class EditorPaneView {
public:
    virtual ~EditorPaneView() = default;

    /// Another document is shown, or the same one in another state: everything is to be read anew.
    virtual void paneDidShowDocument() = 0;
    /// The selection, the secondary cursors, the occurrences or the marker may have changed.
    virtual void paneDidChangeSelection() = 0;
    /// Titles or modified marks of tabs have changed.
    virtual void paneDidChangeTabs() = 0;
    virtual void paneWantsVisible(TextRange range) = 0;
    /// Where the view has scrolled to; stored in a tab that is no longer shown.
    virtual ScrollOrigin scrollOrigin() const = 0;
    virtual void setScrollOrigin(const ScrollOrigin& origin) = 0;
    /// The rows of the text as the view lays them out, for vertical motion.
    virtual const RowLayout& rowLayout() const = 0;
};

}  // namespace tavrel
