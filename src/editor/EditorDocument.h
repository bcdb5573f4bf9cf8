#pragma once

#include "editor/BufferWords.h"
#include "editor/DocumentColoring.h"
#include "editor/TextStorage.h"
#include "editor/UndoHistory.h"
#include "git/GitLineDiff.h"
#include "platform/FileStatus.h"

#include <filesystem>
#include <memory>
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
    /// The document has another `url`, or none any more.
    virtual void editorDocumentDidMove(EditorDocument& /*document*/) {}
    virtual void editorDocumentDidChangeGitLineDiff(EditorDocument& /*document*/) {}
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

    /// Makes this the text, replacing the stretch that differs, so that what follows the rest stays
    /// in its place. Leaves history and flag alone. Costs O(length).
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
    void postDidMove();
    void postDidChangeGitLineDiff();

    /// Whether the user is being asked what to do with the text: nobody writes or reloads it then.
    bool isAskedAbout() const { return openQuestions_ > 0; }

    std::optional<std::filesystem::path> url;
    bool isModified = false;
    /// The file as it was last read or written.
    std::optional<FileStatus> diskStatus;
    /// How the lines differ from the last commit, as of the last refresh; absent where nothing is
    /// known.
    std::optional<GitLineDiff> gitLineDiff;

private:
    friend class DocumentQuestion;

    template<class Tell>
    void tellObservers(Tell tell);

    TextStorage textStorage_;
    DocumentColoring coloring_{textStorage_};
    UndoHistory history_;
    BufferWords bufferWords_;
    std::vector<EditorDocumentObserver*> observers_;
    int openQuestions_ = 0;
};

/// Marks a document as asked about for as long as it lives.
class DocumentQuestion {
public:
    explicit DocumentQuestion(std::shared_ptr<EditorDocument> document)
        : document_(std::move(document))
    {
        ++document_->openQuestions_;
    }
    ~DocumentQuestion() { --document_->openQuestions_; }
    DocumentQuestion(const DocumentQuestion&) = delete;
    DocumentQuestion& operator=(const DocumentQuestion&) = delete;

private:
    std::shared_ptr<EditorDocument> document_;
};

}  // namespace tavrel
