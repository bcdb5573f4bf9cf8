#pragma once

#include "editor/TextEdit.h"
#include "editor/TextSnapshot.h"

#include <vector>

namespace tavrel {

/// One line of a block as the commands on whole blocks see it: ended by LF or CR LF.
struct BlockLine {
    TextRange content;
    TextRange terminator;  // Empty on a last line without one.
};

/// The lines of `block`, in the coordinates of `text`. Behind a final terminator there is no line
/// more; an empty block has one empty line. Costs O(block).
std::vector<BlockLine> blockLines(const TextSnapshot& text, TextRange block);

/// `block` as it reads once `edits` have been applied, which lie in it in order without overlap. It
/// shares what they leave alone with `text`. Costs O(edits log length).
TextSnapshot editedBlock(const TextSnapshot& text, TextRange block, std::vector<TextEdit> edits);

}  // namespace tavrel
