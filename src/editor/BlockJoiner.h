#pragma once

#include "editor/TextTree.h"

#include <cstddef>
#include <vector>

namespace tavrel {

/// How long blocks become, in units.
struct BlockSizes {
    std::size_t maximum;  // 1 to `TextBlock::maximumUnits`.
    std::size_t fair;     // A shorter block is joined with its neighbours where they fit into one.

    static constexpr BlockSizes ofMaximum(std::size_t maximum) { return {maximum, maximum / 4}; }
};

/// Makes the blocks of an edited stretch from the pieces that are kept and inserted, in order.
///
/// Whole blocks of a fair size are shared; cut and small ones are joined with their neighbours, so
/// that of two blocks side by side either both are fair or they do not fit into one.
///
/// The pieces are borrowed: their owner keeps them until `take`.
class BlockJoiner {
public:
    explicit BlockJoiner(BlockSizes sizes) : sizes_(sizes) {}

    void addWhole(const TextBlock* block, const BlockTokens* tokens);
    void addPart(const TextBlock* block, const BlockTokens* tokens, std::size_t from,
                 std::size_t to);

    /// The entries of all pieces so far. The joiner starts afresh.
    std::vector<TextTreeEntry> take();

private:
    struct Piece {
        TextBlockPart part;
        const BlockTokens* tokens;
    };

    void share(const TextBlock* block, const BlockTokens* tokens);
    void joinWithLastEntry();
    void flush();
    bool isFair(std::size_t length) const { return length >= sizes_.fair; }

    BlockSizes sizes_;
    std::vector<TextTreeEntry> entries_;
    std::vector<Piece> pending_;  // Pieces that are to become new blocks.
    std::size_t pendingLength_ = 0;
    TextTreeEntry reopened_;            // Keeps a pending block that nobody else holds.
    std::vector<TextBlockPart> parts_;  // Scratch of `flush`.
};

}  // namespace tavrel
