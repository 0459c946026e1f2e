// How many points each curve gets in each sampling mode.

#include "CurveFixture.h"

#include <tuple>

namespace {

std::vector<std::uint32_t> strandSizes(const Zelvane::Object& strands) {
    const std::vector<std::uint32_t> offsets = offsetsOf(strands);
    std::vector<std::uint32_t> sizes;
    for (std::size_t i = 0; i + 1 < offsets.size(); ++i) {
        sizes.push_back(offsets[i + 1] - offsets[i]);
    }
    return sizes;
}

// A straight curve of `numCVs` CVs along x, one unit apart.
curves::Curve straight(int numCVs) {
    std::vector<KPoint> points;
    for (int i = 0; i < numCVs; ++i) {
        points.emplace_back(i, 0, 0);
    }
    return curves::polyline(points);
}

} // namespace

using SampleCount = CurveConversion;

// No curves give no points and the single offset 0.
TEST_F(SampleCount, CVsGiveOnePointPerCVWithThePeriodicOverlapKept) {
    const auto none = convert(std::vector<KObject>{});
    ASSERT_TRUE(none);
    EXPECT_EQ(offsetsOf(*none), std::vector<std::uint32_t>{0});
    EXPECT_TRUE(positionsOf(*none).empty());
    const auto strands = convert({curveData(straight(3)), curveData(curves::hexagon())});
    ASSERT_TRUE(strands);
    EXPECT_EQ(offsetsOf(*strands), (std::vector<std::uint32_t>{0, 3, 12}));
    const std::vector<float3> points = positionsOf(*strands);
    ASSERT_EQ(points.size(), 12u);
    for (int j = 0; j < 3; ++j) {
        EXPECT_EQ(points[3 + 6 + j], points[3 + j]) << "overlap CV " << j;
    }
}

// (CVs, rate, points): max(2, round(rate * (CVs - 1)) + 1), halves rounded away from zero.
class ByCVCount : public CurveConversion,
                  public ::testing::WithParamInterface<std::tuple<int, float, std::uint32_t>> {};

TEST_P(ByCVCount, RoundsTheScaledSpanCountAndKeepsAtLeastTwoPoints) {
    const auto [numCVs, rate, expected] = GetParam();
    const auto strands = convert({curveData(straight(numCVs))}, byCVCount(rate));
    ASSERT_TRUE(strands);
    EXPECT_EQ(strandSizes(*strands), std::vector<std::uint32_t>{expected});
}

INSTANTIATE_TEST_SUITE_P(Rates, ByCVCount,
                         ::testing::Values(std::make_tuple(4, 0.0f, 2u), // at least two
                                           std::make_tuple(4, 1.5f, 6u), // 4.5 rounds up
                                           std::make_tuple(4, 0.5f, 3u), // 1.5 rounds up
                                           std::make_tuple(2, 0.5f, 2u), // 0.5 rounds up to 1
                                           std::make_tuple(4, 1.0f, 4u), // one per CV
                                           std::make_tuple(4, 2.0f, 7u),
                                           std::make_tuple(5, 0.2f, 2u),    // 0.8 rounds to 1
                                           std::make_tuple(4, -3.0f, 2u))); // negative: two

// Curve length 10: trunc(max(1, 10 / s)) + 1 points, evenly spread or not.
TEST_F(SampleCount, SegmentLengthCountsWholeSegmentsPlusOne) {
    const KObject line = curveData(straight(11));
    for (const auto& [segmentLength, expected] :
         {std::pair{3.0f, 4u}, {5.0f, 3u}, {2.5f, 5u}, {10.0f, 2u}, {25.0f, 2u}, {0.5f, 21u}}) {
        for (const bool even : {false, true}) {
            const auto strands = convert({line}, bySegmentLength(segmentLength, even));
            ASSERT_TRUE(strands);
            EXPECT_EQ(strandSizes(*strands), std::vector<std::uint32_t>{expected})
                << "segment length " << segmentLength << (even ? " even" : "");
        }
    }
}

TEST_F(SampleCount, SegmentLengthsBelowTheSmallestStepUseIt) {
    // Length 1.00005: 10000.5 steps of 0.0001, 5000.25 of 0.0002.
    const KObject line = curveData(curves::polyline({{0, 0, 0}, {1.00005, 0, 0}}));
    const auto tiny = convert({line}, bySegmentLength(0.00005f));
    const auto smallest = convert({line}, bySegmentLength(0.0001f));
    const auto twice = convert({line}, bySegmentLength(0.0002f));
    ASSERT_TRUE(tiny && smallest && twice);
    EXPECT_EQ(strandSizes(*tiny), std::vector<std::uint32_t>{10001});
    EXPECT_EQ(strandSizes(*smallest), std::vector<std::uint32_t>{10001});
    EXPECT_EQ(strandSizes(*twice), std::vector<std::uint32_t>{5001});
}

TEST_F(SampleCount, EachCurveCountsOnItsOwnAndOffsetsFollow) {
    std::vector<KObject> data;
    std::vector<std::uint32_t> expected{0};
    for (int i = 0; i < 150; ++i) { // enough curves for the passes to split
        data.push_back(curveData(straight(2 + i % 7)));
        expected.push_back(expected.back() + static_cast<std::uint32_t>(2 + i % 7));
    }
    const auto strands = convert(data);
    ASSERT_TRUE(strands);
    EXPECT_EQ(offsetsOf(*strands), expected);
    EXPECT_EQ(positionsOf(*strands).size(), expected.back());
}
