#pragma once

#include "editor/BlockTokens.h"
#include "editor/SharedRef.h"
#include "editor/TextBlock.h"
#include "editor/TextSummary.h"
#include "platform/TextRange.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace tavrel {

class TextNode;
void retain(const TextNode* node);
void release(const TextNode* node);

/// One child of a node: another node, or a block with its tokens at the lowest level.
struct TextTreeEntry {
    TextSummary summary;
    SharedRef<const TextNode> node;
    SharedRef<const TextBlock> block;
    SharedRef<const BlockTokens> tokens;  // Empty where the whole block is foreground.
};

/// A node of the tree over a text's blocks: 1 to `maximumEntries` children, none of them empty.
///
/// Never changes; an edit makes new nodes on the way from the root to the blocks that it touches
/// and shares all others. All blocks lie equally deep. The empty text is a null root.
class TextNode {
public:
    static constexpr std::size_t maximumEntries = 32;

    /// Moves the entries in. `height` is 0 where they hold blocks.
    static SharedRef<const TextNode> make(std::size_t height, std::span<TextTreeEntry> entries);

    TextNode(const TextNode&) = delete;
    TextNode& operator=(const TextNode&) = delete;

    std::size_t height() const { return height_; }
    const TextSummary& summary() const { return summary_; }
    std::span<const TextTreeEntry> entries() const
    {
        return {reinterpret_cast<const TextTreeEntry*>(this + 1), count_};
    }

private:
    friend void retain(const TextNode* node);
    friend void release(const TextNode* node);
    TextNode(std::size_t height, std::size_t count);
    ~TextNode();

    mutable std::atomic<std::uint32_t> references_{1};
    std::uint16_t height_;
    std::uint16_t count_;
    TextSummary summary_;  // The sum of the entries, which begin right behind the object.
};

/// An entry that holds a block, and the summary of all that stands before it.
struct TextTreePlace {
    const TextTreeEntry* entry = nullptr;
    TextSummary before;
};

TextTreeEntry entryOf(SharedRef<const TextBlock> block, SharedRef<const BlockTokens> tokens = {});
TextTreeEntry entryOf(SharedRef<const TextNode> node);

/// The block that holds the unit at `location`, which lies in the text.
TextTreePlace placeOfUnit(const TextNode& root, std::size_t location);
/// The block that holds the `number`th LF or break (from 1) of the text, which has that many.
TextTreePlace placeOfLf(const TextNode& root, std::size_t number);
TextTreePlace placeOfBreak(const TextNode& root, std::size_t number);

/// Calls `visit` with each block that touches `range` and with where it starts, in order, until it
/// answers false; answers false then.
using BlockVisitor = std::function<bool(const TextTreeEntry& entry, std::size_t start)>;
bool forEachBlock(const TextNode& root, TextRange range, const BlockVisitor& visit);

/// Groups entries of one level into nodes of the next, as evenly filled as possible, and appends
/// entries for those.
void groupEntries(std::size_t height, std::vector<TextTreeEntry>& entries,
                  std::vector<TextTreeEntry>& nodes);
/// The root over entries that lie at `height`; null for none.
SharedRef<const TextNode> rootOver(std::size_t height, std::vector<TextTreeEntry> entries);

}  // namespace tavrel
