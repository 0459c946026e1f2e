#pragma once

#include <algorithm>
#include <cstddef>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_reduce.h>
#include <tbb/partitioner.h>

// Element-wise loops over big mesh arrays. Loops of at most kSerialLimit elements run on the
// calling thread (a task costs more than they do); larger ones run on oneTBB over blocked
// ranges of grain kGrain with the auto partitioner. Every result is the one a serial loop
// gives, whatever the split.
namespace kova::detail {

inline constexpr std::size_t kSerialLimit = 100;
inline constexpr std::size_t kGrain = 100;

// Calls body(begin, end) over sub-ranges covering [0, count); every index is visited once.
template <class Body>
void forEachRange(std::size_t count, const Body& body) {
    if (count <= kSerialLimit) {
        if (count > 0) {
            body(std::size_t{0}, count);
        }
        return;
    }
    tbb::parallel_for(
        tbb::blocked_range<std::size_t>(0, count, kGrain),
        [&body](const tbb::blocked_range<std::size_t>& range) { body(range.begin(), range.end()); },
        tbb::auto_partitioner());
}

// Copies `count` values (converting them to the target type).
template <class From, class To>
void copyValues(const From* from, std::size_t count, To* to) {
    forEachRange(count, [&](std::size_t begin, std::size_t end) {
        std::copy(from + begin, from + end, to + begin);
    });
}

// Sets every element of `values` (a contiguous container) to `value`.
template <class Values>
void fillValues(Values& values, const typename Values::value_type& value) {
    auto* to = values.data();
    forEachRange(values.size(), [&](std::size_t begin, std::size_t end) {
        std::fill(to + begin, to + end, value);
    });
}

// The smallest index below `count` for which test(index) holds, or `count` when none does:
// where a serial scan would stop.
template <class Test>
std::size_t firstIndexWhere(std::size_t count, const Test& test) {
    const auto scan = [&](std::size_t begin, std::size_t end, std::size_t found) {
        for (std::size_t i = begin; i < end && i < found; ++i) {
            if (test(i)) {
                return i;
            }
        }
        return found;
    };
    if (count <= kSerialLimit) {
        return scan(0, count, count);
    }
    return tbb::parallel_reduce(
        tbb::blocked_range<std::size_t>(0, count, kGrain), count,
        [&](const tbb::blocked_range<std::size_t>& range, std::size_t found) {
            return scan(range.begin(), range.end(), found);
        },
        [](std::size_t a, std::size_t b) { return std::min(a, b); }, tbb::auto_partitioner());
}

// The sum of value(index) over [0, count), for integer values (exact in any order).
template <class Value>
std::size_t sumOf(std::size_t count, const Value& value) {
    const auto add = [&](std::size_t begin, std::size_t end, std::size_t sum) {
        for (std::size_t i = begin; i < end; ++i) {
            sum += static_cast<std::size_t>(value(i));
        }
        return sum;
    };
    if (count <= kSerialLimit) {
        return add(0, count, 0);
    }
    return tbb::parallel_reduce(
        tbb::blocked_range<std::size_t>(0, count, kGrain), std::size_t{0},
        [&](const tbb::blocked_range<std::size_t>& range, std::size_t sum) {
            return add(range.begin(), range.end(), sum);
        },
        [](std::size_t a, std::size_t b) { return a + b; }, tbb::auto_partitioner());
}

} // namespace kova::detail
