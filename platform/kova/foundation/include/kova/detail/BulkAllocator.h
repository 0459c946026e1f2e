#pragma once

#include <cstddef>
#include <kova/detail/KArrayBuffer.h>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace kova::detail {

// A standard allocator for the host's big element storage (mesh points, connects, UVs ...):
//  - memory comes from allocateBlock, so big blocks ask for huge pages and freed big blocks are
//    kept for reuse by the next evaluation; it is not counted as host array memory and no
//    injected host array failure applies to it;
//  - elements constructed without a value are default-initialised: growing a vector of numbers
//    leaves the new elements unset instead of zero-filling memory that is about to be
//    overwritten (see resizeForOverwrite);
//  - like std::allocator, it throws std::bad_alloc when the memory cannot be had.
template <class T>
class BulkAllocator {
public:
    using value_type = T;

    BulkAllocator() = default;
    template <class U>
    BulkAllocator(const BulkAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        if (count > std::size_t(-1) / sizeof(T)) {
            throw std::bad_array_new_length();
        }
        void* block = allocateBlock(count * sizeof(T));
        if (block == nullptr && count > 0) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(block);
    }
    void deallocate(T* values, std::size_t count) noexcept { freeBlock(values, count * sizeof(T)); }

    template <class U>
    void construct(U* at) noexcept(std::is_nothrow_default_constructible_v<U>) {
        ::new (static_cast<void*>(at)) U;
    }
    template <class U, class... Args>
    void construct(U* at, Args&&... args) {
        ::new (static_cast<void*>(at)) U(std::forward<Args>(args)...);
    }

    template <class U>
    bool operator==(const BulkAllocator<U>&) const noexcept {
        return true;
    }
};

template <class T>
using BulkVector = std::vector<T, BulkAllocator<T>>;

// Gives `values` `count` elements whose contents the caller overwrites next: the old contents
// are dropped, not copied; the buffer is kept when it is big enough, else released before the
// new one is taken, so that two big buffers are never held at once.
template <class T>
void resizeForOverwrite(BulkVector<T>& values, std::size_t count) {
    if (values.capacity() < count) {
        BulkVector<T>().swap(values);
    }
    values.clear();
    values.resize(count);
}

} // namespace kova::detail
