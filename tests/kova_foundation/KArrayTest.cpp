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

TEST(KArrayLength, GrowingWithinCapacityKeepsOldValuesBecauseNothingIsFilled) {
    KIntArray a;
    ASSERT_TRUE(a.setLength(10));
    for (unsigned i = 0; i < 10; ++i) {
        a[i] = static_cast<int>(i * 3);
    }
    const int* buffer = a.data();
    ASSERT_TRUE(a.setLength(2));
    EXPECT_EQ(a.capacity(), 10u);
    ASSERT_TRUE(a.setLength(10));
    EXPECT_EQ(a.data(), buffer);
    for (unsigned i = 0; i < 10; ++i) {
        EXPECT_EQ(a[i], static_cast<int>(i * 3));
    }
}

TEST(KArrayLength, NonTrivialElementsAreConstructedAndDestroyed) {
    KStringArray a;
    ASSERT_TRUE(a.append("keep"));
    ASSERT_TRUE(a.append("drop"));
    ASSERT_TRUE(a.setLength(1));
    ASSERT_TRUE(a.setLength(3));
    EXPECT_EQ(a[0], "keep");
    EXPECT_EQ(a[1], "");
    EXPECT_EQ(a[2], "");
}

TEST(KArrayEdit, InsertRemoveSetAndAppendKeepOrder) {
    KIntArray a{1, 2, 4};
    ASSERT_TRUE(a.insert(3, 2));
    ASSERT_TRUE(a.insert(0, 0));
    ASSERT_TRUE(a.insert(5, a.length()));
    EXPECT_EQ(a, KIntArray({0, 1, 2, 3, 4, 5}));
    ASSERT_TRUE(a.remove(0));
    ASSERT_TRUE(a.remove(4));
    ASSERT_TRUE(a.set(9, 1));
    EXPECT_EQ(a, KIntArray({1, 9, 3, 4}));
}

TEST(KArrayEdit, AppendingAnElementOfTheSameArraySurvivesGrowth) {
    KStringArray a;
    ASSERT_TRUE(a.append("first"));
    for (int i = 0; i < 40; ++i) {
        ASSERT_TRUE(a.append(a[0]));
    }
    EXPECT_EQ(a.length(), 41u);
    EXPECT_EQ(a[40], "first");
}

TEST(KArrayEdit, OutOfRangeIndicesFailAndLeaveTheArrayUnchanged) {
    KDoubleArray a{1.0, 2.0};
    EXPECT_EQ(a.set(5.0, 2).statusCode(), KStatus::kInvalidParameter);
    EXPECT_EQ(a.remove(2).statusCode(), KStatus::kInvalidParameter);
    EXPECT_EQ(a.insert(5.0, 3).statusCode(), KStatus::kInvalidParameter);
    EXPECT_EQ(a, KDoubleArray({1.0, 2.0}));
    KIntArray empty;
    EXPECT_FALSE(empty.remove(0));
}

TEST(KArrayCopy, CopiesAreIndependentAndReuseCapacity) {
    const float source[] = {1.0f, 2.0f, 3.0f};
    KFloatPointArray points;
    ASSERT_TRUE(points.setLength(3));
    for (unsigned i = 0; i < 3; ++i) {
        points[i] = KFloatPoint(source[i], 0.0f, 0.0f);
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
