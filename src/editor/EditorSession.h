#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tavrel {

class EditorPane;

/// One tab as a project file remembers it.
struct ProjectSessionTab {
    std::optional<std::filesystem::path> path;  // Absolute; absent for a text without a file.
    std::int64_t selectionLocation = 0;         // UTF-16 units.
    std::int64_t selectionLength = 0;
    double scrollY = 0;  // Points from the top of the text, as if no line were wrapped.
    std::optional<std::u16string> unsavedText;  // The whole text of a modified document.

    bool operator==(const ProjectSessionTab&) const = default;
};

/// The tabs of one pane.
struct ProjectEditorSession {
    std::int64_t activeTabIndex = 0;  // Into `tabs`.
    std::vector<ProjectSessionTab> tabs;

    bool operator==(const ProjectEditorSession&) const = default;
};

/// What of the pane is worth remembering: tabs with a file, but for search results, and modified
/// documents. Copies the texts of the latter.
ProjectEditorSession editorSession(EditorPane& pane);

/// Puts the tabs of a session in the place of the pane's own, which are given up without a
/// question. Any numbers may come in. A file that another pane has open is shared; one that cannot
/// be read is left out, with a status text. Where several panes are restored, the old tabs of all
/// of them are best given up first.
void restoreSession(EditorPane& pane, const ProjectEditorSession& session);

}  // namespace tavrel
