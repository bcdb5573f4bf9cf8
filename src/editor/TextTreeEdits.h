#pragma once

#include "editor/BlockJoiner.h"
#include "editor/TextEdit.h"
#include "editor/TextTree.h"

#include <cstddef>
#include <span>

namespace tavrel {

/// What becomes of the tokens of inserted text.
enum class InsertedTokens { dropped, kept };

/// The text of `root` with all edits applied, in one pass from left to right that makes each
/// touched block once and shares the rest.
///
/// The edits lie in the text, in order, without overlap; several may be empty at one place. Costs
/// O(edits · log n) and the size of what is inserted.
SharedRef<const TextNode> appliedEdits(const SharedRef<const TextNode>& root,
                                       std::span<const TextEdit> edits, BlockSizes sizes,
                                       InsertedTokens tokens);

/// The text of `root` with the tokens of `range`, which lies in the text, replaced by `runs`, which
/// are of its length.
SharedRef<const TextNode> paintedTree(const TextNode& root, TextRange range, const TokenRuns& runs);

}  // namespace tavrel
