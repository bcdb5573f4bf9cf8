#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

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
    /// Where to save a document that has no name; nothing when the user changes their mind.
    virtual std::optional<std::filesystem::path>
    editorPaneWantsSaveLocation(EditorPane& pane, const std::filesystem::path& proposed) = 0;
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
