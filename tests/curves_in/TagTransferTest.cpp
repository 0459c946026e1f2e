// CV component tags reaching strand points: one point per CV, nearest CV, both neighbours.

#include "CurveFixture.h"

#include <kova/KFnGeometryData.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

CurveOptions sampled(float rate, TagTransfer transfer) {
    CurveOptions options = byCVCount(rate);
    options.tagTransfer = transfer;
    return options;
}

// Five CVs on the x axis at 0 .. 4; a degree-1 curve's CV parameters are its knots, 0 .. 4.
curves::Curve fiveCVs() {
    return curves::polyline({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}});
}

// A clamped cubic ending at knot 6.1, where the mean of the three end knots rounds below 6.1:
// its last sample (at the domain's end) lies beyond its last CV parameter.
curves::Curve endingPastLastCVParameter() {
    return {
        {{0, 0, 0}, {1, 1, 0}, {2, 0, 0}, {3, 1, 0}, {4, 0, 0}}, {0, 0, 0, 3, 6.1, 6.1, 6.1}, 3};
}

} // namespace

using Tags = CurveConversion;

TEST_F(Tags, CVStrandsMarkTheTaggedCVsOfTheCurvesThatHaveTheTag) {
    const KObject plain = curveData(fiveCVs());
    const KObject tagged = curveData(fiveCVs());
    tagCVs(tagged, "tips", {1, 3});
    const auto strands = convert({plain, tagged});
    ASSERT_TRUE(strands);
    EXPECT_THAT(tagPoints(*strands, "tips"), ElementsAre(6, 8));
}

TEST_F(Tags, CompleteTagMarksTheWholeStrand) {
    const KObject first = curveData(fiveCVs());
    const KObject whole = curveData(curves::circle(1.0));
    tagCVs(whole, "all", {}, true);
    for (const CurveOptions& options : {CurveOptions(), sampled(2.0f, TagTransfer::NearestCV),
                                        sampled(2.0f, TagTransfer::BothNeighbours)}) {
        const auto strands = convert({first, whole}, options);
        ASSERT_TRUE(strands);
        const std::vector<std::uint32_t> offsets = offsetsOf(*strands);
        std::vector<std::uint32_t> expected;
        for (std::uint32_t p = offsets[1]; p < offsets[2]; ++p) {
            expected.push_back(p);
        }
        EXPECT_EQ(tagPoints(*strands, "all"), expected);
    }
}

// Parameters 0, 0.5, ..., 4: 2.5 is halfway between CVs 2 and 3, 3.5 between 3 and 4. Other
// transfer rules keep the tag but mark nothing.
TEST_F(Tags, NearestCVTakesTheLaterCVHalfway) {
    const KObject line = curveData(fiveCVs());
    tagCVs(line, "three", {3});
    const auto nearest = convert({line}, sampled(2.0f, TagTransfer::NearestCV));
    const auto other = convert({line}, sampled(2.0f, static_cast<TagTransfer>(7)));
    ASSERT_TRUE(nearest && other);
    EXPECT_THAT(tagPoints(*nearest, "three"), ElementsAre(5, 6));
    EXPECT_TRUE(other->has("pointTag(three)"));
    EXPECT_THAT(tagPoints(*other, "three"), IsEmpty());
}

TEST_F(Tags, BothNeighboursNeedTheCVsOnBothSides) {
    const KObject alone = curveData(fiveCVs());
    tagCVs(alone, "t", {2});
    const KObject pair = curveData(fiveCVs());
    tagCVs(pair, "t", {2, 3});
    const KObject start = curveData(fiveCVs());
    tagCVs(start, "t", {0, 1});
    const auto strands = convert({alone, pair, start}, sampled(2.0f, TagTransfer::BothNeighbours));
    ASSERT_TRUE(strands);
    // Strand 2: parameters above CV 2's up to CV 3's (2.5, 3); strand 3: the first point sits
    // on CV 0's parameter and takes CVs 0 and 1, then 0.5 and 1.
    EXPECT_THAT(tagPoints(*strands, "t"), ElementsAre(9 + 5, 9 + 6, 18 + 0, 18 + 1, 18 + 2));
}

TEST_F(Tags, BeyondTheLastCVParameterNearestTakesTheLastCVAndBothNeighboursNothing) {
    const KObject nearest = curveData(endingPastLastCVParameter());
    tagCVs(nearest, "end", {2, 3, 4});
    const KObject both = curveData(endingPastLastCVParameter());
    tagCVs(both, "end", {2, 3, 4});
    // Parameters 0, 1.525, 3.05, 4.575, 6.1 against CV parameters 0, 1, 3.03, 5.07, 6.1-.
    const auto byNearest = convert({nearest}, sampled(1.0f, TagTransfer::NearestCV));
    const auto byBoth = convert({both}, sampled(1.0f, TagTransfer::BothNeighbours));
    ASSERT_TRUE(byNearest && byBoth);
    EXPECT_THAT(tagPoints(*byNearest, "end"), ElementsAre(2, 3, 4));
    EXPECT_THAT(tagPoints(*byBoth, "end"), ElementsAre(2, 3));
}

TEST_F(Tags, PeriodicOverlapWrapsToTheFirstCVs) {
    // CV parameters 1 .. 9 (CVs 6, 7, 8 repeat CVs 0, 1, 2); samples at 2, 2.75, ..., 8.
    const KObject hexagon = curveData(curves::hexagon());
    tagCVs(hexagon, "first", {0});
    tagCVs(hexagon, "second", {1});
    const auto strands = convert({hexagon}, sampled(1.0f, TagTransfer::NearestCV));
    ASSERT_TRUE(strands);
    EXPECT_THAT(tagPoints(*strands, "first"), ElementsAre(6, 7));
    EXPECT_THAT(tagPoints(*strands, "second"), ElementsAre(0, 8));
}

// A tag without contents gives an empty tag.
TEST_F(Tags, TheExpressionSelectsTagsByName) {
    const KObject line = curveData(fiveCVs());
    tagCVs(line, "roots", {0});
    tagCVs(line, "tips", {4});
    ASSERT_TRUE(KFnGeometryData(line).addComponentTag("empty"));
    CurveOptions options;
    options.componentTags = "t* e*";
    const auto selected = convert({line}, options);
    options.componentTags = "";
    const auto none = convert({line}, options);
    ASSERT_TRUE(selected && none);
    EXPECT_FALSE(selected->has("pointTag(roots)"));
    EXPECT_THAT(tagPoints(*selected, "tips"), ElementsAre(4));
    EXPECT_TRUE(selected->has("pointTag(empty)"));
    EXPECT_THAT(tagPoints(*selected, "empty"), IsEmpty());
    for (const char* tag : {"pointTag(tips)", "pointTag(roots)", "pointTag(empty)"}) {
        EXPECT_FALSE(none->has(tag)) << tag;
    }
}

TEST_F(Tags, LongTagListsAreSortedAndTransferredLikeShortOnes) {
    std::vector<KPoint> points;
    std::vector<int> even;
    for (int i = 0; i < 1200; ++i) {
        points.emplace_back(i, 0, 0);
        if (i % 2 == 0) {
            even.push_back(i);
        }
    }
    const KObject line = curveData(curves::polyline(points));
    tagCVs(line, "even", even);
    const auto strands = convert({line});
    ASSERT_TRUE(strands);
    const std::vector<std::uint32_t> marked = tagPoints(*strands, "even");
    ASSERT_EQ(marked.size(), even.size());
    for (std::size_t k = 0; k < even.size(); ++k) {
        EXPECT_EQ(marked[k], static_cast<std::uint32_t>(even[k]));
    }
}
