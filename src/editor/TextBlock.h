#pragma once

#include "editor/BlockMemory.h"
#include "editor/LineBreaks.h"
#include "editor/SharedRef.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace tavrel {

class TextBlock;
void retain(const TextBlock* block);
void release(const TextBlock* block);

/// A mark on a U+FFFD that stands for bytes which are no UTF-8, so that saving can give them back.
struct RawByteMark {
    std::uint16_t offset = 0;  // Units from the start of the block.
    std::uint8_t count = 0;    // 1 to 3.
    std::array<std::uint8_t, 3> bytes{};
};

/// Some units of one block. The block is held by somebody else.
struct TextBlockPart {
    const TextBlock* block = nullptr;
    std::size_t from = 0;
    std::size_t to = 0;
    std::size_t length() const { return to - from; }
};

/// A stretch of text that never changes: 1 to 65,536 units in one allocation, with their marks.
///
/// The units take one byte each where all are below U+0100, else two. Shared by any number of
/// trees and threads through `SharedRef`.
class TextBlock {
public:
    static constexpr std::size_t maximumUnits = 65536;

    /// A block of `units` (1 to `maximumUnits`) and their marks, in the order of their offsets. It
    /// lies in `memory`, else on the heap.
    static SharedRef<const TextBlock> make(std::u16string_view units,
                                           std::span<const RawByteMark> marks = {},
                                           BlockMemory* memory = nullptr);
    /// A block of bytes that are all below 0x80.
    static SharedRef<const TextBlock> makeAscii(std::span<const std::uint8_t> bytes,
                                                BlockMemory* memory = nullptr);
    /// A block of all parts in order, together 1 to `maximumUnits` units, with their marks.
    static SharedRef<const TextBlock> join(std::span<const TextBlockPart> parts);

    TextBlock(const TextBlock&) = delete;
    TextBlock& operator=(const TextBlock&) = delete;

    std::size_t length() const { return length_; }
    /// One of the two is null: the units lie in the other.
    const std::uint8_t* narrowUnits() const { return isNarrow_ ? bytes() : nullptr; }
    const char16_t* wideUnits() const { return isNarrow_ ? nullptr : wide(); }
    char16_t unitAt(std::size_t offset) const
    {
        return isNarrow_ ? static_cast<char16_t>(bytes()[offset]) : wide()[offset];
    }
    /// Copies the units from `from` to `to` out.
    void copyUnits(std::size_t from, std::size_t to, char16_t* target) const;

    bool isNarrow() const { return isNarrow_; }
    bool isAscii() const { return isAscii_; }

    /// Of the block by itself: an LF at its start is a break here.
    std::size_t lfCount() const { return lfs_; }
    std::size_t breakCount() const { return breaks_; }
    bool startsWithLf() const { return unitAt(0) == u'\n'; }
    bool endsWithCr() const { return unitAt(length_ - 1) == u'\r'; }

    /// LFs, or breaks that begin, in the first `end` units.
    std::size_t lfsBefore(std::size_t end) const;
    std::size_t breaksBefore(std::size_t end, bool afterCr) const;
    /// Where the `number`th of them (from 1) stands; `length()` when there are fewer.
    std::size_t lfOffset(std::size_t number) const;
    std::size_t breakOffset(std::size_t number, bool afterCr) const;

    std::span<const RawByteMark> marks() const { return {markData(), markCount_}; }
    /// The marks of the units from `from` to `to`.
    std::span<const RawByteMark> marks(std::size_t from, std::size_t to) const;

    /// Bytes of memory that the block takes.
    std::size_t memoryBytes() const;

private:
    friend void retain(const TextBlock* block);
    friend void release(const TextBlock* block);

    TextBlock(std::size_t length, bool isNarrow, std::size_t markCount);
    ~TextBlock() = default;
    static TextBlock* allocate(std::size_t length, bool isNarrow, std::size_t markCount,
                               BlockMemory* memory);
    static std::size_t markOffset(std::size_t length, bool isNarrow);
    void countUnits();

    // The units begin right behind the object, the marks behind the units at an even address.
    std::uint8_t* bytes() { return reinterpret_cast<std::uint8_t*>(this + 1); }
    const std::uint8_t* bytes() const { return reinterpret_cast<const std::uint8_t*>(this + 1); }
    char16_t* wide() { return reinterpret_cast<char16_t*>(this + 1); }
    const char16_t* wide() const { return reinterpret_cast<const char16_t*>(this + 1); }
    RawByteMark* markData();
    const RawByteMark* markData() const;

    mutable std::atomic<std::uint32_t> references_{1};
    std::uint32_t length_;
    std::uint32_t lfs_ = 0;
    std::uint32_t breaks_ = 0;
    std::uint32_t markCount_;
    bool isNarrow_;
    bool isAscii_ = false;
    bool hasOnlyLfs_ = true;
    bool isInSlab_ = false;  // Else the block has its memory from the heap.
};

}  // namespace tavrel
