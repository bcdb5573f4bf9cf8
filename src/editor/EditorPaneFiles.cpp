#include "editor/EditorPaneFiles.h"

#include "editor/EditorPane.h"
#include "editor/OpenDocuments.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tavrel {

namespace {

std::u16string failureText(std::u16string_view what, const std::filesystem::path& path,
                           const FileError& error)
{
    return std::u16string(what) + shownFileName(path) + u": " + utf16FromUtf8(error.message);
}

constexpr std::size_t reloadFromDisk = 1;  // The button.

EditorPaneAlert diskAlert(const EditorDocument& document)
{
    return {.message = shownFileName(*document.url) + u" changed on disk",
            .information = u"The file was modified outside Tavrel Code while this tab has unsaved "
                           u"changes.",
            .buttons = {u"Keep Editor Version", u"Reload From Disk"},
            .escapeButton = 0};
}

}  // namespace

EditorPaneFiles::EditorPaneFiles(EditorPane& pane)
    : pane_(pane), files_(pane.services().fileSystem, pane.services().asideFolder)
{
}

// --- Opening

OpenResult EditorPaneFiles::openLocation(const std::filesystem::path& path)
{
    pane_.storeTabState();
    if (const std::optional<std::size_t> open = tabShowing(pane_, path, files_)) {
        pane_.selectTab(*open);
        return OpenResult::opened;
    }
    if (Document shared = openDocument(pane_.editors(), path, files_)) {
        show(std::move(shared));
        return OpenResult::opened;
    }
    auto document = files_.open(path);
    if (!document) {
        showFailureToOpen(path, document.error());
        return OpenResult::failed;
    }
    show(std::move(*document));
    return OpenResult::opened;
}

OpenResult EditorPaneFiles::showLoaded(const std::filesystem::path& path, LoadResult loaded)
{
    const bool isOpen =
        tabShowing(pane_, path, files_) || openDocument(pane_.editors(), path, files_);
    if (isOpen)
        return openLocation(path);
    if (!loaded) {
        showFailureToOpen(path, loaded.error());
        return OpenResult::failed;
    }
    show(DocumentFiles::documentOf(path, std::move(*loaded)));
    return OpenResult::opened;
}

OpenResult EditorPaneFiles::openSearchResults(const std::filesystem::path& path)
{
    const OpenResult result = openLocation(path);
    if (result == OpenResult::opened)
        pane_.activeTab().isSearchResults = true;
    return result;
}

void EditorPaneFiles::show(Document document)
{
    pane_.showDocument(std::move(document));
}

void EditorPaneFiles::showFailureToOpen(const std::filesystem::path& path, const FileError& error)
{
    pane_.setStatus(failureText(u"Could not open ", path, error));
}

// --- Saving

void EditorPaneFiles::save()
{
    pane_.storeTabState();
    const Document document = pane_.activeTab().document;
    if (document->url)
        saveTo(document, *document->url);
    else
        saveAs();
}

void EditorPaneFiles::saveAs()
{
    pane_.storeTabState();
    const Document document = pane_.activeTab().document;
    const std::optional<std::filesystem::path> chosen = pane_.askWhereToSave(
        document, document->url ? *document->url : std::filesystem::path("untitled.txt"));
    if (chosen)
        saveTo(document, DocumentFiles::standardised(*chosen));
}

void EditorPaneFiles::saveTo(const Document& document, const std::filesystem::path& path)
{
    if (document->isAskedAbout())
        return;
    if (document->url == path) {
        const DiskAnswer answer = settleBeforeSaving(document);
        if (answer == DiskAnswer::reloaded || answer == DiskAnswer::paneHasGone)
            return;
    }
    write(document, path, u"saved", u"Could not save ");
}

void EditorPaneFiles::autosave()
{
    const Document document = pane_.activeTab().document;
    const bool isWanted = document->isModified && document->url && !document->isAskedAbout();
    if (isWanted && !files_.changeOnDisk(*document))
        write(document, *document->url, u"autosaved", u"Could not autosave ");
}

void EditorPaneFiles::autosaveOnFocusLoss()
{
    if (pane_.settings().autoSaveOnFocusLoss)
        autosave();
}

void EditorPaneFiles::didEndEditing()
{
    pendingFocusCheck_.schedule(pane_.services().mainQueue, 0.0, [this] {
        if (!pane_.hasFocus())
            autosaveOnFocusLoss();
    });
}

void EditorPaneFiles::write(const Document& document, const std::filesystem::path& path,
                            std::u16string_view doneWord, std::u16string_view failure)
{
    const std::filesystem::path formerUrl = document->url.value_or(std::filesystem::path());
    const auto written = files_.write(*document, path);
    if (written)
        finishSaving(document, formerUrl, doneWord);
    else
        pane_.setStatus(failureText(failure, path, written.error()));
}

void EditorPaneFiles::didSave(const std::filesystem::path& path, const FileStatus& status,
                              std::u16string_view doneWord)
{
    const Document document = pane_.activeTab().document;
    const std::filesystem::path formerUrl = document->url.value_or(std::filesystem::path());
    DocumentFiles::didWrite(*document, path, status);
    finishSaving(document, formerUrl, doneWord);
}

void EditorPaneFiles::finishSaving(const Document& document, const std::filesystem::path& formerUrl,
                                   std::u16string_view doneWord)
{
    if (document->url != formerUrl) {
        document->postDidMove();
        takePlaceOfFormer(document);
    }
    pane_.documentWasSaved(*document, doneWord);
    document->postDidChange(&pane_, false);
}

/// Tabs that show the file as it was before this document was written to it show the document from
/// now on. One that is modified stays what it is: its file has changed, which is asked about.
void EditorPaneFiles::takePlaceOfFormer(const Document& written)
{
    const std::optional<FileIdentity> identity = files_.identity(*written->url);
    const auto isFormer = [&](const EditorDocument& other) {
        return &other != written.get() && other.url && !other.isModified && !other.isAskedAbout() &&
               (other.url == written->url || (identity && files_.identity(*other.url) == identity));
    };
    for (EditorPane* pane : pane_.editors()) {
        for (const Document& other : pane->files().documents()) {
            if (isFormer(*other))
                pane->showInPlaceOf(*other, written);
        }
    }
}

// --- Changes on the disk

std::vector<EditorPaneFiles::Document> EditorPaneFiles::documents() const
{
    std::vector<Document> documents;
    for (const std::shared_ptr<EditorTab>& tab : pane_.tabs()) {
        if (std::find(documents.begin(), documents.end(), tab->document) == documents.end())
            documents.push_back(tab->document);
    }
    return documents;
}

std::vector<EditorPaneFiles::Document>
EditorPaneFiles::documentsAt(const std::filesystem::path& path) const
{
    const std::filesystem::path url = DocumentFiles::standardised(path);
    std::vector<Document> found = documents();
    std::erase_if(found, [&url](const Document& document) { return document->url != url; });
    return found;
}

void EditorPaneFiles::checkDisk()
{
    pane_.storeTabState();
    const WeakEditorPane pane = pane_.weakReference();
    for (const Document& document : documents()) {
        checkDisk(document);
        if (!pane.get())  // It has gone while the user was asked.
            return;
    }
}

void EditorPaneFiles::checkDisk(const Document& document)
{
    if (document->isAskedAbout() || !files_.changeOnDisk(*document))
        return;
    if (document->isModified)
        askAboutDisk(document);
    else
        files_.reload(*document);
}

/// A text that nobody has changed is given up for that of the file; where that cannot be read, the
/// user decides whether to write over it.
EditorPaneFiles::DiskAnswer EditorPaneFiles::settleBeforeSaving(const Document& document)
{
    if (!files_.changeOnDisk(*document))
        return DiskAnswer::unchanged;
    if (!document->isModified && files_.reload(*document) == DocumentFiles::Reload::done)
        return DiskAnswer::reloaded;
    return askAboutDisk(document);
}

EditorPaneFiles::DiskAnswer EditorPaneFiles::askAboutDisk(const Document& document)
{
    // Noted before the answer, so that the same change is not asked about again.
    if (const std::optional<FileStatus> present = files_.changeOnDisk(*document))
        document->diskStatus = present;
    const std::optional<std::size_t> answer = pane_.ask(document, diskAlert(*document));
    if (!answer)
        return DiskAnswer::paneHasGone;
    if (*answer != reloadFromDisk || !document->url)
        return DiskAnswer::kept;
    files_.reload(*document);
    return DiskAnswer::reloaded;
}

void EditorPaneFiles::reload(const std::filesystem::path& path)
{
    const WeakEditorPane pane = pane_.weakReference();
    for (const Document& document : documentsAt(path)) {
        if (document->isAskedAbout())
            continue;
        if (document->isModified)
            askAboutDisk(document);
        else
            files_.reload(*document);
        if (!pane.get())
            return;
    }
}

void EditorPaneFiles::reloadUnmodified(const std::filesystem::path& path)
{
    for (const Document& document : documentsAt(path)) {
        if (!document->isModified && !document->isAskedAbout())
            files_.reload(*document);
    }
}

void EditorPaneFiles::fileWasRenamed(const std::filesystem::path& from,
                                     const std::filesystem::path& to)
{
    for (const Document& document : documentsAt(from)) {
        document->url = DocumentFiles::standardised(to);
        document->postDidMove();
    }
}

void EditorPaneFiles::fileWasDeleted(const std::filesystem::path& path)
{
    for (const Document& document : documentsAt(path)) {
        document->url.reset();
        document->diskStatus.reset();
        document->isModified = true;
        document->history().markModified();
        document->postDidMove();
    }
}

}  // namespace tavrel
