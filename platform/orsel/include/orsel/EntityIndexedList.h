#pragma once

#include <cstddef>
#include <orsel/Array.h>
#include <utility>

namespace Orsel {

/// A list whose entries are addressed by the index `append` returned. Entries are never
/// removed, so an index stays valid for the life of the list.
template <class T>
class EntityIndexedList {
public:
    /// Appends `value` and returns its index.
    std::size_t append(T value) {
        items_.push_back(std::move(value));
        return items_.size() - 1;
    }

    std::size_t size() const noexcept { return items_.size(); }
    bool empty() const noexcept { return items_.empty(); }
    const T& operator[](std::size_t index) const noexcept { return items_[index]; }
    T& operator[](std::size_t index) noexcept { return items_[index]; }
    const T* begin() const noexcept { return items_.begin(); }
    const T* end() const noexcept { return items_.end(); }

private:
    Array<T> items_;
};

} // namespace Orsel
