#pragma once

#include "detail/ParallelLoops.h"

#include <algorithm>
#include <cstddef>
#include <tbb/blocked_range.h>
#include <tbb/parallel_reduce.h>
#include <tbb/partitioner.h>

// Copies of caller arrays into mesh storage that check the values on the way, so that a big
// array is read once, not once to validate and once more to copy; and the same checks alone.
namespace kova::mesh {

// What copyChecked saw: the first index whose value failed the check (the count when none
// did) and the sum of the values.
struct CheckedCopy {
    std::size_t firstInvalid = 0;
    std::size_t sum = 0;
};

// The loop behind copyChecked and checkValues; `to` is only written when Copy is set.
template <bool Copy, class T, class Valid>
CheckedCopy scanChecked(const T* from, std::size_t count, T* to, const Valid& valid) {
    const auto scan = [&](std::size_t begin, std::size_t end, CheckedCopy seen) {
        // One loop without branches, vectorised, over local copies (the loop must not reload
        // what the closure refers to); a range with an invalid value is scanned again for the
        // first one.
        const T* source = from;
        T* target = to;
        const Valid check = valid;
        std::size_t sum = 0;
        unsigned invalid = 0;
#pragma omp simd reduction(+ : sum) reduction(| : invalid)
        for (std::size_t i = begin; i < end; ++i) {
            const T value = source[i];
            if constexpr (Copy) {
                target[i] = value;
            }
            sum += static_cast<std::size_t>(value);
            invalid |= check(value, i) ? 0u : 1u;
        }
        seen.sum += sum;
        for (std::size_t i = begin; invalid != 0 && i < end && i < seen.firstInvalid; ++i) {
            if (!valid(from[i], i)) {
                seen.firstInvalid = i;
            }
        }
        return seen;
    };
    if (count <= detail::kSerialLimit) {
        return scan(0, count, {count, 0});
    }
    return tbb::parallel_reduce(
        tbb::blocked_range<std::size_t>(0, count, detail::kGrain), CheckedCopy{count, 0},
        [&](const tbb::blocked_range<std::size_t>& range, CheckedCopy seen) {
            return scan(range.begin(), range.end(), seen);
        },
        [](CheckedCopy a, CheckedCopy b) {
            return CheckedCopy{std::min(a.firstInvalid, b.firstInvalid), a.sum + b.sum};
        },
        tbb::auto_partitioner());
}

// Copies `count` values from `from` to `to` in parallel (see detail::forEachRange) and checks
// each with valid(value, index), which should be free of branches (combine tests with `&` and
// `|`) so that the loop vectorises. The first invalid index is the one a serial scan finds;
// the sum counts every value (cast to std::size_t), invalid ones included.
template <class T, class Valid>
CheckedCopy copyChecked(const T* from, std::size_t count, T* to, const Valid& valid) {
    return scanChecked<true>(from, count, to, valid);
}

// What copyChecked would see, without copying.
template <class T, class Valid>
CheckedCopy checkValues(const T* from, std::size_t count, const Valid& valid) {
    return scanChecked<false>(from, count, static_cast<T*>(nullptr), valid);
}

} // namespace kova::mesh
