// Curves the host can't read and options that can't work: one message naming the curve and no
// object.

#include "CurveFixture.h"

#include <kova/KFnNurbsCurveData.h>
#include <kova/KProfiler.h>
#include <kova/KStringResource.h>
#include <set>

using ::testing::ElementsAre;

namespace {

constexpr const char* kCurveIsInvalid = "Curve is invalid.";

std::string failureText(const char* curve, const char* input, const char* reason) {
    return std::string("Failed to translate Kova curve '") + curve +
           "' to Zelvane strands for input '" + input + "' in 'board1'. " + reason;
}

CurveOptions sampled() {
    CurveOptions options = byCVCount(2.0f);
    options.computeTangents = true;
    options.addLengths = true;
    return options;
}

curves::Curve line() {
    return curves::polyline({{0, 0, 0}, {1, 0, 0}, {3, 0, 0}});
}

} // namespace

using Failures = CurveConversion;

TEST_F(Failures, SegmentLengthNotAboveZeroFailsBeforeAnyCurveIsRead) {
    const Sources curves = sources({curveData(line()), curveData(line())});
    for (const float segmentLength : {0.0f, -2.0f}) {
        const KMessageCapture capture;
        KFailureInjection::setCounting(true);
        EXPECT_FALSE(convert(curves, bySegmentLength(segmentLength)));
        EXPECT_EQ(KFailureInjection::callCount("KFnNurbsCurve::setObject"), 0);
        KFailureInjection::reset();
        EXPECT_THAT(errorsOf(capture), ElementsAre(failureText(
                                           "crv1", "in", "Target segment length = 0 is invalid.")));
    }
}

TEST_F(Failures, TheLowestFailingCurveIsNamed) {
    std::vector<KObject> data;
    for (int i = 0; i < 40; ++i) {
        // Curve data that holds no curve can't be read; curves 3 and 1 are such.
        data.push_back(i == 1 || i == 3 ? KFnNurbsCurveData().create() : curveData(line()));
    }
    const Sources curves = sources(data);
    for (const CurveOptions& options : {CurveOptions(), sampled()}) {
        const KMessageCapture capture;
        EXPECT_FALSE(convert(curves, options));
        EXPECT_THAT(errorsOf(capture), ElementsAre(failureText("crv2", "in", kCurveIsInvalid)));
    }
}

TEST_F(Failures, ACurveWithoutHandleCannotBeRead) {
    const KPlug first = curveSource("crv1", curveData(line()));
    const KPlug second = curveSource("crv2", curveData(line()));
    const KMessageCapture capture;
    EXPECT_FALSE(converter_({first, second}, {valueOf(first)}, {}, true, plug("board1.in")));
    EXPECT_THAT(errorsOf(capture), ElementsAre(failureText("crv2", "in", kCurveIsInvalid)));
}

// Converting an input plug, the curve is named by the plug feeding it; unconnected, by nothing.
TEST_F(Failures, InputPlugsNameTheCurveThatFeedsThem) {
    const KPlug source = curveSource("feeder", KFnNurbsCurveData().create());
    for (const bool connected : {false, true}) {
        if (connected) {
            connect(source, plug("board1.in"));
        }
        const KMessageCapture capture;
        EXPECT_FALSE(converter_({plug("board1.in")}, {valueOf(source)}, {}, false, KPlug()));
        EXPECT_THAT(errorsOf(capture),
                    ElementsAre(failureText(connected ? "feeder" : "", "in", kCurveIsInvalid)));
    }
}

TEST_F(Failures, OneFailingSampleFailsTheCurveAfterTheOthersAreTaken) {
    const KMessageCapture capture;
    KFailureInjection::failNext("KFnNurbsCurve::getPointAtParam");
    EXPECT_FALSE(convert({curveData(line())}, sampled()));
    EXPECT_EQ(KFailureInjection::callCount("KFnNurbsCurve::getPointAtParam"), 5);
    EXPECT_THAT(errorsOf(capture), ElementsAre(failureText("crv1", "in", kCurveIsInvalid)));
}

TEST_F(Failures, ATranslatedMessageReplacesTheDefaultText) {
    const KStringResourceId reason("zelvane_object_translator", "kCurveIsInvalid", "");
    ASSERT_TRUE(KStringResource::setString(reason, "Kurve ist ungültig."));
    const KMessageCapture capture;
    EXPECT_FALSE(convert({KFnNurbsCurveData().create()}));
    KStringResource::registerString(
        KStringResourceId("zelvane_object_translator", "kCurveIsInvalid", kCurveIsInvalid));
    EXPECT_THAT(errorsOf(capture), ElementsAre(failureText("crv1", "in", "Kurve ist ungültig.")));
}

TEST_F(Failures, EveryStepIsTimedInTheCurveCategory) {
    const KObject data = curveData(line());
    tagCVs(data, "tag", {1});
    KProfiler::clear();
    KProfiler::setRecording(true);
    ASSERT_TRUE(convert({data}, sampled()));
    KProfiler::setRecording(false);
    std::set<std::string> labels;
    for (const KProfiler::Event& event : KProfiler::events()) {
        if (KProfiler::categoryName(event.category).view() == "Zelvane/CurveConverter") {
            EXPECT_EQ(event.colorIndex, 9) << event.label;
            labels.insert(event.label);
        }
    }
    KProfiler::clear();
    EXPECT_EQ(labels, (std::set<std::string>{"kovaCurvesToObject", "gatherTags", "convertTagData",
                                             "computeLengths", "computePointRatios"}));
}
