// Curve shapes feeding a board's object ports: the port's value is the strand object, with the
// options the port's metadata asks for.

#include "CurveFixture.h"

#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnNurbsCurveData.h>
#include <zelvane/inputbypath/OptionKeys.h>

using ::testing::ElementsAre;
using ::testing::Pointwise;
namespace Keys = ZelvaneBoardInputByPath::Keys;

namespace {

KPlug worldSpace(const KObject& shape) {
    return KFnDependencyNode(shape).findPlug("worldSpace", false).elementByLogicalIndex(0);
}

// Port metadata whose input-by-path options are `options` (key, text pairs).
Orsel::MetadataItem
portOptions(std::initializer_list<std::pair<std::string_view, const char*>> options) {
    Orsel::MetadataItem metadata("port");
    Orsel::MetadataItem byPath{Orsel::String(Keys::kOptions)};
    for (const auto& [key, value] : options) {
        byPath.setChild(Orsel::String(key), Orsel::String(value));
    }
    metadata.addChild(std::move(byPath));
    return metadata;
}

} // namespace

using BoardCurves = CurveConversion;

TEST_F(BoardCurves, CurveShapeOnAnObjectPortGivesWorldSpaceStrandsAsTheMetadataAsks) {
    watchInput("strands", Zelvane::objectType(),
               portOptions({{Keys::kSampling, "bySegmentLength"},
                            {Keys::kSegmentLength, "3"},
                            {Keys::kComputeTangents, "true"},
                            {Keys::kAddLengths, "yes"}}));
    const KObject shape = curveShape(curves::polyline({{0, 0, 0}, {10, 0, 0}}), KVector(0, 0, 5));
    connect(worldSpace(shape), plug("board1.strands"));
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    const auto strands = seenObject();
    ASSERT_TRUE(strands);
    EXPECT_THAT(
        positionsOf(*strands),
        Pointwise(PointEq(), std::vector<float3>{{0, 0, 5}, {3, 0, 5}, {6, 0, 5}, {9, 0, 5}}));
    EXPECT_THAT(propertyData<float3>(*strands, "tangent"),
                Pointwise(PointEq(), std::vector<float3>(4, float3{1, 0, 0})));
    EXPECT_THAT(propertyData<float>(*strands, "strandLength"), ElementsAre(9));
}

// An object port on an array attribute: all its curves become one strand object.
class MergedCurves : public CurveConversion {
protected:
    void SetUp() override {
        CurveConversion::SetUp();
        addArrayAttribute(board_, "merged", {KFnData::kNurbsCurve, KFnData::kDoubleArray});
        watchInput("merged", Zelvane::objectType(),
                   portOptions({{Keys::kSampling, "byCVCount"}, {Keys::kSampleRate, "2"}}));
    }
};

TEST_F(MergedCurves, CurvesOfAllElementsBecomeStrandsOfOneObject) {
    const KPlug merged = plug("board1.merged");
    connect(worldSpace(curveShape(curves::polyline({{0, 0, 0}, {2, 0, 0}}), KVector(0, 1, 0))),
            merged.elementByLogicalIndex(0));
    connect(worldSpace(curveShape(curves::polyline({{0, 0, 0}, {0, 0, 4}}))),
            merged.elementByLogicalIndex(1));
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    const auto strands = seenObject();
    ASSERT_TRUE(strands);
    EXPECT_EQ(offsetsOf(*strands), (std::vector<std::uint32_t>{0, 3, 6}));
    EXPECT_THAT(positionsOf(*strands),
                Pointwise(PointEq(),
                          std::vector<float3>{
                              {0, 1, 0}, {1, 1, 0}, {2, 1, 0}, {0, 0, 0}, {0, 0, 2}, {0, 0, 4}}));
}

TEST_F(MergedCurves, AnElementThatIsNoCurveGivesNoObject) {
    const KPlug merged = plug("board1.merged");
    connect(worldSpace(curveShape(curves::circle(1.0))), merged.elementByLogicalIndex(0));
    KFnDoubleArrayData fnDoubles;
    connect(
        dataSource("weights", "w", KFnData::kDoubleArray, fnDoubles.create(KDoubleArray({1.0}))),
        merged.elementByLogicalIndex(1));
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    EXPECT_FALSE(seenObject());
}

TEST_F(MergedCurves, AFailingElementIsNamedByItsSourceAndTheElementPlug) {
    const KPlug merged = plug("board1.merged");
    connect(worldSpace(curveShape(curves::circle(1.0))), merged.elementByLogicalIndex(0));
    connect(curveSource("broken", KFnNurbsCurveData().create()), merged.elementByLogicalIndex(1));
    const KMessageCapture capture;
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    EXPECT_FALSE(seenObject());
    ASSERT_EQ(capture.errors().size(), 1u);
    EXPECT_EQ(capture.errors()[0].view(), "Failed to translate Kova curve 'broken' to Zelvane "
                                          "strands for input 'merged' in 'board1'. Curve is "
                                          "invalid.");
}
