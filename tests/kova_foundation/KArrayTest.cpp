#include <gtest/gtest.h>
#include <kova/KArrayStats.h>
#include <kova/KColorArray.h>
#include <kova/KDoubleArray.h>
#include <kova/KFailureInjection.h>
#include <kova/KFloatPointArray.h>
#include <kova/KIntArray.h>
#include <kova/KStringArray.h>
#include <kova/KUintArray.h>
#include <numeric>
#include <thread>
#include <vector>

TEST(KArrayLength, GrowingFillsOnlyNonTrivialElements) {
    // Within its capacity an int array keeps its old values: nothing is filled.
    KIntArray a;
    ASSERT_TRUE(a.setLength(10));
    std::iota(a.begin(), a.end(), 0);
    const int* buffer = a.data();
    ASSERT_TRUE(a.setLength(2));
    EXPECT_EQ(a.capacity(), 10u);
    ASSERT_TRUE(a.setLength(10));
    EXPECT_EQ(a.data(), buffer);
    EXPECT_EQ(a, KIntArray({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    // Strings are destroyed when cut off and constructed empty when grown back.
    KStringArray s{"keep", "drop"};
    ASSERT_TRUE(s.setLength(1));
    ASSERT_TRUE(s.setLength(3));
    EXPECT_EQ(s, KStringArray({"keep", "", ""}));
}

TEST(KArrayEdit, InsertRemoveSetAndAppendKeepOrderAndCheckIndices) {
    KIntArray a{1, 2, 4};
    ASSERT_TRUE(a.insert(3, 2));
    ASSERT_TRUE(a.insert(0, 0));
    ASSERT_TRUE(a.insert(5, a.length()));
    EXPECT_EQ(a, KIntArray({0, 1, 2, 3, 4, 5}));
    ASSERT_TRUE(a.remove(0));
    ASSERT_TRUE(a.remove(4));
    ASSERT_TRUE(a.set(9, 1));
    EXPECT_EQ(a, KIntArray({1, 9, 3, 4}));

    KDoubleArray d{1.0, 2.0};
    EXPECT_EQ(d.set(5.0, 2).statusCode(), KStatus::kInvalidParameter);
    EXPECT_EQ(d.remove(2).statusCode(), KStatus::kInvalidParameter);
    EXPECT_EQ(d.insert(5.0, 3).statusCode(), KStatus::kInvalidParameter);
    EXPECT_EQ(d, KDoubleArray({1.0, 2.0}));
    EXPECT_FALSE(KIntArray().remove(0));

    // Appending an element of the array itself survives the growth that moves it.
    KStringArray s{"first"};
    for (int i = 0; i < 40; ++i) {
        ASSERT_TRUE(s.append(s[0]));
    }
    EXPECT_EQ(s.length(), 41u);
    EXPECT_EQ(s[40], "first");
}

TEST(KArrayCopy, CopiesAreIndependentAndReuseCapacity) {
    KFloatPointArray points;
    ASSERT_TRUE(points.setLength(3));
    for (unsigned i = 0; i < 3; ++i) {
        points[i] = KFloatPoint(i + 1.0f, 0.0f, 0.0f);
    }
    KFloatPointArray other;
    ASSERT_TRUE(other.setLength(8));
    const KFloatPoint* buffer = other.data();
    ASSERT_TRUE(other.copy(points));
    EXPECT_EQ(other.data(), buffer);
    other[0].x = 7.0f;
    EXPECT_EQ(points[0].x, 1.0f);
    EXPECT_EQ(other.length(), 3u);

    const KUintArray fromPointer(std::vector<unsigned>{4, 5, 6}.data(), 3);
    EXPECT_EQ(fromPointer, KUintArray({4, 5, 6}));
    const KColorArray filled(2, KColor(1.0f, 0.5f, 0.0f));
    EXPECT_EQ(filled[1], KColor(1.0f, 0.5f, 0.0f, 1.0f));
}

TEST(KArrayStatsCounters, ReturnToTheStartAfterSmallAndBigArraysDie) {
    const std::size_t buffers = KArrayStats::liveBuffers();
    const std::size_t bytes = KArrayStats::liveBytes();
    {
        KDoubleArray big;
        ASSERT_TRUE(big.setLength(1u << 20)); // 8 MiB: the huge-page path
        // Two threads fill the halves directly through data().
        double* values = big.data();
        const unsigned half = big.length() / 2;
        std::thread lower([values, half] { std::iota(values, values + half, 0.0); });
        std::iota(values + half, values + 2 * half, double(half));
        lower.join();
        EXPECT_EQ(big[half - 1], half - 1.0);
        EXPECT_EQ(big[12345], 12345.0);
        KStringArray small{"a", "b"};
        KStringArray moved(std::move(small));
        EXPECT_EQ(KArrayStats::liveBuffers(), buffers + 2);
        EXPECT_EQ(KArrayStats::liveBytes(), bytes + (8u << 20) + 2 * sizeof(KString));
    }
    EXPECT_EQ(KArrayStats::liveBuffers(), buffers);
    EXPECT_EQ(KArrayStats::liveBytes(), bytes);
}

TEST(KArrayFailure, FailedAllocationLeavesTheArrayIntactAndReportsMemory) {
    KIntArray a{1, 2};
    KFailureInjection::failNext("KArray::allocate");
    const KStatus status = a.setLength(100);
    KFailureInjection::reset();
    EXPECT_EQ(status.statusCode(), KStatus::kInsufficientMemory);
    EXPECT_EQ(a, KIntArray({1, 2}));
    EXPECT_TRUE(a.setLength(100));
}
