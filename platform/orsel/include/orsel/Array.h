#pragma once

#include <algorithm>
#include <cassert>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>
#include <orsel/ArrayMemory.h>
#include <span>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace Orsel {

/// Contiguous storage of `T` for every `T`: `Array<bool>` holds one real `bool` per byte and
/// `data()` is a `bool*`; non-trivial types such as `Orsel::String` and `Orsel::Ptr<X>` are
/// constructed and destroyed properly.
///
/// Buffers come from `Orsel::ArrayMemory` (64-byte aligned, huge pages for big blocks).
/// Growth: `push_back`/`emplace_back` double the capacity, starting from 1; `resize`,
/// `resizeForOverwrite` and `reserve` allocate exactly what they are asked for. `clear` keeps
/// the capacity; `releaseMemory` frees the buffer; `shrinkToFit` trims it to the size.
/// Copies are deep; moves steal the buffer.
///
/// `T` must be nothrow-move-constructible (every graph element type is), so growing never
/// leaves an array half moved.
template <class T>
class Array {
    static_assert(!std::is_reference_v<T> && !std::is_const_v<T>, "Array holds plain values");
    static_assert(alignof(T) <= ArrayMemory::kAlignment, "over-aligned element type");
    static_assert(std::is_nothrow_move_constructible_v<T> && std::is_nothrow_destructible_v<T>,
                  "Array elements must move and destroy without throwing");

public:
    using value_type = T;
    using size_type = std::size_t;
    using iterator = T*;
    using const_iterator = const T*;

    Array() noexcept = default;
    explicit Array(size_type size) { resize(size); }
    Array(size_type size, const T& value) { resize(size, value); }
    Array(std::initializer_list<T> values) { constructCopies(values.begin(), values.size()); }
    Array(const Array& other) { constructCopies(other.data_, other.size_); }
    Array(Array&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)),
          capacity_(std::exchange(other.capacity_, 0)) {}
    ~Array() { releaseMemory(); }

    Array& operator=(const Array& other) {
        if (this != &other) {
            if (other.size_ <= capacity_) {
                clear();
                std::uninitialized_copy(other.begin(), other.end(), data_);
                size_ = other.size_;
            } else {
                Array copy(other);
                swap(copy);
            }
        }
        return *this;
    }
    Array& operator=(Array&& other) noexcept {
        Array moved(std::move(other));
        swap(moved);
        return *this;
    }

    void swap(Array& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }

    size_type size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    size_type capacity() const noexcept { return capacity_; }
    static constexpr size_type max_size() noexcept {
        return size_type(std::numeric_limits<std::ptrdiff_t>::max()) / sizeof(T);
    }

    T* data() noexcept { return data_; }
    const T* data() const noexcept { return data_; }
    T& operator[](size_type index) noexcept {
        assert(index < size_);
        return data_[index];
    }
    const T& operator[](size_type index) const noexcept {
        assert(index < size_);
        return data_[index];
    }
    /// Bounds-checked access; throws `std::out_of_range`.
    T& at(size_type index) { return data_[checked(index)]; }
    const T& at(size_type index) const { return data_[checked(index)]; }
    T& front() noexcept { return (*this)[0]; }
    const T& front() const noexcept { return (*this)[0]; }
    T& back() noexcept { return (*this)[size_ - 1]; }
    const T& back() const noexcept { return (*this)[size_ - 1]; }

    iterator begin() noexcept { return data_; }
    iterator end() noexcept { return data_ + size_; }
    const_iterator begin() const noexcept { return data_; }
    const_iterator end() const noexcept { return data_ + size_; }
    std::span<T> span() noexcept { return {data_, size_}; }
    std::span<const T> span() const noexcept { return {data_, size_}; }

    /// New elements are value-initialised (zero for arithmetic types).
    void resize(size_type size) {
        resizeWith(size,
                   [](T* first, T* last) { std::uninitialized_value_construct(first, last); });
    }
    /// New elements are copies of `value` (which may be an element of this array).
    void resize(size_type size, const T& value) {
        resizeWith(size,
                   [&value](T* first, T* last) { std::uninitialized_fill(first, last, value); });
    }
    /// Sizes the array for data that the caller is about to write into every new element.
    /// For trivially copyable `T` the new elements are not filled at all (their values are
    /// unspecified until written); other types are value-initialised as by `resize`.
    void resizeForOverwrite(size_type size) {
        if constexpr (std::is_trivially_copyable_v<T>) {
            resizeWith(size, [](T*, T*) {});
        } else {
            resize(size);
        }
    }
    void reserve(size_type capacity) {
        if (capacity > capacity_) {
            T* fresh = allocateBuffer(capacity);
            relocate(data_, size_, fresh);
            adopt(fresh, capacity);
        }
    }

    void push_back(const T& value) { emplace_back(value); }
    void push_back(T&& value) { emplace_back(std::move(value)); }
    /// Appends a `T` built from `args` (which may refer to elements of this array).
    template <class... Args>
    T& emplace_back(Args&&... args) {
        if (size_ < capacity_) {
            T* slot = new (data_ + size_) T(std::forward<Args>(args)...);
            ++size_;
            return *slot;
        }
        const size_type capacity = grownCapacity();
        T* fresh = allocateBuffer(capacity);
        try {
            new (fresh + size_) T(std::forward<Args>(args)...);
        } catch (...) {
            ArrayMemory::deallocate(fresh, capacity * sizeof(T));
            throw;
        }
        relocate(data_, size_, fresh);
        adopt(fresh, capacity);
        return data_[size_++];
    }
    void pop_back() noexcept {
        assert(size_ > 0);
        std::destroy_at(data_ + --size_);
    }

    /// Destroys the elements and keeps the buffer.
    void clear() noexcept {
        std::destroy(data_, data_ + size_);
        size_ = 0;
    }
    /// Trims the buffer to the size (frees it when empty).
    void shrinkToFit() {
        if (capacity_ == size_) {
            return;
        }
        if (size_ == 0) {
            releaseMemory();
            return;
        }
        T* fresh = allocateBuffer(size_);
        relocate(data_, size_, fresh);
        adopt(fresh, size_);
    }
    /// Destroys the elements and frees the buffer.
    void releaseMemory() noexcept {
        clear();
        ArrayMemory::deallocate(data_, capacity_ * sizeof(T));
        data_ = nullptr;
        capacity_ = 0;
    }

    friend bool operator==(const Array& a, const Array& b) requires std::equality_comparable<T> {
        return a.size_ == b.size_ && std::equal(a.begin(), a.end(), b.begin());
    }

private:
    // Fills an empty array without a buffer; frees the new buffer again if a copy throws.
    void constructCopies(const T* source, size_type count) {
        if (count == 0) {
            return;
        }
        T* fresh = allocateBuffer(count);
        try {
            std::uninitialized_copy(source, source + count, fresh);
        } catch (...) {
            ArrayMemory::deallocate(fresh, count * sizeof(T));
            throw;
        }
        data_ = fresh;
        size_ = count;
        capacity_ = count;
    }

    size_type checked(size_type index) const {
        if (index >= size_) {
            throw std::out_of_range("Orsel::Array index out of range");
        }
        return index;
    }

    size_type grownCapacity() const {
        if (capacity_ >= max_size() / 2) {
            throw std::length_error("Orsel::Array too long");
        }
        return capacity_ == 0 ? 1 : capacity_ * 2;
    }

    static T* allocateBuffer(size_type capacity) {
        if (capacity > max_size()) {
            throw std::length_error("Orsel::Array too long");
        }
        return static_cast<T*>(ArrayMemory::allocate(capacity * sizeof(T)));
    }

    // Moves `count` elements into uninitialised `target` and ends their lives at `source`.
    static void relocate(T* source, size_type count, T* target) noexcept {
        if (count == 0) {
            return;
        }
        if constexpr (std::is_trivially_copyable_v<T>) {
            std::memcpy(static_cast<void*>(target), source, count * sizeof(T));
        } else {
            std::uninitialized_move(source, source + count, target);
            std::destroy(source, source + count);
        }
    }

    // Replaces the (already emptied) buffer by `fresh`.
    void adopt(T* fresh, size_type capacity) noexcept {
        ArrayMemory::deallocate(data_, capacity_ * sizeof(T));
        data_ = fresh;
        capacity_ = capacity;
    }

    // Shrinks, or grows with `fill(first, last)` constructing the new elements. The new
    // elements are made before the old ones move, so `fill` may read the old elements.
    template <class Fill>
    void resizeWith(size_type size, Fill fill) {
        if (size <= size_) {
            std::destroy(data_ + size, data_ + size_);
            size_ = size;
            return;
        }
        if (size <= capacity_) {
            fill(data_ + size_, data_ + size);
            size_ = size;
            return;
        }
        T* fresh = allocateBuffer(size);
        try {
            fill(fresh + size_, fresh + size);
        } catch (...) {
            ArrayMemory::deallocate(fresh, size * sizeof(T));
            throw;
        }
        relocate(data_, size_, fresh);
        adopt(fresh, size);
        size_ = size;
    }

    T* data_ = nullptr;
    size_type size_ = 0;
    size_type capacity_ = 0;
};

} // namespace Orsel
