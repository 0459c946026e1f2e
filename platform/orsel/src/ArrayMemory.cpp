#include <atomic>
#include <cstdint>
#include <new>
#include <orsel/ArrayMemory.h>

// GCC names sanitizer builds with macros, clang (before 17) only through __has_feature.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ORSEL_SANITIZER_BUILD 1
#endif
#endif

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(ORSEL_SANITIZER_BUILD)
#define ORSEL_ARRAYS_USE_OPERATOR_NEW 1
#else
#define ORSEL_ARRAYS_USE_OPERATOR_NEW 0
#include <sys/mman.h>
#include <tbb/scalable_allocator.h>
#endif

namespace Orsel {

namespace {

std::atomic<std::size_t> gLiveBuffers{0};
std::atomic<std::size_t> gLiveBytes{0};
std::atomic<std::uint64_t> gAllocations{0};

void countAllocation(std::size_t bytes) noexcept {
    gLiveBuffers.fetch_add(1, std::memory_order_relaxed);
    gLiveBytes.fetch_add(bytes, std::memory_order_relaxed);
    gAllocations.fetch_add(1, std::memory_order_relaxed);
}

void countDeallocation(std::size_t bytes) noexcept {
    gLiveBuffers.fetch_sub(1, std::memory_order_relaxed);
    gLiveBytes.fetch_sub(bytes, std::memory_order_relaxed);
}

#if !ORSEL_ARRAYS_USE_OPERATOR_NEW

// Allocator settings, applied once per process before the first array buffer.
void configureAllocator() noexcept {
    static const bool configured = [] {
        scalable_allocation_mode(TBBMALLOC_USE_HUGE_PAGES, 1);
        scalable_allocation_mode(TBBMALLOC_SET_HUGE_SIZE_THRESHOLD, ArrayMemory::kCachedBlockBytes);
        return true;
    }();
    (void)configured;
}

// Big blocks span whole huge pages: a tail left to ordinary pages would cost one fault per
// 4 KiB, up to 512 of them, more than zeroing the rest of its huge page.
std::size_t wholeHugePages(std::size_t bytes) noexcept {
    const std::size_t mask = ArrayMemory::kHugePageBytes - 1;
    return bytes > ~mask ? bytes : (bytes + mask) & ~mask;
}

#endif

} // namespace

namespace ArrayMemory {

void* allocate(std::size_t bytes) {
#if ORSEL_ARRAYS_USE_OPERATOR_NEW
    void* block = ::operator new(bytes, std::align_val_t(kAlignment));
#else
    configureAllocator();
    const bool huge = bytes >= kHugePageBytes;
    const std::size_t reserved = huge ? wholeHugePages(bytes) : bytes;
    void* block = scalable_aligned_malloc(reserved, huge ? kHugePageBytes : kAlignment);
    if (!block) {
        throw std::bad_alloc();
    }
    if (huge) {
        // Advice only: a kernel without THP support leaves ordinary pages, which still work.
        madvise(block, reserved, MADV_HUGEPAGE);
    }
#endif
    countAllocation(bytes);
    return block;
}

void deallocate(void* buffer, std::size_t bytes) noexcept {
    if (!buffer) {
        return;
    }
    countDeallocation(bytes);
#if ORSEL_ARRAYS_USE_OPERATOR_NEW
    ::operator delete(buffer, std::align_val_t(kAlignment));
#else
    scalable_aligned_free(buffer);
#endif
}

void releaseCached() noexcept {
#if !ORSEL_ARRAYS_USE_OPERATOR_NEW
    scalable_allocation_command(TBBMALLOC_CLEAN_ALL_BUFFERS, nullptr);
#endif
}

bool usesScalableAllocator() noexcept {
    return !ORSEL_ARRAYS_USE_OPERATOR_NEW;
}

} // namespace ArrayMemory

namespace ArrayStats {

std::size_t liveBuffers() noexcept {
    return gLiveBuffers.load(std::memory_order_relaxed);
}

std::size_t liveBytes() noexcept {
    return gLiveBytes.load(std::memory_order_relaxed);
}

std::uint64_t allocations() noexcept {
    return gAllocations.load(std::memory_order_relaxed);
}

} // namespace ArrayStats

} // namespace Orsel
