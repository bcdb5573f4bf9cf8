#pragma once

#include "config/HexColor.h"
#include "editor/EditorTab.h"
#include "platform/TextRange.h"

#include <string>
#include <vector>

namespace tavrel {

class RowLayout;

/// What a pane tells the view that shows it. All of it happens on the main thread.
///
/// Changes of the text itself reach the view as an observer of the document's `TextStorage`.
class EditorPaneView {
public:
    virtual ~EditorPaneView() = default;

    /// The active tab is about to give its place to another one. What an input method composes is
    /// still to be typed, into the text that it was composed for.
    virtual void paneWillLeaveTab() {}
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
    /// Words for what stands in `partial` are to be offered, the likeliest first. The text changes
    /// only when one is taken: `EditorPane::acceptCompletion`.
    virtual void paneWantsCompletions(TextRange /*partial*/,
                                      const std::vector<std::u16string>& /*candidates*/)
    {
    }
    /// The marks of the document that is shown have changed: `EditorPane::gitLineDiff`.
    virtual void paneDidChangeGitLineDiff() {}
    /// The text view is to take the keys.
    virtual void paneWantsFocus() {}
    /// Whether the keys go to the text view or to another part of this view.
    virtual bool paneHasFocus() const { return false; }
    /// The colour panel is to come to the front, without alpha and with this colour. It answers
    /// with `EditorPane::pickColor` at each change and `EditorPane::endColorPicking` as it closes.
    virtual void paneWantsColorPanel(Color /*color*/) {}
    /// What the colour panel shows has nothing to do with this pane any more.
    virtual void paneDidEndColorPicking() {}
    /// The height of a row that is not wrapped, in points. Above 0.
    virtual double rowHeight() const { return 1; }
    /// The rows of the text as the view lays them out, for vertical motion.
    virtual const RowLayout& rowLayout() const = 0;
};

}  // namespace tavrel
