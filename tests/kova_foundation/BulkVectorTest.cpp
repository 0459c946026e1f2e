#include <cstdint>
#include <gtest/gtest.h>
#include <kova/KArrayStats.h>
#include <kova/KColor.h>
#include <kova/KFailureInjection.h>
#include <kova/detail/BulkAllocator.h>
#include <new>

using kova::detail::BulkVector;
using kova::detail::resizeForOverwrite;

namespace {

TEST(BulkVectorStorage, BehavesAsAVectorForValuesGivenExplicitly) {
    BulkVector<int> values(5, 7);
    EXPECT_EQ(values, (BulkVector<int>{7, 7, 7, 7, 7}));
    values.push_back(9);
    values.insert(values.begin(), 1);
    EXPECT_EQ(values, (BulkVector<int>{1, 7, 7, 7, 7, 7, 9}));
    BulkVector<int> copy = values;
    copy[1] = 0;
    EXPECT_EQ(values[1], 7) << "copies are deep";
    values.assign(3, -1);
    EXPECT_EQ(values, (BulkVector<int>{-1, -1, -1}));
    // Default-constructed class elements run their constructor.
    BulkVector<KColor> colors;
    colors.resize(3);
    for (const KColor& c : colors) {
        EXPECT_EQ(c, KColor(0.0f, 0.0f, 0.0f, 1.0f));
    }
}

TEST(BulkVectorStorage, IsNeitherCountedAsHostArraysNorHitByTheirInjectedFailures) {
    KFailureInjection::reset();
    const std::size_t buffers = KArrayStats::liveBuffers();
    const std::size_t bytes = KArrayStats::liveBytes();
    KFailureInjection::failAlways("KArray::allocate");
    {
        BulkVector<float> values(3 << 20, 1.5f);
        EXPECT_EQ(values.back(), 1.5f);
        EXPECT_EQ(KArrayStats::liveBuffers(), buffers);
        EXPECT_EQ(KArrayStats::liveBytes(), bytes);
    }
    KFailureInjection::reset();
}

// Sanitizer builds take every block from operator new: they neither align big blocks to huge
// pages nor return null for impossible sizes (they stop the program).
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(BulkVectorStorage, BigBuffersStartOnAHugePageAndImpossibleOnesThrow) {
    BulkVector<int> values;
    resizeForOverwrite(values, 4 << 20);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(values.data()) % (std::size_t(2) << 20), 0u);
    BulkVector<double> impossible;
    EXPECT_THROW(impossible.reserve(impossible.max_size()), std::bad_alloc);
    EXPECT_TRUE(impossible.empty());
}
#endif

TEST(ResizeForOverwrite, KeepsABufferThatIsBigEnoughAndGrowsToExactlyTheCount) {
    BulkVector<int> values(1000, 4);
    const int* buffer = values.data();
    resizeForOverwrite(values, 10);
    EXPECT_EQ(values.size(), 10u);
    resizeForOverwrite(values, 1000);
    EXPECT_EQ(values.size(), 1000u);
    EXPECT_EQ(values.data(), buffer);
    resizeForOverwrite(values, 5000);
    EXPECT_EQ(values.size(), 5000u);
    EXPECT_EQ(values.capacity(), 5000u);
    resizeForOverwrite(values, 0);
    EXPECT_TRUE(values.empty());
}

} // namespace
