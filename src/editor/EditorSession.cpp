#include "editor/EditorSession.h"

#include "editor/EditorPane.h"
#include "editor/OpenDocuments.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tavrel {

namespace {

/// Lines are counted as rows of equal height: how a text wraps is not known before it is shown.
double scrollY(const EditorTab& tab, double rowHeight)
{
    const std::size_t line = tab.document->text().lineIndexAt(tab.scrollOrigin.location);
    return static_cast<double>(line) * rowHeight + tab.scrollOrigin.offset;
}

ScrollOrigin scrollOrigin(const TextSnapshot& text, double y, double rowHeight)
{
    const bool isPlace = std::isfinite(y) && y > 0 && rowHeight > 0;
    if (!isPlace)
        return {};
    const auto last = static_cast<double>(text.lineCount() - 1);
    const double line = std::min(std::floor(y / rowHeight), last);
    const double offset = std::min(y - line * rowHeight, rowHeight);
    return {text.lineStart(static_cast<std::size_t>(line)), offset};
}

TextRange selection(const ProjectSessionTab& tab, std::size_t textLength)
{
    const auto within = [textLength](std::int64_t number) {
        return std::min(static_cast<std::size_t>(std::max<std::int64_t>(number, 0)), textLength);
    };
    return clampedRange({within(tab.selectionLocation), within(tab.selectionLength)}, textLength);
}

/// Makes the tabs of one session.
class SessionRestorer {
public:
    explicit SessionRestorer(EditorPane& pane) : pane_(pane), rowHeight_(pane.rowHeight()) {}

    void restore(const ProjectEditorSession& session)
    {
        std::size_t active = 0;
        for (std::size_t index = 0; index < session.tabs.size(); ++index) {
            std::shared_ptr<EditorTab> tab = tabOf(session.tabs[index]);
            if (!tab)
                continue;
            const bool isAtMostActive = std::cmp_less_equal(index, session.activeTabIndex);
            if (isAtMostActive)
                active = restored_.size();
            restored_.push_back(std::move(tab));
        }
        pane_.replaceTabs(std::move(restored_), active);
        if (failure_)
            pane_.files().showFailureToOpen(failure_->first, failure_->second);
    }

private:
    std::shared_ptr<EditorTab> tabOf(const ProjectSessionTab& stored)
    {
        std::shared_ptr<EditorDocument> document = documentOf(stored);
        if (!document)
            return nullptr;
        const TextSnapshot& text = document->text();
        const TextRange selected = selection(stored, text.length());
        const ScrollOrigin origin = scrollOrigin(text, stored.scrollY, rowHeight_);
        std::shared_ptr<EditorTab> tab = pane_.makeTab(std::move(document));
        tab->selectedRange = selected;
        tab->scrollOrigin = origin;
        return tab;
    }

    std::shared_ptr<EditorDocument> documentOf(const ProjectSessionTab& stored)
    {
        const bool hasFile = stored.path && stored.path->is_absolute();
        if (hasFile) {
            if (std::shared_ptr<EditorDocument> shared = sharedDocument(*stored.path))
                return shared;
        }
        if (stored.unsavedText)
            return unsavedDocument(stored, hasFile);
        if (!stored.path)
            return std::make_shared<EditorDocument>();
        if (!hasFile)
            return nullptr;
        auto document = pane_.files().documentFiles().open(*stored.path);
        if (document)
            return std::move(*document);
        failure_ = std::pair(*stored.path, document.error());
        return nullptr;
    }

    std::shared_ptr<EditorDocument> sharedDocument(const std::filesystem::path& path)
    {
        const std::filesystem::path url = DocumentFiles::standardised(path);
        for (const std::shared_ptr<EditorTab>& tab : restored_) {
            if (tab->document->url == url)
                return tab->document;
        }
        std::vector<EditorPane*> others = pane_.editors();
        std::erase(others, &pane_);
        return openDocument(others, path, pane_.files().documentFiles());
    }

    /// The file as it is now counts as known: what the text was made from is not remembered.
    std::shared_ptr<EditorDocument> unsavedDocument(const ProjectSessionTab& stored, bool hasFile)
    {
        std::optional<std::filesystem::path> url;
        if (hasFile)
            url = DocumentFiles::standardised(*stored.path);
        auto document = std::make_shared<EditorDocument>(url, TextSnapshot(*stored.unsavedText));
        document->isModified = true;
        document->diskStatus = pane_.files().documentFiles().changeOnDisk(*document);
        return document;
    }

    EditorPane& pane_;
    double rowHeight_;
    std::vector<std::shared_ptr<EditorTab>> restored_;
    std::optional<std::pair<std::filesystem::path, FileError>> failure_;
};

}  // namespace

ProjectEditorSession editorSession(EditorPane& pane)
{
    pane.storeTabState();
    ProjectEditorSession session;
    for (const std::shared_ptr<EditorTab>& tab : pane.tabs()) {
        const EditorDocument& document = *tab->document;
        const bool hasFileOfItsOwn = document.url && !tab->isSearchResults;
        if (!hasFileOfItsOwn && !document.isModified)
            continue;
        if (tab.get() == &pane.activeTab())
            session.activeTabIndex = static_cast<std::int64_t>(session.tabs.size());
        ProjectSessionTab stored{
            .path = document.url,
            .selectionLocation = static_cast<std::int64_t>(tab->selectedRange.location),
            .selectionLength = static_cast<std::int64_t>(tab->selectedRange.length),
            .scrollY = scrollY(*tab, pane.rowHeight()),
            .unsavedText = {}};
        if (document.isModified)
            stored.unsavedText = document.text().text();
        session.tabs.push_back(std::move(stored));
    }
    return session;
}

void restoreSession(EditorPane& pane, const ProjectEditorSession& session)
{
    SessionRestorer(pane).restore(session);
}

}  // namespace tavrel
