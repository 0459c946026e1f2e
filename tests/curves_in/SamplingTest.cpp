// Where the points, tangents, lengths and ratios of sampled curves lie, on curves whose answer
// is known exactly: lines, circles (rational quadratics) and a periodic cubic.

#include "CurveFixture.h"

#include <cmath>
#include <numbers>
#include <tuple>
#include <zelvane/geometry/Names.h>

using ::testing::ElementsAre;
using ::testing::Pointwise;

namespace {

constexpr float kTolerance = 2e-6f;

std::vector<float3> alongX(const std::vector<double>& xs) {
    std::vector<float3> points;
    for (double x : xs) {
        points.push_back({static_cast<float>(x), 0.0f, 0.0f});
    }
    return points;
}

double angleOf(const float3& p) {
    return std::atan2(static_cast<double>(p.y), static_cast<double>(p.x));
}

// The angle of `p` in [0, 2 pi).
double fullAngle(const float3& p) {
    const double angle = angleOf(p);
    return angle < -1e-6 ? angle + 2.0 * std::numbers::pi : std::max(angle, 0.0);
}

} // namespace

using Sampling = CurveConversion;

// Along a line of length 10 (or 2) in steps of 3: exact steps leave the remainder, even ones
// spread the length over the count; a curve shorter than one step gets its two ends.
TEST_F(Sampling, SegmentLengthStepsExactlyOrEvenly) {
    const KObject ten = curveData(curves::polyline({{0, 0, 0}, {4, 0, 0}, {10, 0, 0}}));
    const KObject two = curveData(curves::polyline({{0, 0, 0}, {2, 0, 0}}));
    for (const auto& [line, even, xs] : {std::tuple{ten, false, std::vector<double>{0, 3, 6, 9}},
                                         {ten, true, {0, 10.0 / 3, 20.0 / 3, 10}},
                                         {two, false, {0, 2}}}) {
        const auto strands = convert({line}, bySegmentLength(3.0f, even));
        ASSERT_TRUE(strands);
        EXPECT_THAT(positionsOf(*strands), Pointwise(PointEq(), alongX(xs))) << even;
    }
}

TEST_F(Sampling, ByCVCountIsEvenInParameterOrInLength) {
    // Spans of length 1 and 2 over parameters [0, 1] and [1, 2].
    const KObject line = curveData(curves::polyline({{0, 0, 0}, {1, 0, 0}, {3, 0, 0}}));
    const auto byParameter = convert({line}, byCVCount(2.0f));
    const auto byLength = convert({line}, byCVCount(2.0f, true));
    ASSERT_TRUE(byParameter && byLength);
    EXPECT_THAT(positionsOf(*byParameter), Pointwise(PointEq(), alongX({0, 0.5, 1, 2, 3})));
    EXPECT_THAT(positionsOf(*byLength), Pointwise(PointEq(), alongX({0, 0.75, 1.5, 2.25, 3})));
}

TEST_F(Sampling, CircleByLengthIsEvenInAngleAndByParameterIsNot) {
    const KObject circle = curveData(curves::circle(2.0));
    const auto byLength = convert({circle}, byCVCount(2.0f, true)); // 17 points
    const auto byParameter = convert({circle}, byCVCount(2.0f));
    ASSERT_TRUE(byLength && byParameter);
    const std::vector<float3> even = positionsOf(*byLength);
    const std::vector<float3> uneven = positionsOf(*byParameter);
    ASSERT_EQ(even.size(), 17u);
    ASSERT_EQ(uneven.size(), 17u);
    for (std::size_t j = 0; j < 17; ++j) {
        const double angle = (j % 16) * std::numbers::pi / 8.0;
        EXPECT_THAT(even[j], NearPoint(float3{static_cast<float>(2.0 * std::cos(angle)),
                                              static_cast<float>(2.0 * std::sin(angle)), 0.0f},
                                       4e-6f))
            << "sample " << j;
        EXPECT_NEAR(std::hypot(uneven[j].x, uneven[j].y), 2.0, 4e-6) << "sample " << j;
    }
    // Parameter 0.25 of the first quarter lies at about 21.6 degrees, not 22.5.
    EXPECT_NEAR(angleOf(uneven[1]) * 180.0 / std::numbers::pi, 21.6, 0.1);
    // Knots are quarter points either way.
    EXPECT_THAT(uneven[4], NearPoint(float3{0, 2, 0}, kTolerance));
}

TEST_F(Sampling, CircleBySegmentLengthStepsByArcLength) {
    const KObject circle = curveData(curves::circle(1.0));
    const auto stepped = convert({circle}, bySegmentLength(1.0f)); // 2 pi: 7 points
    const auto even = convert({circle}, bySegmentLength(1.0f, true));
    ASSERT_TRUE(stepped && even);
    const std::vector<float3> exact = positionsOf(*stepped);
    const std::vector<float3> spread = positionsOf(*even);
    ASSERT_EQ(exact.size(), 7u);
    ASSERT_EQ(spread.size(), 7u);
    for (std::size_t j = 0; j < 7; ++j) {
        EXPECT_NEAR(fullAngle(exact[j]), static_cast<double>(j), 4e-6) << "sample " << j;
        const double angle = (j % 6) * std::numbers::pi / 3.0;
        EXPECT_NEAR(spread[j].x, std::cos(angle), 4e-6) << "sample " << j;
        EXPECT_NEAR(spread[j].y, std::sin(angle), 4e-6) << "sample " << j;
    }
}

TEST_F(Sampling, CurveTangentsAreUnitAndAlongTheCircle) {
    CurveOptions options = byCVCount(3.0f, true);
    options.computeTangents = true;
    const auto strands = convert({curveData(curves::circle(3.0))}, options);
    ASSERT_TRUE(strands);
    const std::vector<float3> points = positionsOf(*strands);
    const std::vector<float3> tangents = propertyData<float3>(*strands, "tangent");
    ASSERT_EQ(tangents.size(), points.size());
    for (std::size_t j = 0; j < points.size(); ++j) {
        const double angle = angleOf(points[j]);
        EXPECT_THAT(tangents[j], NearPoint(float3{static_cast<float>(-std::sin(angle)),
                                                  static_cast<float>(std::cos(angle)), 0.0f},
                                           4e-6f))
            << "sample " << j;
    }
}

// CV strands of a circle: rational CVs are divided by their weights; without lengths or
// tangents only ratios are added; tangents follow the polyline of the CVs.
TEST_F(Sampling, RationalCVsAreDividedByTheirWeights) {
    const KObject circle = curveData(curves::circle(2.0));
    const auto strands = convert({circle});
    ASSERT_TRUE(strands);
    const std::vector<float3> points = positionsOf(*strands);
    ASSERT_EQ(points.size(), 9u);
    EXPECT_THAT(points[1], NearPoint(float3{2, 2, 0}, kTolerance));
    EXPECT_THAT(points[3], NearPoint(float3{-2, 2, 0}, kTolerance));
    EXPECT_THAT(points[4], NearPoint(float3{-2, 0, 0}, kTolerance));
    EXPECT_TRUE(strands->has("pointRatio"));
    for (const char* name : {"pointLength", "strandLength", "tangent"}) {
        EXPECT_FALSE(strands->has(name)) << name;
    }

    CurveOptions options;
    options.computeTangents = true;
    const auto withTangents = convert({circle}, options);
    ASSERT_TRUE(withTangents);
    const std::vector<float3> tangents = propertyData<float3>(*withTangents, "tangent");
    ASSERT_EQ(tangents.size(), 9u);
    // At CV 1 (2, 2) the neighbours are (2, 0) and (0, 2).
    const float h = static_cast<float>(std::sqrt(0.5));
    EXPECT_THAT(tangents[1], NearPoint(float3{-h, h, 0}, kTolerance));
}

TEST_F(Sampling, PeriodicCurveClosesAndStartsAtItsBlendOfCVs) {
    const auto strands = convert({curveData(curves::hexagon())}, byCVCount(1.0f));
    ASSERT_TRUE(strands);
    const std::vector<float3> points = positionsOf(*strands);
    ASSERT_EQ(points.size(), 9u);
    // A uniform cubic starts at (P0 + 4 P1 + P2) / 6 of the hexagon corners at 0, 60, 120 deg.
    const double s = std::sqrt(3.0) / 2.0;
    const float3 start{static_cast<float>((1.0 + 4 * 0.5 - 0.5) / 6.0),
                       static_cast<float>((0.0 + 4 * s + s) / 6.0), 0.0f};
    EXPECT_THAT(points.front(), NearPoint(start, kTolerance));
    EXPECT_THAT(points.back(), NearPoint(start, kTolerance));
}

// A degree-1 curve gets the tangents of its polyline in every mode.
class LinearTangents : public CurveConversion,
                       public ::testing::WithParamInterface<CurveOptions> {};

TEST_P(LinearTangents, FollowThePolyline) {
    CurveOptions options = GetParam();
    options.computeTangents = true;
    const KObject bent = curveData(curves::polyline({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}));
    const auto strands = convert({bent}, options);
    ASSERT_TRUE(strands);
    const float h = static_cast<float>(std::sqrt(0.5));
    EXPECT_THAT(propertyData<float3>(*strands, "tangent"),
                Pointwise(PointEq(), std::vector<float3>{{1, 0, 0}, {h, h, 0}, {0, 1, 0}}));
}

INSTANTIATE_TEST_SUITE_P(Modes, LinearTangents,
                         ::testing::Values(CurveOptions(), byCVCount(1.0f), byCVCount(1.0f, true),
                                           bySegmentLength(1.0f), bySegmentLength(0.9f, true)));

TEST_F(Sampling, LengthsAndRatiosMeasureEachStrand) {
    CurveOptions options = bySegmentLength(3.0f);
    options.addLengths = true;
    const KObject ten = curveData(curves::polyline({{0, 0, 0}, {10, 0, 0}}));
    // Length 4 in steps of 3: the remainder is no sample.
    const KObject four = curveData(curves::polyline({{0, 0, 0}, {0, 4, 0}}));
    const auto strands = convert({ten, four}, options);
    ASSERT_TRUE(strands);
    EXPECT_THAT(propertyData<float>(*strands, "pointLength"), ElementsAre(0, 3, 6, 9, 0, 3));
    EXPECT_THAT(propertyData<float>(*strands, "strandLength"), ElementsAre(9, 3));
    for (const auto& [name, target] :
         {std::pair{"pointLength", "point"}, {"strandLength", "strand"}, {"pointRatio", "point"}}) {
        EXPECT_EQ(stringMember(*strands, name, Zelvane::Geometry::sTarget), target) << name;
    }
    const std::vector<float> ratios = propertyData<float>(*strands, "pointRatio");
    EXPECT_THAT(ratios, Pointwise(::testing::FloatNear(1e-6f),
                                  std::vector<float>{0, 1.0f / 3, 2.0f / 3, 1, 0, 1}));
}
