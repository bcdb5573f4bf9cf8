#include "editor/TextBlock.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <new>
#include <vector>

namespace tavrel {

static_assert(sizeof(RawByteMark) == 6 && alignof(RawByteMark) == 2);
static_assert(sizeof(TextBlock) % alignof(char16_t) == 0);

namespace {

template<class Unit>
unsigned bitsOf(const Unit* units, std::size_t count)
{
    Unit bits = 0;
    for (std::size_t i = 0; i < count; ++i)
        bits = static_cast<Unit>(bits | units[i]);
    return bits;
}

void copyNarrowed(const char16_t* units, std::size_t count, std::uint8_t* target)
{
    for (std::size_t i = 0; i < count; ++i)
        target[i] = static_cast<std::uint8_t>(units[i]);
}

}  // namespace

void retain(const TextBlock* block)
{
    block->references_.fetch_add(1, std::memory_order_relaxed);
}

void release(const TextBlock* block)
{
    if (block->references_.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    const bool isInSlab = block->isInSlab_;
    block->~TextBlock();
    if (isInSlab)
        release(BlockSlab::holding(block));
    else
        ::operator delete(const_cast<TextBlock*>(block));
}

TextBlock::TextBlock(std::size_t length, bool isNarrow, std::size_t markCount)
    : length_(static_cast<std::uint32_t>(length)),
      markCount_(static_cast<std::uint32_t>(markCount)), isNarrow_(isNarrow)
{
}

std::size_t TextBlock::markOffset(std::size_t length, bool isNarrow)
{
    const std::size_t unitBytes = isNarrow ? length : length * sizeof(char16_t);
    return sizeof(TextBlock) + (unitBytes + 1) / 2 * 2;
}

TextBlock* TextBlock::allocate(std::size_t length, bool isNarrow, std::size_t markCount,
                               BlockMemory* memory)
{
    assert(length > 0 && length <= maximumUnits);
    const std::size_t size = markOffset(length, isNarrow) + markCount * sizeof(RawByteMark);
    const BlockMemory::Piece piece =
        memory ? memory->allocate(size) : BlockMemory::Piece{::operator new(size), nullptr};
    auto* block = new (piece.memory) TextBlock(length, isNarrow, markCount);
    if (piece.slab) {
        retain(piece.slab);
        block->isInSlab_ = true;
    }
    return block;
}

RawByteMark* TextBlock::markData()
{
    return const_cast<RawByteMark*>(std::as_const(*this).markData());
}

const RawByteMark* TextBlock::markData() const
{
    return reinterpret_cast<const RawByteMark*>(reinterpret_cast<const std::uint8_t*>(this) +
                                                markOffset(length_, isNarrow_));
}

SharedRef<const TextBlock> TextBlock::make(std::u16string_view units,
                                           std::span<const RawByteMark> marks, BlockMemory* memory)
{
    const unsigned bits = bitsOf(units.data(), units.size());
    const bool isNarrow = bits < 0x100;
    TextBlock* block = allocate(units.size(), isNarrow, marks.size(), memory);
    if (isNarrow)
        copyNarrowed(units.data(), units.size(), block->bytes());
    else
        std::copy(units.begin(), units.end(), block->wide());
    std::copy(marks.begin(), marks.end(), block->markData());
    block->isAscii_ = bits < 0x80;
    block->countUnits();
    return SharedRef<const TextBlock>::adopt(block);
}

SharedRef<const TextBlock> TextBlock::makeAscii(std::span<const std::uint8_t> bytes,
                                                BlockMemory* memory)
{
    TextBlock* block = allocate(bytes.size(), true, 0, memory);
    std::memcpy(block->bytes(), bytes.data(), bytes.size());
    block->isAscii_ = true;
    block->countUnits();
    return SharedRef<const TextBlock>::adopt(block);
}

SharedRef<const TextBlock> TextBlock::join(std::span<const TextBlockPart> parts)
{
    std::size_t length = 0;
    std::size_t markCount = 0;
    bool isNarrow = true;
    bool isAscii = true;
    bool hasOnlyLfs = true;
    for (const TextBlockPart& part : parts) {
        length += part.length();
        markCount += part.block->marks(part.from, part.to).size();
        isNarrow = isNarrow && part.block->isNarrow();
        isAscii = isAscii && part.block->isAscii();
        hasOnlyLfs = hasOnlyLfs && part.block->hasOnlyLfs_;
    }

    std::vector<RawByteMark> marks;
    marks.reserve(markCount);
    std::size_t start = 0;
    if (markCount > 0) {
        for (const TextBlockPart& part : parts) {
            for (RawByteMark mark : part.block->marks(part.from, part.to)) {
                mark.offset = static_cast<std::uint16_t>(mark.offset - part.from + start);
                marks.push_back(mark);
            }
            start += part.length();
        }
    }

    if (!isNarrow) {
        // What was cut off may have been all that needed two bytes, so the units are looked at.
        std::vector<char16_t> units(length);
        char16_t* target = units.data();
        for (const TextBlockPart& part : parts) {
            part.block->copyUnits(part.from, part.to, target);
            target += part.length();
        }
        return make({units.data(), units.size()}, marks);
    }
    // A mark stands on a U+FFFD, so a narrow block has none.
    TextBlock* block = allocate(length, true, 0, nullptr);
    std::uint8_t* target = block->bytes();
    for (const TextBlockPart& part : parts) {
        std::memcpy(target, part.block->bytes() + part.from, part.length());
        target += part.length();
    }
    // What no part has the whole has not, which saves most edits a look at all units.
    block->isAscii_ = isAscii || bitsOf(block->bytes(), length) < 0x80;
    if (hasOnlyLfs)
        block->lfs_ = block->breaks_ = static_cast<std::uint32_t>(countLfs(block->bytes(), length));
    else
        block->countUnits();
    return SharedRef<const TextBlock>::adopt(block);
}

void TextBlock::countUnits()
{
    const LineCounts counts =
        isNarrow_ ? countLines(bytes(), length_) : countLines(wide(), length_);
    lfs_ = static_cast<std::uint32_t>(counts.lfs);
    breaks_ = static_cast<std::uint32_t>(counts.breaks);
    hasOnlyLfs_ = counts.hasOnlyLfs;
}

void TextBlock::copyUnits(std::size_t from, std::size_t to, char16_t* target) const
{
    if (isNarrow_)
        std::copy(bytes() + from, bytes() + to, target);
    else
        std::copy(wide() + from, wide() + to, target);
}

std::size_t TextBlock::lfsBefore(std::size_t end) const
{
    if (lfs_ == 0 || end == length_)
        return lfs_;
    return isNarrow_ ? countLfs(bytes(), end) : countLfs(wide(), end);
}

std::size_t TextBlock::breaksBefore(std::size_t end, bool afterCr) const
{
    if (end == 0 || breaks_ == 0)
        return 0;
    if (hasOnlyLfs_)
        return lfsBefore(end) - (afterCr && startsWithLf() ? 1 : 0);
    return isNarrow_ ? countBreaks(bytes(), end, afterCr) : countBreaks(wide(), end, afterCr);
}

std::size_t TextBlock::lfOffset(std::size_t number) const
{
    return isNarrow_ ? findLf(bytes(), length_, number) : findLf(wide(), length_, number);
}

std::size_t TextBlock::breakOffset(std::size_t number, bool afterCr) const
{
    if (hasOnlyLfs_)
        return lfOffset(number + (afterCr && startsWithLf() ? 1 : 0));
    return isNarrow_ ? findBreak(bytes(), length_, number, afterCr)
                     : findBreak(wide(), length_, number, afterCr);
}

std::span<const RawByteMark> TextBlock::marks(std::size_t from, std::size_t to) const
{
    const auto before = [](const RawByteMark& mark, std::size_t offset) {
        return mark.offset < offset;
    };
    const RawByteMark* end = markData() + markCount_;
    const RawByteMark* first = std::lower_bound(markData(), end, from, before);
    return {first, std::lower_bound(first, end, to, before)};
}

std::size_t TextBlock::memoryBytes() const
{
    return markOffset(length_, isNarrow_) + markCount_ * sizeof(RawByteMark);
}

}  // namespace tavrel
