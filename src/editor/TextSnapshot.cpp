#include "editor/TextSnapshot.h"

#include "editor/TextTree.h"
#include "editor/TextTreeEdits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <utility>

namespace tavrel {

TextSnapshot::TextSnapshot(std::u16string_view text, std::size_t blockSize)
{
    blockSize = std::clamp<std::size_t>(blockSize, 1, TextBlock::maximumUnits);
    std::vector<TextTreeEntry> entries;
    for (; !text.empty(); text.remove_prefix(std::min(blockSize, text.size())))
        entries.push_back(entryOf(TextBlock::make(text.substr(0, blockSize))));
    root_ = rootOver(0, std::move(entries));
}

std::size_t TextSnapshot::length() const
{
    return root_ ? root_->summary().units : 0;
}

char16_t TextSnapshot::unitAt(std::size_t location) const
{
    if (location >= length())
        return 0;
    const TextTreePlace place = placeOfUnit(*root_, location);
    return place.entry->block->unitAt(location - place.before.units);
}

std::u16string TextSnapshot::text(TextRange range) const
{
    range = clampedRange(range, length());
    std::u16string copy(range.length, 0);
    char16_t* target = copy.data();
    forEachPiece(range, [&](const TextPiece& piece) {
        if (piece.narrow)
            target = std::copy_n(piece.narrow, piece.length, target);
        else
            target = std::copy_n(piece.wide, piece.length, target);
        return true;
    });
    return copy;
}

namespace {

// A key that erases at thousands of cursors takes a slice of one unit at each. Most of these are
// the same few, so they are made once.
std::optional<TextSnapshot> oneCommonUnit(const TextSnapshot& text, std::size_t location)
{
    static const auto common = [] {
        std::array<TextSnapshot, 0x80> units;
        for (char16_t unit = 0; unit < units.size(); ++unit)
            units[unit] = TextSnapshot(std::u16string_view(&unit, 1));
        return units;
    }();
    const char16_t unit = text.unitAt(location);
    if (unit >= common.size() || text.tokenAt(location) != SyntaxToken::foreground)
        return std::nullopt;
    return common[unit];
}

}  // namespace

TextSnapshot TextSnapshot::slice(TextRange range) const
{
    range = clampedRange(range, length());
    if (range.length == length())
        return *this;
    if (range.isEmpty())
        return {};
    if (range.length == 1) {
        if (std::optional<TextSnapshot> one = oneCommonUnit(*this, range.location))
            return *std::move(one);
    }
    const std::array edits{TextEdit{{0, range.location}, {}},
                           TextEdit{{range.end(), length() - range.end()}, {}}};
    // Any block is long enough to be shared as it is.
    const BlockSizes sizes{TextBlock::maximumUnits, 1};
    return TextSnapshot(appliedEdits(root_, edits, sizes, InsertedTokens::kept));
}

void TextSnapshot::forEachPiece(TextRange range,
                                const std::function<bool(const TextPiece&)>& visit) const
{
    range = clampedRange(range, length());
    if (range.isEmpty())
        return;
    forEachBlock(*root_, range, [&](const TextTreeEntry& entry, std::size_t start) {
        const TextBlock& block = *entry.block;
        const std::size_t from = std::max(range.location, start) - start;
        const std::size_t to = std::min(range.end() - start, block.length());
        TextPiece piece;
        if (block.isNarrow())
            piece.narrow = block.narrowUnits() + from;
        else
            piece.wide = block.wideUnits() + from;
        piece.length = to - from;
        piece.isAscii = block.isAscii();
        return visit(piece);
    });
}

void TextSnapshot::forEachChunk(TextRange range,
                                const std::function<bool(std::u16string_view)>& visit) const
{
    std::array<char16_t, 4096> decoded;
    forEachPiece(range, [&](const TextPiece& piece) {
        if (piece.wide)
            return visit({piece.wide, piece.length});
        for (std::size_t done = 0; done < piece.length; done += decoded.size()) {
            const std::size_t step = std::min(decoded.size(), piece.length - done);
            std::copy_n(piece.narrow + done, step, decoded.data());
            if (!visit({decoded.data(), step}))
                return false;
        }
        return true;
    });
}

SyntaxToken TextSnapshot::tokenAt(std::size_t location) const
{
    if (location >= length())
        return SyntaxToken::foreground;
    const TextTreePlace place = placeOfUnit(*root_, location);
    return BlockTokens::tokenAt(place.entry->tokens.get(), location - place.before.units);
}

TokenRuns TextSnapshot::tokens(TextRange range) const
{
    range = clampedRange(range, length());
    TokenRuns runs;
    if (range.isEmpty())
        return runs;
    forEachBlock(*root_, range, [&](const TextTreeEntry& entry, std::size_t start) {
        BlockTokens::appendTo(runs, entry.tokens.get(), std::max(range.location, start) - start,
                              std::min(range.end() - start, entry.summary.units));
        return true;
    });
    return runs;
}

std::optional<std::string> TextSnapshot::rawBytesAt(std::size_t location) const
{
    if (location >= length())
        return std::nullopt;
    const TextTreePlace place = placeOfUnit(*root_, location);
    const std::size_t offset = location - place.before.units;
    const std::span<const RawByteMark> marks = place.entry->block->marks(offset, offset + 1);
    if (marks.empty())
        return std::nullopt;
    return std::string(marks.front().bytes.begin(),
                       marks.front().bytes.begin() + marks.front().count);
}

namespace {

bool isEqual(const TextPiece& left, std::size_t leftFrom, const TextPiece& right,
             std::size_t rightFrom, std::size_t count)
{
    if (left.narrow && right.narrow)
        return std::memcmp(left.narrow + leftFrom, right.narrow + rightFrom, count) == 0;
    if (left.narrow)
        return std::equal(left.narrow + leftFrom, left.narrow + leftFrom + count,
                          right.wide + rightFrom);
    if (right.narrow)
        return std::equal(left.wide + leftFrom, left.wide + leftFrom + count,
                          right.narrow + rightFrom);
    return std::equal(left.wide + leftFrom, left.wide + leftFrom + count, right.wide + rightFrom);
}

std::size_t memoryOf(const TextNode& node)
{
    std::size_t bytes = sizeof(TextNode) + node.entries().size() * sizeof(TextTreeEntry);
    for (const TextTreeEntry& entry : node.entries()) {
        bytes += entry.block ? entry.block->memoryBytes() : memoryOf(*entry.node);
        bytes += entry.tokens ? entry.tokens->memoryBytes() : 0;
    }
    return bytes;
}

}  // namespace

bool TextSnapshot::operator==(const TextSnapshot& other) const
{
    if (root_ == other.root_)
        return true;
    if (length() != other.length())
        return false;
    bool equal = true;
    std::size_t location = 0;
    forEachPiece({0, length()}, [&](const TextPiece& mine) {
        std::size_t done = 0;
        other.forEachPiece({location, mine.length}, [&](const TextPiece& theirs) {
            const bool isShared =
                mine.narrow ? mine.narrow + done == theirs.narrow : mine.wide + done == theirs.wide;
            equal = isShared || isEqual(mine, done, theirs, 0, theirs.length);
            done += theirs.length;
            return equal;
        });
        location += mine.length;
        return equal;
    });
    return equal;
}

bool TextSnapshot::operator==(std::u16string_view other) const
{
    if (length() != other.size())
        return false;
    bool equal = true;
    forEachPiece({0, length()}, [&](const TextPiece& piece) {
        equal = isEqual(piece, 0, {nullptr, other.data(), piece.length}, 0, piece.length);
        other.remove_prefix(piece.length);
        return equal;
    });
    return equal;
}

std::size_t TextSnapshot::memoryBytes() const
{
    return root_ ? memoryOf(*root_) : 0;
}

}  // namespace tavrel
