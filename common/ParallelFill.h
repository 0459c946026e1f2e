#pragma once

#include <cstddef>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>

// The converters' one rule for element-wise fills: small fills are not worth a task, so a fill
// of at most kSerialFillLimit elements runs as a plain loop on the calling thread; larger ones
// run as a parallel_for over a blocked range of grain kFillGrain with the auto partitioner.
namespace ZelvanePlugin {

inline constexpr std::size_t kSerialFillLimit = 100;
inline constexpr std::size_t kFillGrain = 100;

// Calls body(begin, end) over sub-ranges covering [0, count); every index is visited once.
template <typename Body>
void parallelFill(std::size_t count, const Body& body) {
    if (count <= kSerialFillLimit) {
        if (count > 0) {
            body(std::size_t{0}, count);
        }
        return;
    }
    tbb::parallel_for(
        tbb::blocked_range<std::size_t>(0, count, kFillGrain),
        [&body](const tbb::blocked_range<std::size_t>& range) { body(range.begin(), range.end()); },
        tbb::auto_partitioner());
}

} // namespace ZelvanePlugin
