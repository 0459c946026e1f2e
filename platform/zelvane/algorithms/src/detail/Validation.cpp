#include "detail/Validation.h"

#include "detail/Grain.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_reduce.h>

namespace Zelvane::GeometryAlgorithms::detail {

namespace {

// True when `holds(i)` is true for every i in [first, last); stops early in each chunk.
template <class Predicate>
bool allOf(std::size_t first, std::size_t last, Predicate holds) {
    return tbb::parallel_reduce(
        tbb::blocked_range<std::size_t>(first, last, kElementGrain), true,
        [&holds](const tbb::blocked_range<std::size_t>& range, bool valid) {
            for (std::size_t i = range.begin(); valid && i != range.end(); ++i) {
                valid = holds(i);
            }
            return valid;
        },
        [](bool a, bool b) { return a && b; });
}

} // namespace

bool isPrefixSum(std::span<const std::uint32_t> offsets, std::size_t total) {
    if (offsets.empty() || offsets.front() != 0 || offsets.back() != total) {
        return false;
    }
    return allOf(1, offsets.size(),
                 [offsets](std::size_t i) { return offsets[i - 1] <= offsets[i]; });
}

bool allBelow(std::span<const std::uint32_t> indices, std::size_t bound) {
    return allOf(0, indices.size(), [indices, bound](std::size_t i) { return indices[i] < bound; });
}

} // namespace Zelvane::GeometryAlgorithms::detail
