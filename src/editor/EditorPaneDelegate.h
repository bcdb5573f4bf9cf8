#pragma once

#include "editor/EditorPaneAlert.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace tavrel {

class EditorPane;
class WordCounts;
struct EditorCommand;

/// What a pane asks of whoever owns it. All of it happens on the main thread.
class EditorPaneDelegate {
public:
    virtual ~EditorPaneDelegate() = default;
    /// The pane's status text, or a message of one line that takes its place.
    virtual void editorPaneDidSetStatus(EditorPane& pane, std::u16string_view text) = 0;
    virtual void editorPaneDidBeep(EditorPane& pane) = 0;
    /// The pane is the one that the user works in: it took the focus, or was asked for a tab.
    virtual void editorPaneDidBecomeActive(EditorPane& /*pane*/) {}
    /// Where to save a document that has no name; nothing when the user changes their mind.
    virtual std::optional<std::filesystem::path>
    editorPaneWantsSaveLocation(EditorPane& pane, const std::filesystem::path& proposed) = 0;
    /// Asks the user and waits; answers the index of the button. Other work of the main thread may
    /// go on meanwhile, calls of this pane among it: the document asked about is then left alone.
    virtual std::size_t editorPaneWantsAnswer(EditorPane& /*pane*/, const EditorPaneAlert& alert)
    {
        return alert.escapeButton;
    }
    /// All panes that may show one document together, in a fixed order; this one may be among them.
    virtual std::vector<EditorPane*> editorPaneWantsEditors(EditorPane& /*pane*/) { return {}; }
    /// A file that a line of search results names is to be shown. Answers the pane that shows it in
    /// its active tab now, or null. By itself: this pane.
    virtual EditorPane* editorPaneWantsFileShown(EditorPane& pane,
                                                 const std::filesystem::path& path);
    /// The words of the project's files in a language; null where they are not known (yet). Read at
    /// once, not kept.
    virtual const WordCounts* editorPaneWantsProjectWords(EditorPane& /*pane*/,
                                                          std::string_view /*languageId*/)
    {
        return nullptr;
    }
    /// A command that goes beyond one pane ("find", "toggleTree", "editor1", …).
    virtual void editorPaneDidMeetCommand(EditorPane& pane, const EditorCommand& command) = 0;
};

}  // namespace tavrel
