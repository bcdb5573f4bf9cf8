#include "editor/BlockMemory.h"

#include <new>

namespace tavrel {

void retain(const BlockSlab* slab)
{
    slab->references_.fetch_add(1, std::memory_order_relaxed);
}

void release(const BlockSlab* slab)
{
    if (slab->references_.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    slab->~BlockSlab();
    freeLargePage(const_cast<BlockSlab*>(slab));
}

SharedRef<BlockSlab> BlockSlab::make()
{
    void* page = allocateLargePage();
    return page ? SharedRef<BlockSlab>::adopt(new (page) BlockSlab) : SharedRef<BlockSlab>();
}

const BlockSlab* BlockSlab::holding(const void* object)
{
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(object);
    return reinterpret_cast<const BlockSlab*>(address - address % largePageBytes);
}

void* BlockSlab::allocate(std::size_t bytes)
{
    if (bytes > largePageBytes)
        return nullptr;
    bytes = (bytes + alignof(std::max_align_t) - 1) / alignof(std::max_align_t) *
            alignof(std::max_align_t);
    if (largePageBytes - used_ < bytes)
        return nullptr;
    void* memory = reinterpret_cast<char*>(this) + used_;
    used_ += bytes;
    return memory;
}

BlockMemory::Piece BlockMemory::allocate(std::size_t bytes)
{
    if (fromHeap_ >= heapBytes) {
        void* memory = slab_ ? slab_->allocate(bytes) : nullptr;
        if (!memory) {
            slab_ = BlockSlab::make();
            memory = slab_ ? slab_->allocate(bytes) : nullptr;
        }
        if (memory)
            return {memory, slab_.get()};
    }
    fromHeap_ += bytes;
    return {::operator new(bytes), nullptr};
}

}  // namespace tavrel
