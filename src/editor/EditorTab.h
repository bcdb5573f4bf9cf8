#pragma once

#include "config/LanguageMode.h"
#include "editor/CursorLocations.h"
#include "editor/EditorDocument.h"
#include "editor/WordOccurrences.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tavrel {

/// Where a view has scrolled to: the row that starts at or before `location` is the first one
/// shown, and `offset` points of it are scrolled out of sight.
struct ScrollOrigin {
    std::size_t location = 0;
    double offset = 0;

    bool operator==(const ScrollOrigin&) const = default;
};

/// One tab of a pane: which document it shows, and how. The selection and the scroll position are
/// those of the view while the tab is not the active one.
struct EditorTab {
    std::shared_ptr<EditorDocument> document;
    std::shared_ptr<const LanguageMode> language;
    std::optional<std::size_t> marker;
    TextRange selectedRange;
    ScrollOrigin scrollOrigin;
    CursorLocations secondaryCursorLocations;
    std::optional<SelectedWordOccurrences> selectedWordOccurrences;
    bool isSearchResults = false;
};

/// The last component of a path as one line: whatever would break or garble it shows as a blank.
std::u16string shownFileName(const std::filesystem::path& path);

/// "No File" for an empty tab, else the name of its file or "Untitled", with "• " before the name
/// of a modified document.
std::u16string tabTitle(const EditorDocument& document);

/// The name of the document's file, or "Untitled".
std::u16string documentName(const EditorDocument& document);

}  // namespace tavrel
