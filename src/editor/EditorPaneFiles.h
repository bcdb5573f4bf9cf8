#pragma once

#include "editor/DocumentFiles.h"
#include "editor/EditorPaneAlert.h"
#include "editor/ScheduledSlot.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace tavrel {

class EditorPane;

enum class OpenResult { opened, failed };

/// What a pane does with files: opening, saving, reloading, and following what happens to them on
/// the disk, with the questions that come before text is lost. Failures are status texts.
///
/// A document that the user is being asked about is left alone by all of it. Main thread only.
class EditorPaneFiles {
public:
    /// Borrows the pane, to which it belongs.
    explicit EditorPaneFiles(EditorPane& pane);

    /// Shows the file: the tab of this pane that has it, else the document of another pane as one
    /// more view of it, else a document read from the disk.
    OpenResult openLocation(const std::filesystem::path& path);
    /// The same with a file that has been read elsewhere, or with the reason why it could not be.
    OpenResult showLoaded(const std::filesystem::path& path, LoadResult loaded);
    /// Shows a file of search results: a click on its lines opens what they name.
    OpenResult openSearchResults(const std::filesystem::path& path);

    /// Says in the status text why a file could not be opened.
    void showFailureToOpen(const std::filesystem::path& path, const FileError& error);

    /// Writes the active document, after asking where if it has no file. Where the file has changed
    /// outside meanwhile, the question of `checkDisk` comes first.
    void save();
    void saveAs();
    /// Writes the active document if it is modified and has a file, unless that file has changed.
    void autosave();
    /// The same, if the preferences want it when the focus leaves.
    void autosaveOnFocusLoss();
    /// The text view has stopped being edited: autosaves a moment later, unless the focus has
    /// stayed in the pane.
    void didEndEditing();

    /// Looks at the file of each document once: one that has changed is reloaded, after a question
    /// where the document is modified. The question comes once for each change.
    void checkDisk();
    /// Reads the file anew if a tab shows it, whether or not it has changed, after the same
    /// question.
    void reload(const std::filesystem::path& path);
    /// The same, without touching a modified document.
    void reloadUnmodified(const std::filesystem::path& path);

    /// The file of some tabs has another path: they go with it. Date, text and history stay.
    void fileWasRenamed(const std::filesystem::path& from, const std::filesystem::path& to);
    /// The file of some tabs has gone: they stay, without a file and modified.
    void fileWasDeleted(const std::filesystem::path& path);

    /// The active document has been written to `path`; `doneWord` says so in the status text.
    void didSave(const std::filesystem::path& path, const FileStatus& status,
                 std::u16string_view doneWord);

    const DocumentFiles& documentFiles() const { return files_; }

private:
    using Document = std::shared_ptr<EditorDocument>;
    enum class DiskAnswer { unchanged, reloaded, kept, paneHasGone };

    void show(Document document);
    std::vector<Document> documents() const;
    std::vector<Document> documentsAt(const std::filesystem::path& path) const;
    void checkDisk(const Document& document);
    DiskAnswer settleBeforeSaving(const Document& document);
    DiskAnswer askAboutDisk(const Document& document);
    void saveTo(const Document& document, const std::filesystem::path& path);
    void write(const Document& document, const std::filesystem::path& path,
               std::u16string_view doneWord, std::u16string_view failure);
    void finishSaving(const Document& document, const std::filesystem::path& formerUrl,
                      std::u16string_view doneWord);
    void takePlaceOfFormer(const Document& written);

    EditorPane& pane_;
    DocumentFiles files_;
    ScheduledSlot pendingFocusCheck_;
};

}  // namespace tavrel
