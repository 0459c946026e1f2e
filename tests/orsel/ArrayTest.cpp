#include <cstdint>
#include <gtest/gtest.h>
#include <orsel/Array.h>
#include <orsel/ArrayMemory.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <vector>

namespace {

using Orsel::Array;

TEST(Array, BoolsAreContiguousBytes) {
    Array<bool> flags;
    for (int i = 0; i < 100; ++i) {
        flags.push_back(i % 3 == 0);
    }
    static_assert(std::is_same_v<decltype(flags.data()), bool*>);
    for (std::size_t i = 0; i < flags.size(); ++i) {
        EXPECT_EQ(&flags[i], flags.data() + i);
        EXPECT_EQ(flags.data()[i], i % 3 == 0);
    }
}

TEST(Array, AppendingDoublesTheCapacityStartingFromOne) {
    Array<int> values;
    std::vector<std::size_t> capacities;
    for (int i = 0; i < 9; ++i) {
        values.push_back(i);
        capacities.push_back(values.capacity());
    }
    EXPECT_EQ(capacities, (std::vector<std::size_t>{1, 2, 4, 4, 8, 8, 8, 8, 16}));
    EXPECT_EQ(values.back(), 8);
}

TEST(Array, ResizeFillsWhatItAddsAndResizeForOverwriteOnlyConstructs) {
    Array<float> values(3);
    values.resize(5, 2.5f);
    EXPECT_EQ(values, (Array<float>{0, 0, 0, 2.5f, 2.5f}));
    values.resize(1);
    EXPECT_EQ(values.size(), 1u);
    EXPECT_EQ(values.capacity(), 5u);

    // Within the capacity, resizeForOverwrite neither allocates nor clears the old bytes.
    Array<std::int32_t> ints(8, 7);
    ints.resize(2);
    const std::uint64_t allocations = Orsel::ArrayStats::allocations();
    ints.resizeForOverwrite(8);
    EXPECT_EQ(Orsel::ArrayStats::allocations(), allocations);
    EXPECT_EQ(ints, (Array<std::int32_t>(8, 7)));
    ints.resize(2);
    ints.resize(8);
    EXPECT_EQ(ints[5], 0);

    Array<Orsel::String> names{"a"};
    names.resizeForOverwrite(3);
    EXPECT_EQ(names[0], "a");
    EXPECT_TRUE(names[2].empty());
}

TEST(Array, GrowingKeepsAnElementPassedFromTheArrayItself) {
    Array<Orsel::String> names{"first"};
    ASSERT_EQ(names.size(), names.capacity());
    names.push_back(names[0]);
    names.resize(4, names[1]);
    EXPECT_EQ(names, (Array<Orsel::String>{"first", "first", "first", "first"}));
}

TEST(Array, CopiesAreDeepAndMovesSteal) {
    Array<int> original{1, 2, 3};
    Array<int> copy = original;
    copy[0] = 10;
    EXPECT_EQ(original[0], 1);
    EXPECT_NE(copy.data(), original.data());

    const int* buffer = original.data();
    Array<int> moved = std::move(original);
    EXPECT_EQ(moved.data(), buffer);
    EXPECT_TRUE(original.empty());
    EXPECT_EQ(original.capacity(), 0u);

    copy = moved;
    EXPECT_EQ(copy, moved);
}

TEST(Array, ClearKeepsCapacityAndReleaseMemoryFreesIt) {
    Array<double> values(10, 1.0);
    values.clear();
    EXPECT_TRUE(values.empty());
    EXPECT_EQ(values.capacity(), 10u);
    values.push_back(2.0);
    values.shrinkToFit();
    EXPECT_EQ(values.capacity(), 1u);
    values.releaseMemory();
    EXPECT_EQ(values.capacity(), 0u);
    EXPECT_EQ(values.data(), nullptr);
}

TEST(Array, ElementsAndBuffersGoWithTheArray) {
    const std::size_t buffers = Orsel::ArrayStats::liveBuffers();
    const std::size_t bytes = Orsel::ArrayStats::liveBytes();
    Orsel::Ptr<int> shared = Orsel::make<int>(5);
    {
        Array<Orsel::Ptr<int>> pointers(4, shared);
        pointers.push_back(shared);
        EXPECT_EQ(shared.useCount(), 6u);
        pointers.pop_back();
        EXPECT_EQ(shared.useCount(), 5u);

        Array<Orsel::String> names{"x", "y"};
        Array<Array<float>> nested(3, Array<float>(5));
        EXPECT_EQ(Orsel::ArrayStats::liveBuffers(), buffers + 1 + 1 + 1 + 3);
        EXPECT_EQ(Orsel::ArrayStats::liveBytes(),
                  bytes + pointers.capacity() * sizeof(Orsel::Ptr<int>) +
                      2 * sizeof(Orsel::String) + 3 * sizeof(Array<float>) + 3 * 5 * sizeof(float));
        names = Array<Orsel::String>{};
    }
    EXPECT_TRUE(shared.isUnique());
    EXPECT_EQ(Orsel::ArrayStats::liveBuffers(), buffers);
    EXPECT_EQ(Orsel::ArrayStats::liveBytes(), bytes);
}

TEST(Array, BadIndicesAndSizesFailCleanly) {
    Array<int> values{1};
    EXPECT_THROW(values.at(1), std::out_of_range);
    EXPECT_EQ(values.at(0), 1);
    EXPECT_THROW(values.resize(Array<int>::max_size() + 1), std::length_error);
    EXPECT_EQ(values.size(), 1u);
}

TEST(Array, BuffersAreCacheLineAlignedAndBigOnesHugePageAlignedAndFullyUsable) {
    Array<char> small(3);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(small.data()) % 64, 0u);
    const std::size_t count = (64u << 20) / sizeof(std::uint32_t);
    for (int round = 0; round < 2; ++round) {
        Array<std::uint32_t> big;
        big.resizeForOverwrite(count);
        const auto address = reinterpret_cast<std::uintptr_t>(big.data());
        EXPECT_EQ(address % Orsel::ArrayMemory::kAlignment, 0u);
        if (Orsel::ArrayMemory::usesScalableAllocator()) {
            EXPECT_EQ(address % Orsel::ArrayMemory::kHugePageBytes, 0u);
        }
        for (std::size_t i = 0; i < count; ++i) {
            big[i] = static_cast<std::uint32_t>(i);
        }
        EXPECT_EQ(big[count - 1], count - 1);
    }
    Orsel::ArrayMemory::releaseCached();
}

} // namespace
