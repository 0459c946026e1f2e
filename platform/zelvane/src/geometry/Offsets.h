#pragma once

#include <cstddef>
#include <cstdint>
#include <orsel/Array.h>

namespace Zelvane::Geometry::detail {

// True when `offsets` is an exclusive prefix sum: not empty, starting at 0, non-decreasing
// and ending at `total`.
inline bool isPrefixSum(const Orsel::Array<std::uint32_t>& offsets, std::size_t total) {
    if (offsets.empty() || offsets.front() != 0 || offsets.back() != total) {
        return false;
    }
    for (std::size_t i = 1; i < offsets.size(); ++i) {
        if (offsets[i] < offsets[i - 1]) {
            return false;
        }
    }
    return true;
}

} // namespace Zelvane::Geometry::detail
