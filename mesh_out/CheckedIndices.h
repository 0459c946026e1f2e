#pragma once

#include "common/ParallelFill.h"

#include <cstddef>
#include <cstdint>

namespace ZelvanePlugin {

// Copies `count` graph indices into a host int array `to` (or, with `to` null, only reads them)
// in parallel, checking each against `limit`, the size of what they index. The loop has no
// branches (it vectorises); a range holding an index at or past the limit is scanned again and
// fault(k) is called for its first one, so the smallest faulty k of all is among those given.
template <class Fault>
void copyCheckedIndices(const std::uint32_t* indices, std::size_t count, std::uint32_t limit,
                        int* to, const Fault& fault) {
    const auto scan = [indices, limit, to, &fault]<bool Copy>(std::size_t begin, std::size_t end) {
        const std::uint32_t* from = indices; // locals: the loop must not reload the closure
        int* target = to;
        const std::uint32_t bound = limit;
        unsigned faulty = 0;
#pragma omp simd reduction(| : faulty)
        for (std::size_t k = begin; k < end; ++k) {
            if constexpr (Copy) {
                target[k] = static_cast<int>(from[k]);
            }
            faulty |= from[k] >= bound ? 1u : 0u;
        }
        for (std::size_t k = begin; faulty != 0 && k < end; ++k) {
            if (indices[k] >= limit) {
                fault(k);
                return;
            }
        }
    };
    parallelFill(count, [&scan, to](std::size_t begin, std::size_t end) {
        if (to != nullptr) {
            scan.template operator()<true>(begin, end);
        } else {
            scan.template operator()<false>(begin, end);
        }
    });
}

} // namespace ZelvanePlugin
