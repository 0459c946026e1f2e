#pragma once

#include <cstddef>
#include <kova/KExport.h>

namespace kova::detail {

// Blocks of 1 MiB and more come from oneTBB's scalable allocator, which is asked once per
// process to back large blocks with huge pages and keeps freed large blocks for reuse, so
// repeated evaluations do not pay first-touch page faults again. Smaller blocks come from the
// global operator new. Every block is 64-byte aligned. Returns null when the memory cannot be
// had; never throws. Builds with AddressSanitizer or ThreadSanitizer take every block from
// operator new, which they track.
KOVA_API void* allocateBlock(std::size_t bytes);
// Releases a block of allocateBlock; `bytes` must be the size it was allocated with.
KOVA_API void freeBlock(void* buffer, std::size_t bytes);

// A host array's buffer: a block as above, counted in KArrayStats; null also when an injected
// "KArray::allocate" failure is armed.
KOVA_API void* allocateArrayBuffer(std::size_t bytes);
// Releases a buffer of allocateArrayBuffer; `bytes` must be the size it was allocated with.
KOVA_API void freeArrayBuffer(void* buffer, std::size_t bytes);

} // namespace kova::detail
