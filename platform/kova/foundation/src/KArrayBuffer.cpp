#include <atomic>
#include <cstdint>
#include <kova/KArrayStats.h>
#include <kova/KFailureInjection.h>
#include <kova/detail/KArrayBuffer.h>
#include <new>
#include <oneapi/tbb/scalable_allocator.h>
#include <sys/mman.h>

namespace {

constexpr std::size_t kBigBuffer = std::size_t(1) << 20;

// Sanitizers only see memory of the global allocator: in sanitizer builds every buffer comes
// from it, so that overflows are caught and reuse between threads is understood. GCC names
// sanitizer builds with macros, clang (before 17) only through __has_feature.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define KOVA_SANITIZER_BUILD 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(KOVA_SANITIZER_BUILD)
constexpr bool kUseScalableAllocator = false;
#else
constexpr bool kUseScalableAllocator = true;
#endif
constexpr std::size_t kAlignment = 64;
// Buffers of a huge page or more start on a huge-page boundary and ask for transparent huge
// pages: first touches of big arrays then cost one fault per 2 MiB instead of per 4 KiB.
constexpr std::size_t kHugePage = std::size_t(2) << 20;

std::atomic<std::size_t> liveBufferCount{0};
std::atomic<std::size_t> liveByteCount{0};

void requestHugePages() {
    static const bool requested = [] {
        scalable_allocation_mode(TBBMALLOC_USE_HUGE_PAGES, 1);
        scalable_allocation_mode(TBBMALLOC_SET_HUGE_SIZE_THRESHOLD, kBigBuffer);
        return true;
    }();
    (void)requested;
}

// Huge buffers span whole huge pages: a tail left to ordinary pages would cost one fault per
// 4 KiB, up to 512 of them, more than zeroing the rest of its huge page.
std::size_t wholeHugePages(std::size_t bytes) {
    const std::size_t mask = kHugePage - 1;
    return bytes > ~mask ? bytes : (bytes + mask) & ~mask;
}

} // namespace

namespace kova::detail {

void* allocateBlock(std::size_t bytes) {
    if (bytes == 0) {
        return nullptr;
    }
    if (kUseScalableAllocator && bytes >= kBigBuffer) {
        requestHugePages();
        const bool huge = bytes >= kHugePage;
        const std::size_t reserved = huge ? wholeHugePages(bytes) : bytes;
        void* buffer = scalable_aligned_malloc(reserved, huge ? kHugePage : kAlignment);
        if (buffer != nullptr && huge) {
            // Advice only: without transparent huge pages the ordinary pages still work.
            madvise(buffer, reserved, MADV_HUGEPAGE);
        }
        return buffer;
    }
    return ::operator new(bytes, std::align_val_t(kAlignment), std::nothrow);
}

void freeBlock(void* buffer, std::size_t bytes) {
    if (buffer == nullptr) {
        return;
    }
    if (kUseScalableAllocator && bytes >= kBigBuffer) {
        scalable_aligned_free(buffer);
    } else {
        ::operator delete(buffer, std::align_val_t(kAlignment));
    }
}

void* allocateArrayBuffer(std::size_t bytes) {
    if (bytes == 0 || KFailureInjection::shouldFail("KArray::allocate")) {
        return nullptr;
    }
    void* buffer = allocateBlock(bytes);
    if (buffer != nullptr) {
        liveBufferCount.fetch_add(1, std::memory_order_relaxed);
        liveByteCount.fetch_add(bytes, std::memory_order_relaxed);
    }
    return buffer;
}

void freeArrayBuffer(void* buffer, std::size_t bytes) {
    if (buffer == nullptr) {
        return;
    }
    freeBlock(buffer, bytes);
    liveBufferCount.fetch_sub(1, std::memory_order_relaxed);
    liveByteCount.fetch_sub(bytes, std::memory_order_relaxed);
}

} // namespace kova::detail

std::size_t KArrayStats::liveBuffers() {
    return liveBufferCount.load(std::memory_order_relaxed);
}

std::size_t KArrayStats::liveBytes() {
    return liveByteCount.load(std::memory_order_relaxed);
}
