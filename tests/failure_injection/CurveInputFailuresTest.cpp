// Host calls of the curve converter made to fail. A curve that can't be counted or sampled
// fails the whole conversion with one message ("Curve is invalid."); a tag that can't be
// gathered or marked only loses its points; a failing source lookup leaves the curve unnamed.

#include "../curves_in/CurveFixture.h"
#include "InjectedFailure.h"

using ::testing::ElementsAre;

namespace {

std::string curveIsInvalid(const char* curve) {
    return std::string("Failed to translate Kova curve '") + curve +
           "' to Zelvane strands for input 'in' in 'board1'. Curve is invalid.";
}

enum class Sampling { cvs, byCount, byLength };
using enum Sampling;

// Every optional output on, so that every host call of the converter is made.
CurveOptions optionsFor(Sampling sampling) {
    CurveOptions options;
    options.sampling = sampling == cvs       ? CurveSampling::CVs
                       : sampling == byCount ? CurveSampling::ByCVCount
                                             : CurveSampling::BySegmentLength;
    options.sampleRate = 2.0f;
    options.uniformByLength = true;
    options.segmentLength = 0.5f;
    options.computeTangents = true;
    options.addLengths = true;
    options.componentTags = "*";
    return options;
}

// One rational quadratic curve (a circle, so that its tangents are the curve's own) with
// CVs 1 and 2 tagged "tag".
class CurveFailures : public CurveConversion {
protected:
    void SetUp() override {
        CurveConversion::SetUp();
        const KObject circle = curveData(curves::circle(1.0));
        tagCVs(circle, "tag", {1, 2});
        curves_ = sources({circle});
        // The first conversion makes the runtime's lasting objects.
        ASSERT_TRUE(convert(curves_, optionsFor(byCount)));
    }

    Sources curves_;
};

struct UnreadableCurve : FailureRow {
    Injection injection;
    Sampling sampling;
};

class UnreadableCurves : public CurveFailures,
                         public ::testing::WithParamInterface<UnreadableCurve> {};

TEST_P(UnreadableCurves, GiveNoObjectOneMessageAndReleaseEveryArray) {
    const UnreadableCurve& row = GetParam();
    const CurveOptions options = optionsFor(row.sampling);
    const LiveArrays before;
    {
        const KMessageCapture capture;
        EXPECT_FALSE(row.injection.during([&] { return convert(curves_, options); }));
        EXPECT_THAT(errorsOf(capture), ElementsAre(curveIsInvalid("crv1")));
    }
    EXPECT_TRUE(before.unchanged());
    EXPECT_TRUE(convert(curves_, options)) << "the same curve converts without the failure";
}

INSTANTIATE_TEST_SUITE_P(
    EveryCurveRead, UnreadableCurves,
    ::testing::ValuesIn(std::vector<UnreadableCurve>{
        {"CountingAttach", {"KFnNurbsCurve::setObject"}, byCount},
        {"CountingCVs", {"KFnNurbsCurve::numCVs"}, byCount},
        {"CountingLength", {"KFnNurbsCurve::length"}, byLength},
        {"SamplingAttach", {"KFnNurbsCurve::setObject", 1}, byCount},
        {"SamplingLength", {"KFnNurbsCurve::length", 1}, byCount},
        {"KnotDomain", {"KFnNurbsCurve::getKnotDomain"}, byCount},
        {"CVs", {"KFnNurbsCurve::getCVs"}, cvs},
        {"PointAtParameter", {"KFnNurbsCurve::getPointAtParam"}, byCount},
        {"ParameterAtLength", {"KFnNurbsCurve::findParamFromLength", 2}, byLength},
        {"Tangent", {"KFnNurbsCurve::tangent", 3}, byCount}}),
    RowName());

struct UnreadableTag : FailureRow {
    Injection injection;
    bool tagged; // whether the strand object still carries the tag, with no points
};

class UnreadableTags : public CurveFailures, public ::testing::WithParamInterface<UnreadableTag> {};

TEST_P(UnreadableTags, LeaveTheCurveConvertedWithoutTaggedPoints) {
    const UnreadableTag& row = GetParam();
    const CurveOptions options = optionsFor(byCount);
    const std::vector<float3> points = positionsOf(*convert(curves_, options));
    ASSERT_FALSE(tagPoints(*convert(curves_, options), "tag").empty());
    const LiveArrays before;
    {
        const KMessageCapture capture;
        const auto strands = row.injection.during([&] { return convert(curves_, options); });
        ASSERT_TRUE(strands);
        EXPECT_EQ(positionsOf(*strands), points);
        EXPECT_TRUE(tagPoints(*strands, "tag").empty());
        EXPECT_EQ(strands->has("pointTag(tag)"), row.tagged);
        EXPECT_TRUE(capture.errors().empty());
    }
    EXPECT_TRUE(before.unchanged());
}

INSTANTIATE_TEST_SUITE_P(
    EveryTagRead, UnreadableTags,
    ::testing::Values(UnreadableTag{"GatheringAttach", {"KFnGeometryData::KFnGeometryData"}, false},
                      UnreadableTag{"GatheringNames", {"KFnGeometryData::componentTags"}, false},
                      UnreadableTag{"Knots", {"KFnNurbsCurve::getKnots"}, true},
                      UnreadableTag{"CurveCVs", {"KFnNurbsCurve::numCVs", 1}, true},
                      UnreadableTag{"CurveDegree", {"KFnNurbsCurve::degree", 1}, true},
                      UnreadableTag{"CurveForm", {"KFnNurbsCurve::form"}, true},
                      UnreadableTag{"MarkingAttach", {"KFnGeometryData::KFnGeometryData", 1}, true},
                      UnreadableTag{"Category", {"KFnGeometryData::componentTagCategory"}, true},
                      UnreadableTag{"Contents", {"KFnGeometryData::componentTagContents"}, true},
                      UnreadableTag{"Elements", {"KFnSingleIndexedComponent::getElements"}, true}),
    RowName());

TEST_F(CurveFailures, AFailingSourceLookupLeavesTheCurveUnnamedInTheMessage) {
    const KPlug source = curveSource("feeder", curveData(curves::circle(1.0)));
    connect(source, plug("board1.in"));
    const KMessageCapture capture;
    KFailureInjection::failNext("KFnNurbsCurve::setObject");
    KFailureInjection::failNext("KPlug::connectedTo");
    EXPECT_FALSE(converter_({plug("board1.in")}, {valueOf(source)}, {}, false, KPlug()));
    EXPECT_EQ(KFailureInjection::callCount("KPlug::connectedTo"), 1);
    EXPECT_THAT(errorsOf(capture), ElementsAre(curveIsInvalid("")));
}

} // namespace
