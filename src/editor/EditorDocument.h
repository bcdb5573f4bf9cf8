#pragma once

#include "editor/BufferWords.h"
#include "editor/DocumentColoring.h"
#include "editor/TextStorage.h"
#include "editor/UndoHistory.h"
#include "platform/FileStatus.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace tavrel {

class EditorDocument;
class EditorPane;

/// Who wants to hear that a document has changed: the panes with a tab on it.
class EditorDocumentObserver {
public:
    virtual ~EditorDocumentObserver() = default;
    /// `source` is the pane that caused it, or null. With `needsStyling` the whole text is another.
    virtual void editorDocumentDidChange(EditorDocument& document, const EditorPane* source,
                                         bool needsStyling) = 0;
};

/// The text of one open file with its path, its modified flag and its own undo history.
///
/// Shared by all tabs that show the file, in whatever pane, and gone with the last of them. Undo
/// belongs to the document: undoing in one view takes back what was typed in another.
/// Main thread only.
class EditorDocument {
public:
    /// `url` is absent for a text that has no file yet.
    explicit EditorDocument(std::optional<std::filesystem::path> url = {}, TextSnapshot text = {});
    EditorDocument(const EditorDocument&) = delete;
    EditorDocument& operator=(const EditorDocument&) = delete;

    TextStorage& textStorage() { return textStorage_; }
    const TextStorage& textStorage() const { return textStorage_; }
    const TextSnapshot& text() const { return textStorage_.snapshot(); }

    /// Replaces the whole text unless it is equal already. Leaves history and flag alone.
    void setText(const TextSnapshot& text);

    UndoHistory& history() { return history_; }
    const UndoHistory& history() const { return history_; }

    /// Counts the words of the text for completion, up to the last time it was asked to.
    BufferWords& bufferWords() { return bufferWords_; }

    /// Gives the text its tokens where it is shown.
    DocumentColoring& coloring() { return coloring_; }

    /// No file, no change and no text: such a tab is shown as "No File".
    bool isEmpty() const;

    void addObserver(EditorDocumentObserver& observer);
    void removeObserver(EditorDocumentObserver& observer);
    void postDidChange(const EditorPane* source, bool needsStyling);

    std::optional<std::filesystem::path> url;
    bool isModified = false;
    /// The file as it was last read or written.
    std::optional<FileStatus> diskStatus;

private:
    TextStorage textStorage_;
    DocumentColoring coloring_{textStorage_};
    UndoHistory history_;
    BufferWords bufferWords_;
    std::vector<EditorDocumentObserver*> observers_;
};

}  // namespace tavrel
