#pragma once

#include <cstddef>
#include <kova/KExport.h>

namespace kova::detail {

// Buffers of 1 MiB and more come from oneTBB's scalable allocator, which is asked once per
// process to back large blocks with huge pages and keeps freed large blocks for reuse, so
// repeated evaluations do not pay first-touch page faults again. Smaller buffers come from the
// global operator new. Every buffer is 64-byte aligned. Returns null when the memory cannot be
// had or when an injected "KArray::allocate" failure is armed; never throws. Builds with
// AddressSanitizer or ThreadSanitizer take every buffer from operator new, which they track.
KOVA_API void* allocateArrayBuffer(std::size_t bytes);
// Releases a buffer of allocateArrayBuffer; `bytes` must be the size it was allocated with.
KOVA_API void freeArrayBuffer(void* buffer, std::size_t bytes);

} // namespace kova::detail
