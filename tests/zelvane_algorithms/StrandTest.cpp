#include "Fixtures.h"

#include <cmath>
#include <zelvane/algorithms/StrandLength.h>
#include <zelvane/algorithms/StrandRatio.h>
#include <zelvane/algorithms/StrandTangent.h>

namespace {

using Zelvane::GeometryAlgorithms::computeStrandLength;
using Zelvane::GeometryAlgorithms::computeStrandRatio;
using Zelvane::GeometryAlgorithms::computeStrandTangent;
using Zelvane::Math::float3;
using namespace fixtures;
using Floats = std::vector<float>;

constexpr float3 kZero{0.0f, 0.0f, 0.0f};

TEST(StrandTangent, CentralDifferencesOfDistinctNeighboursInsideOneSidedAtTheEnds) {
    const struct {
        const char* what;
        std::vector<float3> points;
        std::vector<float3> tangents;
    } cases[] = {
        {"a corner", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{1, 0, 0}, unit(1, 1, 0), {0, 1, 0}}},
        {"uneven steps",
         {{0, 0, 5}, {0, 0, 3}, {0, 0, -4}, {0, 0, -4.5f}},
         std::vector<float3>(4, {0, 0, -1})},
        {"repeated points look through to their distinct neighbours",
         {{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {1, 2, 0}, {1, 2, 0}},
         {{1, 0, 0}, {1, 0, 0}, unit(1, 2, 0), unit(1, 2, 0), {0, 1, 0}, {0, 1, 0}}},
        {"a hairpin tip points towards the next point",
         {{0, 0, 0}, {1, 0, 0}, {0, 0, 0}},
         {{1, 0, 0}, {-1, 0, 0}, {-1, 0, 0}}},
        {"one point has no direction", {{3, 4, 5}}, {kZero}},
        {"coincident points have none", std::vector<float3>(3, {3, 4, 5}),
         std::vector<float3>(3, kZero)},
        {"points 1e-30 apart are still apart", {{0, 0, 0}, {1e-30f, 0, 0}}, {{1, 0, 0}, {1, 0, 0}}},
    };
    for (const auto& c : cases) {
        std::vector<float3> tangents(c.points.size(), float3{9, 9, 9});
        ASSERT_TRUE(computeStrandTangent(c.points.data(), c.points.data() + c.points.size(),
                                         tangents.data()));
        for (std::size_t i = 0; i < tangents.size(); ++i) {
            const float tolerance = c.tangents[i] == kZero ? 0.0f : 1e-6f; // zero stays exact
            EXPECT_TRUE(near(tangents[i], c.tangents[i], tolerance)) << c.what << ", point " << i;
        }
    }
}

TEST(StrandTangent, RejectsNullAndReversedRuns) {
    const float3 points[2] = {{0, 0, 0}, {1, 0, 0}};
    float3 out[2] = {};
    EXPECT_TRUE(computeStrandTangent(points, points, nullptr));
    EXPECT_TRUE(computeStrandTangent(nullptr, nullptr, nullptr));
    EXPECT_FALSE(computeStrandTangent(points, points + 2, nullptr));
    EXPECT_FALSE(computeStrandTangent(points + 2, points, out));
    EXPECT_EQ(out[0], kZero);
}

// Strand 0: 3 + 4 long; strand 1: 2 long; strand 2: one point; strand 3: three coincident
// points; strand 4: no points.
Orsel::Ptr<Zelvane::Object> sampleStrands() {
    return strands({{0, 0, 0},
                    {3, 0, 0},
                    {3, 4, 0},
                    {1, 1, 1},
                    {1, 1, 3},
                    {8, 8, 8},
                    {5, 5, 5},
                    {5, 5, 5},
                    {5, 5, 5}},
                   {0, 3, 5, 6, 9, 9});
}

TEST(StrandLengthAndRatio, AccumulateArcLengthPerPointAndRunFromZeroToOneAlongEachStrand) {
    Orsel::Array<float> strandLengths;
    Orsel::Array<float> pointLengths;
    Orsel::Array<float> ratios;
    ASSERT_TRUE(computeStrandLength(*sampleStrands(), strandLengths, pointLengths, nullptr));
    ASSERT_TRUE(computeStrandRatio(*sampleStrands(), ratios, nullptr));
    EXPECT_EQ(values(strandLengths), (Floats{7, 2, 0, 0, 0}));
    EXPECT_EQ(values(pointLengths), (Floats{0, 3, 7, 0, 2, 0, 0, 0, 0}));
    EXPECT_EQ(values(ratios), (Floats{0, 3.0f / 7.0f, 1, 0, 1, 0, 0, 0.5f, 1}));
}

TEST(StrandLengthAndRatio, ObjectWithoutStrandsGivesEmptyResults) {
    Orsel::Array<float> strandLengths{1};
    Orsel::Array<float> pointLengths{1};
    Orsel::Array<float> ratios{1};
    const auto none = strands({}, {0});
    EXPECT_TRUE(computeStrandLength(*none, strandLengths, pointLengths, nullptr));
    EXPECT_TRUE(computeStrandRatio(*none, ratios, nullptr));
    EXPECT_TRUE(strandLengths.empty());
    EXPECT_TRUE(pointLengths.empty());
    EXPECT_TRUE(ratios.empty());
}

TEST(StrandLengthAndRatio, RejectBrokenLayoutsAndLeaveOutputsEmpty) {
    namespace G = Zelvane::Geometry;
    const std::vector<float3> p{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
    std::vector<Orsel::Ptr<Zelvane::Object>> broken{
        rawStrands(p, {0, 3, 2, 4}), // decreasing offsets
        rawStrands(p, {0, 2, 5}),    // past the last point
        rawStrands(p, {0, 2, 3}),    // short of it
        rawStrands(p, {1, 2, 4}),    // not starting at 0
        rawStrands(p, {}),           // no offsets
        mesh(p, {0, 3}, {0, 1, 2}),  // a mesh, not strands
    };
    auto wrongCount = rawStrands(p, {0, 2, 4});
    G::setElementCount(G::sPointComp, 5, *wrongCount);
    broken.push_back(std::move(wrongCount));
    auto noPositions = rawStrands(p, {0, 2, 4});
    noPositions->remove(G::sPointPosition);
    broken.push_back(std::move(noPositions));

    for (std::size_t i = 0; i < broken.size(); ++i) {
        Orsel::Array<float> strandLengths{1, 2};
        Orsel::Array<float> pointLengths{1, 2};
        Orsel::Array<float> ratios{1, 2};
        EXPECT_FALSE(computeStrandLength(*broken[i], strandLengths, pointLengths, nullptr))
            << "layout " << i;
        EXPECT_FALSE(computeStrandRatio(*broken[i], ratios, nullptr)) << "layout " << i;
        EXPECT_TRUE(strandLengths.empty() && pointLengths.empty() && ratios.empty())
            << "layout " << i;
    }
}

} // namespace
