#include "CurveTestSupport.h"

#include <functional>
#include <string>

namespace {

class CurveFailureTest : public CurveTest {};

struct Call {
    const char* operation;
    // Runs the call on `fn` and returns its status.
    std::function<KStatus(KFnNurbsCurve&)> run;
};

template <class Read>
std::function<KStatus(KFnNurbsCurve&)> reader(Read read) {
    return [read](KFnNurbsCurve& fn) {
        KStatus status;
        read(fn, &status);
        return status;
    };
}

TEST_F(CurveFailureTest, EachCallFailsWhenInjectedAndWorksAgainAfterwards) {
    // The plug-in's own reads (numCVs, degree, form, knots, CVs, points, tangents, lengths,
    // parameters from lengths) fail by injection in its failure tests; these are the others.
    KPoint point;
    const std::vector<Call> calls{
        {"KFnNurbsCurve::isPeriodic", reader([](auto& fn, KStatus* s) { fn.isPeriodic(s); })},
        {"KFnNurbsCurve::numKnots", reader([](auto& fn, KStatus* s) { fn.numKnots(s); })},
        {"KFnNurbsCurve::getCV", [&](KFnNurbsCurve& fn) { return fn.getCV(0, point); }},
        {"KFnNurbsCurve::setCVs",
         [&](KFnNurbsCurve& fn) {
             return fn.setCVs({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}});
         }},
        {"KFnNurbsCurve::normal",
         reader([](auto& fn, KStatus* s) { fn.normal(0.5, KSpace::kWorld, s); })},
        {"KFnNurbsCurve::findLengthFromParam",
         reader([](auto& fn, KStatus* s) { fn.findLengthFromParam(0.5, s); })},
    };
    KFnNurbsCurve fn;
    curveData(fn, {{0, 0, 0}, {1, 2, 0}, {2, 0, 0}}, {0, 0, 1, 1}, 2);
    for (const Call& call : calls) {
        KFailureInjection::failNext(call.operation);
        const KStatus failed = call.run(fn);
        EXPECT_EQ(failed.statusCode(), KStatus::kFailure) << call.operation;
        EXPECT_EQ(failed.errorString(), KString("injected failure: ") + call.operation);
        EXPECT_TRUE(call.run(fn)) << call.operation;
    }
}

TEST_F(CurveFailureTest, FailingReadsLeaveZeroResultsAndTheirOutputsUntouched) {
    KFnNurbsCurve fn;
    curveData(fn, {{0, 0, 0}, {3, 4, 0}}, {0, 1}, 1);
    KFailureInjection::failAlways("KFnNurbsCurve::length");
    KFailureInjection::failAlways("KFnNurbsCurve::numCVs");
    KFailureInjection::failAlways("KFnNurbsCurve::getPointAtParam");
    KFailureInjection::failAlways("KFnNurbsCurve::setCVs");
    EXPECT_EQ(fn.length(), 0.0);
    EXPECT_EQ(fn.numCVs(), 0);
    KPoint p(7, 7, 7);
    EXPECT_FALSE(fn.getPointAtParam(1.0, p));
    EXPECT_EQ(p, KPoint(7, 7, 7));
    EXPECT_FALSE(fn.setCVs({{9, 9, 9}, {8, 8, 8}}));
    KFailureInjection::reset();
    EXPECT_DOUBLE_EQ(fn.length(), 5.0); // no side effect of the failed setCVs
}

TEST_F(CurveFailureTest, CreatingFailsWhenInjected) {
    KStatus status;
    KFailureInjection::failNext("KFnNurbsCurveData::create");
    EXPECT_TRUE(KFnNurbsCurveData().create(&status).isNull());
    EXPECT_EQ(status.errorString(), "injected failure: KFnNurbsCurveData::create");
    const KObject data = KFnNurbsCurveData().create();

    KFnNurbsCurve fn;
    KFailureInjection::failNext("KFnNurbsCurve::create");
    EXPECT_TRUE(fn.create({{0, 0, 0}, {1, 0, 0}}, {0, 1}, 1, KFnNurbsCurve::kOpen, false, false,
                          data, &status)
                    .isNull());
    EXPECT_EQ(status.errorString(), "injected failure: KFnNurbsCurve::create");
    EXPECT_FALSE(KFnNurbsCurve(data).numCVs(&status) > 0); // the data got no curve

    // A shape whose transform cannot be made leaves no node behind.
    KFailureInjection::failNext("KDagModifier::createNode");
    EXPECT_TRUE(fn.create({{0, 0, 0}, {1, 0, 0}}, {0, 1}, 1, KFnNurbsCurve::kOpen, false, false,
                          KObject(), &status)
                    .isNull());
    EXPECT_FALSE(status);
    EXPECT_TRUE(fn.object().isNull());
}

} // namespace
