#pragma once

#include <algorithm>
#include <climits>
#include <cstddef>
#include <initializer_list>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/detail/KArrayBuffer.h>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

namespace kova::detail {

// The one implementation behind every host array (KIntArray, KPointArray, ...): a contiguous
// buffer with a length and a capacity, lengths and indices as `unsigned int` like the rest of
// the host API.
//
// - setLength(n) grows the buffer to exactly n when needed. For trivially copyable element
//   types the new elements are NOT initialised: they are about to be overwritten (typically
//   through data() by a parallel loop), and filling them first would touch every page twice.
//   Other element types (KString) are value-initialised.
// - Shrinking (setLength to a smaller length, remove) keeps the capacity, so refilling the
//   array up to its old length allocates nothing. clear() releases the buffer.
// - append/insert grow the capacity geometrically.
// - Operations that can fail return a KStatus: an index out of range gives kInvalidParameter,
//   a buffer that cannot be allocated gives kInsufficientMemory; the array is then unchanged.
// - operator[] does not check its index (it is the hot path of every loop); use set() for a
//   checked write.
// - Constructors that cannot get their memory leave the array empty.
template <class T>
class KArray {
public:
    using value_type = T;

    KArray() = default;
    KArray(const T* values, unsigned int count) { assign(values, count); }
    KArray(unsigned int count, const T& initial) {
        if (reallocate(count)) {
            std::uninitialized_fill_n(data_, count, initial);
            length_ = count;
        }
    }
    KArray(std::initializer_list<T> values) {
        assign(values.begin(), static_cast<unsigned int>(values.size()));
    }
    KArray(const KArray& other) { assign(other.data_, other.length_); }
    KArray(KArray&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), length_(std::exchange(other.length_, 0)),
          capacity_(std::exchange(other.capacity_, 0)) {}
    KArray& operator=(const KArray& other) {
        if (this != &other) {
            assign(other.data_, other.length_);
        }
        return *this;
    }
    KArray& operator=(KArray&& other) noexcept {
        if (this != &other) {
            clear();
            data_ = std::exchange(other.data_, nullptr);
            length_ = std::exchange(other.length_, 0);
            capacity_ = std::exchange(other.capacity_, 0);
        }
        return *this;
    }
    ~KArray() { clear(); }

    unsigned int length() const { return length_; }
    unsigned int capacity() const { return capacity_; }

    // Sets the number of elements; see the class comment for what new elements hold.
    KStatus setLength(unsigned int length) {
        if (length > capacity_) {
            if (KStatus status = reallocate(length); !status) {
                return status;
            }
        }
        if constexpr (std::is_trivially_copyable_v<T>) {
            length_ = length;
        } else if (length > length_) {
            std::uninitialized_value_construct(data_ + length_, data_ + length);
            length_ = length;
        } else {
            std::destroy(data_ + length, data_ + length_);
            length_ = length;
        }
        return KStatus();
    }

    // Makes room for `capacity` elements without changing the length.
    KStatus reserve(unsigned int capacity) {
        return capacity > capacity_ ? reallocate(capacity) : KStatus();
    }

    T& operator[](unsigned int index) { return data_[index]; }
    const T& operator[](unsigned int index) const { return data_[index]; }

    KStatus set(const T& value, unsigned int index) {
        if (index >= length_) {
            return outOfRange(index);
        }
        data_[index] = value;
        return KStatus();
    }

    KStatus append(const T& value) { return insert(value, length_); }

    // Inserts before `index`; an index equal to the length appends.
    KStatus insert(const T& value, unsigned int index) {
        if (index > length_) {
            return outOfRange(index);
        }
        if (length_ == UINT_MAX) {
            return KStatus(KStatus::kInsufficientMemory, "array is at its maximum length");
        }
        T item(value); // `value` may live in this array and move while the array grows
        if (length_ == capacity_) {
            if (KStatus status = reallocate(grownCapacity()); !status) {
                return status;
            }
        }
        if (index == length_) {
            ::new (static_cast<void*>(data_ + length_)) T(std::move(item));
        } else {
            ::new (static_cast<void*>(data_ + length_)) T(std::move(data_[length_ - 1]));
            std::move_backward(data_ + index, data_ + length_ - 1, data_ + length_);
            data_[index] = std::move(item);
        }
        ++length_;
        return KStatus();
    }

    KStatus remove(unsigned int index) {
        if (index >= length_) {
            return outOfRange(index);
        }
        std::move(data_ + index + 1, data_ + length_, data_ + index);
        --length_;
        std::destroy_at(data_ + length_);
        return KStatus();
    }

    // Empties the array and releases its buffer.
    void clear() {
        std::destroy(data_, data_ + length_);
        kova::detail::freeArrayBuffer(data_, bytes(capacity_));
        data_ = nullptr;
        length_ = 0;
        capacity_ = 0;
    }

    // Makes this array a copy of `source`, reusing the buffer when it is large enough.
    KStatus copy(const KArray& source) {
        return this == &source ? KStatus() : assign(source.data_, source.length_);
    }

    // Direct access for bulk fills; valid until the next call that changes the capacity.
    T* data() { return data_; }
    const T* data() const { return data_; }
    T* begin() { return data_; }
    T* end() { return data_ + length_; }
    const T* begin() const { return data_; }
    const T* end() const { return data_ + length_; }

    bool operator==(const KArray& other) const {
        return length_ == other.length_ && std::equal(begin(), end(), other.begin());
    }

private:
    static std::size_t bytes(unsigned int count) { return std::size_t(count) * sizeof(T); }

    static KStatus outOfRange(unsigned int index) {
        KString text;
        text.format("array index ^1s is out of range", KString(std::to_string(index)));
        return KStatus(KStatus::kInvalidParameter, text);
    }

    unsigned int grownCapacity() const {
        const std::size_t wanted = std::max<std::size_t>(8, capacity_ + capacity_ / 2 + 1);
        return static_cast<unsigned int>(std::min<std::size_t>(wanted, UINT_MAX));
    }

    // Moves the elements into a buffer of exactly `capacity` (>= length) elements.
    KStatus reallocate(unsigned int capacity) {
        if (capacity == capacity_) {
            return KStatus();
        }
        T* fresh = static_cast<T*>(kova::detail::allocateArrayBuffer(bytes(capacity)));
        if (fresh == nullptr && capacity != 0) {
            return KStatus(KStatus::kInsufficientMemory, "cannot allocate the array buffer");
        }
        std::uninitialized_move(data_, data_ + length_, fresh);
        std::destroy(data_, data_ + length_);
        kova::detail::freeArrayBuffer(data_, bytes(capacity_));
        data_ = fresh;
        capacity_ = capacity;
        return KStatus();
    }

    KStatus assign(const T* values, unsigned int count) {
        if (values == nullptr && count != 0) {
            return KStatus(KStatus::kInvalidParameter, "array source is null");
        }
        if (count > capacity_) {
            T* fresh = static_cast<T*>(kova::detail::allocateArrayBuffer(bytes(count)));
            if (fresh == nullptr) {
                return KStatus(KStatus::kInsufficientMemory, "cannot allocate the array buffer");
            }
            std::uninitialized_copy_n(values, count, fresh);
            clear();
            data_ = fresh;
            capacity_ = count;
        } else {
            std::destroy(data_, data_ + length_);
            std::uninitialized_copy_n(values, count, data_);
        }
        length_ = count;
        return KStatus();
    }

    T* data_ = nullptr;
    unsigned int length_ = 0;
    unsigned int capacity_ = 0;
};

} // namespace kova::detail
