#pragma once

#include "editor/CursorLocations.h"
#include "editor/TextSnapshot.h"
#include "platform/TextRange.h"

namespace tavrel {

/// What is noted between the moment before a change of the text view and the one after it.
struct PendingEditorEdit {
    TextRange replacementRange;
    TextSnapshot replacedText;
    TextSnapshot insertedText;
    TextRange beforeSelection;
    CursorLocations beforeSecondaryCursorLocations;
    bool beforeIsModified = false;
};

}  // namespace tavrel
