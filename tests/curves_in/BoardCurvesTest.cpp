// Curve shapes feeding a board's object ports: the port's value is the strand object, with the
// options the port's metadata asks for.

#include "CurveFixture.h"

#include <kova/KDGModifier.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnGenericAttribute.h>
#include <kova/KFnNurbsCurveData.h>
#include <kova/KMessageCapture.h>
#include <zelvane/inputbypath/OptionKeys.h>

using ::testing::ElementsAre;
using ::testing::Pointwise;
using ZelvaneBoard::PortValues;
using ZelvaneGraph::Executor::PortDirection;
namespace Keys = ZelvaneBoardInputByPath::Keys;

namespace {

MATCHER(PointEq, "") {
    const auto& [actual, expected] = arg;
    return std::abs(actual.x - expected.x) <= 2e-6f && std::abs(actual.y - expected.y) <= 2e-6f &&
           std::abs(actual.z - expected.z) <= 2e-6f;
}

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

class BoardCurves : public CurveConversion {
protected:
    // Adds the input port `name` of `type` and records what the graph sees on it.
    void watch(const char* name, const Orsel::Type& type, Orsel::MetadataItem metadata = {}) {
        ASSERT_TRUE(ZelvaneBoard::addPort(
            board_, {Orsel::String(name), PortDirection::Input, type, std::move(metadata)}));
        setBody([this, port = std::string(name)](const PortValues& in) {
            const auto found = in.find(port);
            seen_ = found == in.end() ? Orsel::Value() : found->second;
            return PortValues{};
        });
    }
    // Values made by the plug-in go before it is unloaded.
    void TearDown() override {
        seen_ = Orsel::Value();
        CurveConversion::TearDown();
    }
    Orsel::Ptr<Zelvane::Object> seenObject() const {
        return seen_.getOrselClass<Zelvane::Object>();
    }

    Orsel::Value seen_;
};

TEST_F(BoardCurves, CurveShapeOnAnObjectPortGivesWorldSpaceStrandsAsTheMetadataAsks) {
    watch("strands", Zelvane::objectType(),
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
    EXPECT_THAT(vectorsOf(*strands, "tangent"),
                Pointwise(PointEq(), std::vector<float3>(4, float3{1, 0, 0})));
    EXPECT_THAT(floatsOf(*strands, "strandLength"), ElementsAre(9));
}

TEST_F(BoardCurves, ArrayPortGivesOneStrandObjectPerCurve) {
    watch("many", Orsel::Type::arrayOf(Zelvane::objectType()));
    const KPlug many = plug("board1.many");
    connect(worldSpace(curveShape(curves::circle(1.0))), many.elementByLogicalIndex(0));
    connect(worldSpace(curveShape(curves::hexagon())), many.elementByLogicalIndex(3));
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    const auto objects = seen_.getOpaqueArray();
    ASSERT_TRUE(objects);
    ASSERT_EQ(objects->size(), 2u);
    for (const auto& entry : *objects) {
        const auto strands = Orsel::dynamicPtrCast<Zelvane::Object>(entry);
        ASSERT_TRUE(strands);
        EXPECT_EQ(offsetsOf(*strands), (std::vector<std::uint32_t>{0, 9}));
    }
}

// An object port on an array attribute: all its curves become one strand object.
class MergedCurves : public BoardCurves {
protected:
    void SetUp() override {
        BoardCurves::SetUp();
        KFnGenericAttribute fnGeneric;
        const KObject attribute = fnGeneric.create("merged", "merged");
        ASSERT_TRUE(fnGeneric.setArray(true));
        ASSERT_TRUE(fnGeneric.addDataAccept(KFnData::kNurbsCurve));
        ASSERT_TRUE(fnGeneric.addDataAccept(KFnData::kDoubleArray));
        KDGModifier modifier;
        modifier.addAttribute(board_, attribute);
        ASSERT_TRUE(modifier.doIt());
        watch("merged", Zelvane::objectType(),
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
