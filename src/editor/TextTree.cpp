#include "editor/TextTree.h"

#include <algorithm>
#include <cassert>
#include <memory>
#include <new>

namespace tavrel {

static_assert(sizeof(TextNode) % alignof(TextTreeEntry) == 0);

void retain(const TextNode* node)
{
    node->references_.fetch_add(1, std::memory_order_relaxed);
}

void release(const TextNode* node)
{
    if (node->references_.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    node->~TextNode();
    ::operator delete(const_cast<TextNode*>(node));
}

TextNode::TextNode(std::size_t height, std::size_t count)
    : height_(static_cast<std::uint16_t>(height)), count_(static_cast<std::uint16_t>(count))
{
}

TextNode::~TextNode()
{
    const std::span<const TextTreeEntry> all = entries();
    std::destroy(all.begin(), all.end());
}

SharedRef<const TextNode> TextNode::make(std::size_t height, std::span<TextTreeEntry> entries)
{
    assert(!entries.empty() && entries.size() <= maximumEntries);
    void* memory = ::operator new(sizeof(TextNode) + entries.size() * sizeof(TextTreeEntry));
    auto* node = new (memory) TextNode(height, entries.size());
    for (const TextTreeEntry& entry : entries)
        node->summary_ = node->summary_ + entry.summary;
    std::uninitialized_move(entries.begin(), entries.end(),
                            reinterpret_cast<TextTreeEntry*>(node + 1));
    return SharedRef<const TextNode>::adopt(node);
}

TextTreeEntry entryOf(SharedRef<const TextBlock> block, SharedRef<const BlockTokens> tokens)
{
    const TextSummary summary{block->length(), block->lfCount(), block->breakCount(),
                              block->startsWithLf(), block->endsWithCr()};
    return {summary, {}, std::move(block), std::move(tokens)};
}

TextTreeEntry entryOf(SharedRef<const TextNode> node)
{
    const TextSummary summary = node->summary();
    return {summary, std::move(node), {}, {}};
}

namespace {

// Goes down to the first block up to whose end the text satisfies `isReached`.
template<class IsReached>
TextTreePlace firstPlace(const TextNode& root, IsReached isReached)
{
    TextSummary before;
    const TextNode* node = &root;
    for (;;) {
        const std::span<const TextTreeEntry> entries = node->entries();
        const TextTreeEntry* chosen = &entries.back();
        for (const TextTreeEntry& entry : entries) {
            const TextSummary with = before + entry.summary;
            if (&entry == &entries.back() || isReached(with)) {
                chosen = &entry;
                break;
            }
            before = with;
        }
        if (chosen->block)
            return {chosen, before};
        node = chosen->node.get();
    }
}

bool visitBlocks(const TextNode& node, std::size_t start, TextRange range,
                 const BlockVisitor& visit)
{
    for (const TextTreeEntry& entry : node.entries()) {
        const std::size_t end = start + entry.summary.units;
        if (start >= range.end())
            return true;
        if (end > range.location) {
            const bool goOn =
                entry.block ? visit(entry, start) : visitBlocks(*entry.node, start, range, visit);
            if (!goOn)
                return false;
        }
        start = end;
    }
    return true;
}

}  // namespace

TextTreePlace placeOfUnit(const TextNode& root, std::size_t location)
{
    return firstPlace(root, [=](const TextSummary& sum) { return sum.units > location; });
}

TextTreePlace placeOfLf(const TextNode& root, std::size_t number)
{
    return firstPlace(root, [=](const TextSummary& sum) { return sum.lfs >= number; });
}

TextTreePlace placeOfBreak(const TextNode& root, std::size_t number)
{
    return firstPlace(root, [=](const TextSummary& sum) { return sum.breaks >= number; });
}

bool forEachBlock(const TextNode& root, TextRange range, const BlockVisitor& visit)
{
    return range.isEmpty() || visitBlocks(root, 0, range, visit);
}

void groupEntries(std::size_t height, std::vector<TextTreeEntry>& entries,
                  std::vector<TextTreeEntry>& nodes)
{
    const std::size_t count = entries.size();
    const std::size_t nodeCount = (count + TextNode::maximumEntries - 1) / TextNode::maximumEntries;
    for (std::size_t i = 0; i < nodeCount; ++i) {
        const std::size_t from = count * i / nodeCount;
        const std::size_t to = count * (i + 1) / nodeCount;
        nodes.push_back(
            entryOf(TextNode::make(height, std::span(entries).subspan(from, to - from))));
    }
}

SharedRef<const TextNode> rootOver(std::size_t height, std::vector<TextTreeEntry> entries)
{
    if (entries.empty())
        return {};
    while (entries.size() > 1 || !entries.front().node) {
        std::vector<TextTreeEntry> nodes;
        groupEntries(height++, entries, nodes);
        entries = std::move(nodes);
    }
    SharedRef<const TextNode> root = std::move(entries.front().node);
    while (root->entries().size() == 1 && root->height() > 0)
        root = SharedRef(root->entries().front().node);
    return root;
}

}  // namespace tavrel
