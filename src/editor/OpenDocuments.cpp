#include "editor/OpenDocuments.h"

#include "editor/EditorPane.h"

#include <algorithm>

namespace tavrel {

namespace {

template<class Matches>
std::optional<std::size_t> tabWhere(const EditorPane& pane, Matches matches)
{
    const auto& tabs = pane.tabs();
    const auto tab = std::find_if(tabs.begin(), tabs.end(), [&](const auto& candidate) {
        return candidate->document->url && matches(*candidate->document->url);
    });
    if (tab == tabs.end())
        return std::nullopt;
    return static_cast<std::size_t>(tab - tabs.begin());
}

std::ptrdiff_t tabCount(const EditorPane& pane, const EditorDocument& document)
{
    return std::count_if(pane.tabs().begin(), pane.tabs().end(),
                         [&document](const auto& tab) { return tab->document.get() == &document; });
}

}  // namespace

std::optional<std::size_t> tabShowing(const EditorPane& pane, const std::filesystem::path& path,
                                      const DocumentFiles& files)
{
    const std::filesystem::path wanted = DocumentFiles::standardised(path);
    if (const auto tab = tabWhere(pane, [&](const auto& url) { return url == wanted; }))
        return tab;
    const std::optional<FileIdentity> identity = files.identity(wanted);
    if (!identity)
        return std::nullopt;
    return tabWhere(pane, [&](const auto& url) { return files.identity(url) == identity; });
}

std::shared_ptr<EditorDocument> openDocument(std::span<EditorPane* const> panes,
                                             const std::filesystem::path& path,
                                             const DocumentFiles& files)
{
    for (const EditorPane* pane : panes) {
        if (const std::optional<std::size_t> tab = tabShowing(*pane, path, files))
            return pane->tabs()[*tab]->document;
    }
    return nullptr;
}

bool documentIsOpenElsewhere(const EditorDocument& document, const EditorPane& pane,
                             std::span<EditorPane* const> panes)
{
    return tabCount(pane, document) > 1 ||
           std::any_of(panes.begin(), panes.end(), [&](const EditorPane* other) {
               return other != &pane && tabCount(*other, document) > 0;
           });
}

void moveTab(EditorPane& source, std::size_t index, EditorPane& target)
{
    if (&source == &target)
        return;
    std::shared_ptr<EditorTab> tab = source.detachTab(index);
    if (!tab)
        return;
    target.adoptTab(std::move(tab));
    target.takeFocus();
}

}  // namespace tavrel
