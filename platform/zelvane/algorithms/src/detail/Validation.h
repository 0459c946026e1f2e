#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace Zelvane::GeometryAlgorithms::detail {

// Checks of flat index tables, run in parallel; they read only inside the spans given.

// True when `offsets` is an exclusive prefix sum: not empty, starting at 0, non-decreasing and
// ending at `total`.
bool isPrefixSum(std::span<const std::uint32_t> offsets, std::size_t total);

// True when every entry of `indices` is below `bound`.
bool allBelow(std::span<const std::uint32_t> indices, std::size_t bound);

} // namespace Zelvane::GeometryAlgorithms::detail
