#include "editor/TextTreeEdits.h"

#include <algorithm>
#include <utility>

namespace tavrel {

namespace {

// A node with fewer children than this is joined with a neighbour where both fit into one node.
constexpr std::size_t fairEntries = TextNode::maximumEntries / 4;

SharedRef<const TextNode> joinedNodes(const TextNode& left, const TextNode& right,
                                      BlockSizes sizes);

// Appends a node to its level, joining it with the one before where one of them has few children.
void appendNode(std::vector<TextTreeEntry>& level, TextTreeEntry entry, BlockSizes sizes)
{
    if (!level.empty()) {
        const std::size_t before = level.back().node->entries().size();
        const std::size_t count = entry.node->entries().size();
        if (before + count <= TextNode::maximumEntries && std::min(before, count) < fairEntries) {
            entry = entryOf(joinedNodes(*level.back().node, *entry.node, sizes));
            level.pop_back();
        }
    }
    level.push_back(std::move(entry));
}

// One node of the children of two. Their children at the seam are joined too where they are small.
SharedRef<const TextNode> joinedNodes(const TextNode& left, const TextNode& right, BlockSizes sizes)
{
    std::vector<TextTreeEntry> entries;
    if (left.height() == 0) {
        BlockJoiner joiner(sizes);
        for (const TextNode* node : {&left, &right}) {
            for (const TextTreeEntry& entry : node->entries())
                joiner.addWhole(entry.block.get(), entry.tokens.get());
        }
        entries = joiner.take();
    } else {
        for (const TextNode* node : {&left, &right}) {
            for (const TextTreeEntry& entry : node->entries())
                appendNode(entries, entry, sizes);
        }
    }
    return TextNode::make(left.height(), entries);
}

// Walks a tree and a list of edits side by side.
class EditPass {
public:
    EditPass(std::span<const TextEdit> edits, std::size_t textLength, BlockSizes sizes,
             InsertedTokens tokens)
        : edits_(edits), textLength_(textLength), sizes_(sizes), tokens_(tokens)
    {
    }

    // Appends what `entry`, which starts at `start` and holds a node, becomes to `level`.
    void editNode(const TextTreeEntry& entry, std::size_t start, std::vector<TextTreeEntry>& level)
    {
        const TextNode& node = *entry.node;
        std::vector<TextTreeEntry> children;
        children.reserve(TextNode::maximumEntries + 2);
        if (node.height() == 0) {
            BlockJoiner joiner(sizes_);
            for (const TextTreeEntry& child : node.entries()) {
                editBlock(child, start, joiner);
                start += child.summary.units;
            }
            children = joiner.take();
        } else {
            for (const TextTreeEntry& child : node.entries()) {
                const std::size_t end = start + child.summary.units;
                if (!isTouched(start, end))
                    appendNode(children, child, sizes_);
                else if (!isSwallowed(start, end))
                    editNode(child, start, children);
                start = end;
            }
        }
        std::vector<TextTreeEntry> nodes;
        groupEntries(node.height(), children, nodes);
        for (TextTreeEntry& made : nodes)
            appendNode(level, std::move(made), sizes_);
    }

    void insertAll(BlockJoiner& joiner)
    {
        for (const TextEdit& edit : edits_)
            insert(edit.replacement, joiner);
    }

private:
    // Whether the next edit reaches into a child. At a border an edit belongs to the child behind
    // it, at the end of the text to the last one.
    bool isTouched(std::size_t start, std::size_t end) const
    {
        if (next_ == edits_.size())
            return false;
        const std::size_t location = edits_[next_].range.location;
        if (location < start)
            return edits_[next_].range.end() > start;
        return location < end || (end == textLength_ && location == end);
    }

    // Whether the deletion of an edit that began further left takes all of a child; the edit is
    // then done with where it ends with the child.
    bool isSwallowed(std::size_t start, std::size_t end)
    {
        const TextRange range = edits_[next_].range;
        if (range.location >= start || range.end() < end)
            return false;
        if (range.end() > end)
            return true;
        const bool isLast = end == textLength_ && next_ + 1 < edits_.size();
        if (isLast)
            return false;  // Insertions at the end of the text follow, and they need a block.
        finishEdit();
        return true;
    }

    void editBlock(const TextTreeEntry& entry, std::size_t start, BlockJoiner& joiner)
    {
        const std::size_t end = start + entry.summary.units;
        std::size_t kept = start;
        const auto keepUpTo = [&](std::size_t location) {
            joiner.addPart(entry.block.get(), entry.tokens.get(), kept - start, location - start);
            kept = location;
        };
        while (isTouched(start, end)) {
            const TextEdit& edit = edits_[next_];
            if (!isInserted_) {
                if (edit.range.location > kept)
                    keepUpTo(edit.range.location);
                insert(edit.replacement, joiner);
                isInserted_ = true;
            }
            kept = std::max(kept, std::min(edit.range.end(), end));
            if (edit.range.end() > end)
                return;
            finishEdit();
        }
        keepUpTo(end);
    }

    void insert(const TextSnapshot& text, BlockJoiner& joiner)
    {
        if (!text.root())
            return;
        forEachBlock(*text.root(), {0, text.length()}, [&](const TextTreeEntry& entry, auto) {
            const bool keeps = tokens_ == InsertedTokens::kept;
            joiner.addWhole(entry.block.get(), keeps ? entry.tokens.get() : nullptr);
            return true;
        });
    }

    void finishEdit()
    {
        ++next_;
        isInserted_ = false;
    }

    std::span<const TextEdit> edits_;
    std::size_t textLength_;
    BlockSizes sizes_;
    InsertedTokens tokens_;
    std::size_t next_ = 0;     // The first edit that is not done with.
    bool isInserted_ = false;  // Its replacement is in place, its deletion is not at its end.
};

class PaintPass {
public:
    PaintPass(TextRange range, const TokenRuns& runs)
        : range_(range), run_(runs.runs().begin()), end_(runs.runs().end())
    {
    }

    SharedRef<const TextNode> paintNode(const TextNode& node, std::size_t start)
    {
        std::vector<TextTreeEntry> entries(node.entries().begin(), node.entries().end());
        for (TextTreeEntry& entry : entries) {
            const std::size_t end = start + entry.summary.units;
            if (end > range_.location && start < range_.end()) {
                if (entry.block)
                    entry.tokens = paintedTokens(entry, start);
                else
                    entry.node = paintNode(*entry.node, start);
            }
            start = end;
        }
        return TextNode::make(node.height(), entries);
    }

private:
    SharedRef<const BlockTokens> paintedTokens(const TextTreeEntry& entry, std::size_t start)
    {
        const std::size_t length = entry.summary.units;
        const std::size_t from = std::max(range_.location, start) - start;
        const std::size_t to = std::min(range_.end() - start, length);
        BlockTokens::Builder builder;
        builder.append(entry.tokens.get(), 0, from);
        for (std::size_t painted = from; painted < to && run_ != end_;) {
            const std::size_t step = std::min(run_->length - used_, to - painted);
            builder.append(step, run_->token);
            painted += step;
            used_ += step;
            if (used_ == run_->length) {
                ++run_;
                used_ = 0;
            }
        }
        builder.append(entry.tokens.get(), to, length);
        return builder.take();
    }

    TextRange range_;
    std::span<const TokenRuns::Run>::iterator run_;
    std::span<const TokenRuns::Run>::iterator end_;
    std::size_t used_ = 0;  // Units of `run_` that are painted.
};

}  // namespace

SharedRef<const TextNode> appliedEdits(const SharedRef<const TextNode>& root,
                                       std::span<const TextEdit> edits, BlockSizes sizes,
                                       InsertedTokens tokens)
{
    const std::size_t length = root ? root->summary().units : 0;
    EditPass pass(edits, length, sizes, tokens);
    if (!root) {
        BlockJoiner joiner(sizes);
        pass.insertAll(joiner);
        return rootOver(0, joiner.take());
    }
    std::vector<TextTreeEntry> level;
    pass.editNode(entryOf(root), 0, level);
    return rootOver(root->height() + 1, std::move(level));
}

SharedRef<const TextNode> paintedTree(const TextNode& root, TextRange range, const TokenRuns& runs)
{
    return PaintPass(range, runs).paintNode(root, 0);
}

}  // namespace tavrel
