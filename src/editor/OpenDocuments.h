#pragma once

#include "editor/DocumentFiles.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>

namespace tavrel {

class EditorPane;

/// Which tab of the pane shows the file. Two paths of one file, by links or another spelling, are
/// the same file: where no path is equal, each document's file is looked up on the disk.
std::optional<std::size_t> tabShowing(const EditorPane& pane, const std::filesystem::path& path,
                                      const DocumentFiles& files);

/// The document of the file in the first of the panes that has one; null where none has.
std::shared_ptr<EditorDocument> openDocument(std::span<EditorPane* const> panes,
                                             const std::filesystem::path& path,
                                             const DocumentFiles& files);

/// Whether closing one tab on the document in `pane` leaves another view of it: in another of the
/// `panes`, or in the pane itself.
bool documentIsOpenElsewhere(const EditorDocument& document, const EditorPane& pane,
                             std::span<EditorPane* const> panes);

/// Moves a tab from one pane to another, in its state; it becomes the active one there, and the
/// pane the one that the user works in.
void moveTab(EditorPane& source, std::size_t index, EditorPane& target);

}  // namespace tavrel
