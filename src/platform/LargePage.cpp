#include "platform/LargePage.h"

#include <cstdint>

#include <sys/mman.h>

namespace tavrel {

void* allocateLargePage()
{
    // Twice the size holds an aligned stretch; what lies around it goes back.
    void* memory = mmap(nullptr, 2 * largePageBytes, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    auto* start = static_cast<char*>(memory);
    const std::size_t past = reinterpret_cast<std::uintptr_t>(start) % largePageBytes;
    const std::size_t before = past == 0 ? 0 : largePageBytes - past;
    if (before > 0)
        munmap(start, before);
    char* page = start + before;
    munmap(page + largePageBytes, largePageBytes - before);
    // A wish: where the system cannot grant it, small pages do the same, slower.
    madvise(page, largePageBytes, MADV_HUGEPAGE);
    return page;
}

void freeLargePage(void* page)
{
    munmap(page, largePageBytes);
}

}  // namespace tavrel
