#pragma once

#include "editor/TextSnapshot.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tavrel {

/// What a command wants done at one cursor. All locations are in the text as it stands before the
/// whole operation.
struct MultiCursorEdit {
    TextRange range;
    TextSnapshot replacement;
    /// Where the cursor goes; absent, it goes behind the replacement.
    std::optional<std::size_t> cursorAfterLocation;
};

struct ResolvedMultiCursorEdit : MultiCursorEdit {
    /// The edit was made for the primary cursor.
    bool isPrimary = false;
};

/// An edit that changes nothing and keeps its cursor where it is.
ResolvedMultiCursorEdit emptyEditAt(std::size_t location, bool isPrimary);

/// Marks the edits whose range ends at the primary cursor as its own.
std::vector<ResolvedMultiCursorEdit> resolvedEdits(std::vector<MultiCursorEdit> edits,
                                                   std::size_t primaryLocation);

/// The edits that are carried out, in the order of their places: clamped to the text, stably
/// sorted, and without those that begin before the end of one kept earlier.
std::vector<ResolvedMultiCursorEdit> applicableEdits(std::vector<ResolvedMultiCursorEdit> edits,
                                                     std::size_t textLength);

}  // namespace tavrel
