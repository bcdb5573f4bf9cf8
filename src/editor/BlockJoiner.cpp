#include "editor/BlockJoiner.h"

#include <algorithm>
#include <utility>

namespace tavrel {

void BlockJoiner::addWhole(const TextBlock* block, const BlockTokens* tokens)
{
    const std::size_t length = block->length();
    const bool bothFair = isFair(length) && (pending_.empty() || isFair(pendingLength_));
    if (length <= sizes_.maximum && bothFair) {
        flush();
        share(block, tokens);
        return;
    }
    if (pendingLength_ + length > sizes_.maximum)
        flush();
    pending_.push_back({{block, 0, length}, tokens});
    pendingLength_ += length;
}

void BlockJoiner::addPart(const TextBlock* block, const BlockTokens* tokens, std::size_t from,
                          std::size_t to)
{
    if (from >= to)
        return;
    if (from == 0 && to == block->length()) {
        addWhole(block, tokens);
        return;
    }
    pending_.push_back({{block, from, to}, tokens});
    pendingLength_ += to - from;
}

std::vector<TextTreeEntry> BlockJoiner::take()
{
    flush();
    return std::exchange(entries_, {});
}

void BlockJoiner::share(const TextBlock* block, const BlockTokens* tokens)
{
    entries_.push_back(entryOf(SharedRef<const TextBlock>::share(block),
                               SharedRef<const BlockTokens>::share(tokens)));
}

// Takes the last entry back where what is pending would be a small block behind it.
void BlockJoiner::joinWithLastEntry()
{
    if (isFair(pendingLength_) || entries_.empty() ||
        entries_.back().summary.units + pendingLength_ > sizes_.maximum)
        return;
    reopened_ = std::move(entries_.back());
    entries_.pop_back();
    const std::size_t length = reopened_.summary.units;
    pending_.insert(pending_.begin(), {{reopened_.block.get(), 0, length}, reopened_.tokens.get()});
    pendingLength_ += length;
}

void BlockJoiner::flush()
{
    if (pending_.empty())
        return;
    joinWithLastEntry();
    const Piece& first = pending_.front();
    if (pending_.size() == 1 && first.part.length() == first.part.block->length() &&
        pendingLength_ <= sizes_.maximum) {
        share(first.part.block, first.tokens);
    } else {
        // All new blocks are equally long, so that a full block which grows by a unit becomes two
        // that have room.
        const std::size_t count = (pendingLength_ + sizes_.maximum - 1) / sizes_.maximum;
        BlockTokens::Builder tokens;
        auto piece = pending_.begin();
        std::size_t done = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t end = pendingLength_ * (i + 1) / count;
            parts_.clear();
            while (done < end) {
                TextBlockPart part = piece->part;
                part.to = std::min(part.to, part.from + (end - done));
                parts_.push_back(part);
                tokens.append(piece->tokens, part.from, part.to);
                done += part.length();
                piece->part.from = part.to;
                if (piece->part.length() == 0)
                    ++piece;
            }
            entries_.push_back(entryOf(TextBlock::join(parts_), tokens.take()));
        }
    }
    pending_.clear();
    pendingLength_ = 0;
}

}  // namespace tavrel
