#pragma once

#include <atomic>
#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace Orsel {

namespace detail {

// Reference count and disposal of one shared object. Increments are relaxed; the decrement
// that frees and the uniqueness test use acquire/release, so whoever sees a count of one also
// sees every earlier owner's accesses completed (ThreadSanitizer understands this pairing).
struct RefBlock {
    using Dispose = void (*)(RefBlock*) noexcept;
    explicit RefBlock(Dispose dispose) noexcept : dispose(dispose) {}

    std::atomic<std::size_t> refs{1};
    Dispose dispose;
};

// The block and the object in one allocation.
template <class T>
struct RefBox final : RefBlock {
    template <class... Args>
    explicit RefBox(Args&&... args) : RefBlock(&disposeBox), value(std::forward<Args>(args)...) {}

    static void disposeBox(RefBlock* block) noexcept { delete static_cast<RefBox*>(block); }

    T value;
};

inline void retain(RefBlock* block) noexcept {
    if (block) {
        block->refs.fetch_add(1, std::memory_order_relaxed);
    }
}

inline void release(RefBlock* block) noexcept {
    if (block && block->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        block->dispose(block);
    }
}

} // namespace detail

template <class T>
class Ptr;
template <class T>
class MutablePtr;
template <class To, class From>
Ptr<To> staticPtrCast(const Ptr<From>& from) noexcept;
template <class To, class From>
Ptr<To> dynamicPtrCast(const Ptr<From>& from) noexcept;
template <class To, class From>
MutablePtr<To> dynamicPtrCast(MutablePtr<From>&& from) noexcept;

/// Shared, read-only ownership of a `T`.
///
/// Many `Ptr`s may point at one object; none of them can change it. Reference counting is
/// atomic, so `Ptr`s may be copied and dropped on any thread. A uniquely owned `MutablePtr`
/// converts implicitly into a `Ptr` (the object becomes shared); the way back is
/// `MutablePtr<T>::fromShared`, which copies only when the object has other owners.
template <class T>
class Ptr {
public:
    using element_type = T;

    constexpr Ptr() noexcept = default;
    constexpr Ptr(std::nullptr_t) noexcept {}
    Ptr(const Ptr& other) noexcept : object_(other.object_), block_(other.block_) {
        detail::retain(block_);
    }
    Ptr(Ptr&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)),
          block_(std::exchange(other.block_, nullptr)) {}
    template <class U>
    requires std::convertible_to<U*, T*> Ptr(const Ptr<U>& other)
    noexcept : object_(other.object_), block_(other.block_) { detail::retain(block_); }
    template <class U>
    requires std::convertible_to<U*, T*> Ptr(Ptr<U>&& other)
    noexcept
        : object_(std::exchange(other.object_, nullptr)),
          block_(std::exchange(other.block_, nullptr)) {}
    template <class U>
    requires std::convertible_to<U*, T*> Ptr(MutablePtr<U>&& unique)
    noexcept
        : object_(std::exchange(unique.object_, nullptr)),
          block_(std::exchange(unique.block_, nullptr)) {}
    ~Ptr() { detail::release(block_); }

    Ptr& operator=(Ptr other) noexcept {
        swap(other);
        return *this;
    }

    void swap(Ptr& other) noexcept {
        std::swap(object_, other.object_);
        std::swap(block_, other.block_);
    }

    const T* get() const noexcept { return object_; }
    const T& operator*() const noexcept { return *object_; }
    const T* operator->() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// Number of owners (0 for null).
    std::size_t useCount() const noexcept {
        return block_ ? block_->refs.load(std::memory_order_acquire) : 0;
    }
    /// True when this is the only owner.
    bool isUnique() const noexcept { return useCount() == 1; }
    void reset() noexcept {
        detail::release(std::exchange(block_, nullptr));
        object_ = nullptr;
    }

    friend bool operator==(const Ptr& a, const Ptr& b) noexcept { return a.object_ == b.object_; }
    friend bool operator==(const Ptr& a, std::nullptr_t) noexcept { return a.object_ == nullptr; }

private:
    template <class>
    friend class Ptr;
    template <class>
    friend class MutablePtr;
    template <class To, class From>
    friend Ptr<To> staticPtrCast(const Ptr<From>& from) noexcept;
    template <class To, class From>
    friend Ptr<To> dynamicPtrCast(const Ptr<From>& from) noexcept;

    Ptr(T* object, detail::RefBlock* block) noexcept : object_(object), block_(block) {}

    T* object_ = nullptr;
    detail::RefBlock* block_ = nullptr;
};

/// Unique, writable ownership of a `T`.
///
/// Move-only. Moving it into a `Ptr` shares the object (it is not copied). Made by
/// `Orsel::make<T>(args...)` / `MutablePtr<T>::make`, or from a `Ptr` by `fromShared`.
template <class T>
class MutablePtr {
public:
    using element_type = T;

    constexpr MutablePtr() noexcept = default;
    constexpr MutablePtr(std::nullptr_t) noexcept {}
    MutablePtr(const MutablePtr&) = delete;
    MutablePtr(MutablePtr&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)),
          block_(std::exchange(other.block_, nullptr)) {}
    template <class U>
    requires std::convertible_to<U*, T*> MutablePtr(MutablePtr<U>&& other)
    noexcept
        : object_(std::exchange(other.object_, nullptr)),
          block_(std::exchange(other.block_, nullptr)) {}
    ~MutablePtr() { detail::release(block_); }

    MutablePtr& operator=(MutablePtr other) noexcept {
        std::swap(object_, other.object_);
        std::swap(block_, other.block_);
        return *this;
    }

    /// A new `T` constructed from `args`.
    template <class... Args>
    static MutablePtr make(Args&&... args) {
        auto* box = new detail::RefBox<T>(std::forward<Args>(args)...);
        return MutablePtr(&box->value, box);
    }

    /// Takes `shared` over: the same object when `shared` was its only owner, otherwise a
    /// copy (copy-constructed as a `T`). `shared` is null afterwards; null gives null.
    static MutablePtr fromShared(Ptr<T>&& shared) requires std::copy_constructible<T> {
        if (!shared.object_) {
            return {};
        }
        if (shared.isUnique()) {
            return MutablePtr(std::exchange(shared.object_, nullptr),
                              std::exchange(shared.block_, nullptr));
        }
        MutablePtr copy = make(std::as_const(*shared.object_));
        shared.reset();
        return copy;
    }

    T* get() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    T* operator->() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    void reset() noexcept {
        detail::release(std::exchange(block_, nullptr));
        object_ = nullptr;
    }

    friend bool operator==(const MutablePtr& a, std::nullptr_t) noexcept {
        return a.object_ == nullptr;
    }

private:
    template <class>
    friend class Ptr;
    template <class>
    friend class MutablePtr;
    template <class To, class From>
    friend MutablePtr<To> dynamicPtrCast(MutablePtr<From>&& from) noexcept;

    MutablePtr(T* object, detail::RefBlock* block) noexcept : object_(object), block_(block) {}

    T* object_ = nullptr;
    detail::RefBlock* block_ = nullptr;
};

/// A new uniquely owned `T`.
template <class T, class... Args>
MutablePtr<T> make(Args&&... args) {
    return MutablePtr<T>::make(std::forward<Args>(args)...);
}

/// Same as `MutablePtr<T>::fromShared`.
template <class T>
MutablePtr<T> makeMutable(Ptr<T>&& shared) {
    return MutablePtr<T>::fromShared(std::move(shared));
}

/// Unchecked downcast: `from` must point at a `To` (or be null).
template <class To, class From>
Ptr<To> staticPtrCast(const Ptr<From>& from) noexcept {
    detail::retain(from.block_);
    return Ptr<To>(static_cast<To*>(from.object_), from.block_);
}

/// Checked cast: null when `from` is null or does not point at a `To`.
template <class To, class From>
Ptr<To> dynamicPtrCast(const Ptr<From>& from) noexcept {
    To* object = dynamic_cast<To*>(from.object_);
    if (!object) {
        return {};
    }
    detail::retain(from.block_);
    return Ptr<To>(object, from.block_);
}

/// Checked cast of a unique owner: on success `from` is moved from; on failure the result is
/// null and `from` keeps its object.
template <class To, class From>
MutablePtr<To> dynamicPtrCast(MutablePtr<From>&& from) noexcept {
    To* object = dynamic_cast<To*>(from.object_);
    if (!object) {
        return {};
    }
    from.object_ = nullptr;
    return MutablePtr<To>(object, std::exchange(from.block_, nullptr));
}

} // namespace Orsel
