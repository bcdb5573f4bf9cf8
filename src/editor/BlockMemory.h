#pragma once

#include "editor/SharedRef.h"
#include "platform/LargePage.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace tavrel {

class BlockSlab;
void retain(const BlockSlab* slab);
void release(const BlockSlab* slab);

/// A large page that holds many blocks; it goes back to the system when the last of them has gone.
class BlockSlab {
public:
    /// Empty where the system gives no page.
    static SharedRef<BlockSlab> make();
    /// The slab that an object made in it lies in.
    static const BlockSlab* holding(const void* object);

    BlockSlab(const BlockSlab&) = delete;
    BlockSlab& operator=(const BlockSlab&) = delete;

    /// Null where too little room is left. For the thread that made the slab.
    void* allocate(std::size_t bytes);

private:
    friend void retain(const BlockSlab* slab);
    friend void release(const BlockSlab* slab);
    BlockSlab() = default;
    ~BlockSlab() = default;

    // The object stands at the start of its page.
    mutable std::atomic<std::uint32_t> references_{1};
    std::size_t used_ = sizeof(BlockSlab);
};

/// Where the blocks of a text that is being read come from: the first of them from the heap, all
/// others from slabs, which fill several times faster and go back to the system at once.
///
/// A block that is edited is remade on the heap, so a document whose file was large holds at most
/// the size of the file for blocks that it has no longer.
class BlockMemory {
public:
    struct Piece {
        void* memory = nullptr;
        BlockSlab* slab = nullptr;  // Null for the heap.
    };
    Piece allocate(std::size_t bytes);

private:
    static constexpr std::size_t heapBytes = std::size_t(1) << 20;  // Small files take no slab.

    std::size_t fromHeap_ = 0;
    SharedRef<BlockSlab> slab_;
};

}  // namespace tavrel
