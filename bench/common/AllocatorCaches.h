#pragma once

// Hands every cached free block of the process's allocators back to the system (graph arrays,
// oneTBB's scalable allocator behind the host's big arrays, and malloc), so that the next
// conversion maps fresh memory as a first evaluation does.

#include <malloc.h>
#include <oneapi/tbb/scalable_allocator.h>
#include <orsel/ArrayMemory.h>

namespace bench {

inline void dropAllocatorCaches() {
    Orsel::ArrayMemory::releaseCached();
    scalable_allocation_command(TBBMALLOC_CLEAN_ALL_BUFFERS, nullptr);
    malloc_trim(0);
}

} // namespace bench
