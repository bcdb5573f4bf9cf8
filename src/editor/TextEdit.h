#pragma once

#include "editor/TextSnapshot.h"
#include "platform/TextRange.h"

namespace tavrel {

/// One replacement of a batch. The range is in before-coordinates: those of the text before any
/// edit of the batch is applied.
struct TextEdit {
    TextRange range;
    TextSnapshot replacement;
};

}  // namespace tavrel
