#include "CurveTestSupport.h"

#include <kova/KFnDoubleArrayData.h>
#include <string>

namespace {

using Form = KFnNurbsCurve::Form;

class CurveCreateTest : public CurveTest {};

// The rules themselves belong to the curve library; these cases show that create applies
// them to the host's degree, form, weights and knots, and stores nothing when they fail.
TEST_F(CurveCreateTest, CreateRejectsInvalidCurvesWithTheReason) {
    const KPointArray four{{0, 0, 0}, {1, 1, 0}, {2, 1, 0}, {3, 0, 0}};
    const struct {
        KPointArray cvs;
        KDoubleArray knots;
        unsigned int degree;
        Form form;
        bool rational;
        const char* reason; // a piece of the status text
    } cases[] = {
        {four, {0, 1, 2}, 0, Form::kOpen, false, "degree must be at least 1"},
        {four, {0, 0, 0, 1, 1, 1}, 3, Form(7), false, "form 7"},
        {{{0, 0, 0, 1}, {0, 0, 0, 0}, {2, 0, 0, 1}}, {0, 0, 1, 1}, 2, Form::kOpen, true, "weight"},
        {four, {-2, -1, 0, 1, 2, 3}, 3, Form::kPeriodic, false, "repeat"},
    };
    for (const auto& c : cases) {
        KStatus status;
        const KObject data = KFnNurbsCurveData().create();
        KFnNurbsCurve fn;
        fn.create(c.cvs, c.knots, c.degree, c.form, false, c.rational, data, &status);
        EXPECT_EQ(status.statusCode(), KStatus::kInvalidParameter) << c.reason;
        EXPECT_NE(std::string(status.errorString().asChar()).find(c.reason), std::string::npos)
            << status.errorString().asChar();
        // Nothing was stored: the data still holds no curve.
        KStatus read;
        EXPECT_EQ(KFnNurbsCurve(data).numCVs(&read), 0) << c.reason;
        EXPECT_FALSE(read) << c.reason;
    }
}

TEST_F(CurveCreateTest, ReadersGiveHostKnotsDomainAndForm) {
    KFnNurbsCurve fn;
    const KObject data = curveData(fn, {{0, 0, 0}, {1, 2, 0}, {3, 2, 0}, {4, 0, 0}, {5, 1, 0}},
                                   {0, 0, 0, 1, 2, 2, 2}, 3);
    EXPECT_EQ(data.apiType(), KFn::kNurbsCurveData);
    EXPECT_EQ(KFnData(data).dataType(), KFnData::kNurbsCurve);
    EXPECT_EQ(fn.numCVs(), 5);
    EXPECT_EQ(fn.degree(), 3);
    EXPECT_EQ(fn.form(), KFnNurbsCurve::kOpen);
    EXPECT_FALSE(fn.isPeriodic());
    EXPECT_EQ(fn.numKnots(), 7); // numCVs + degree - 1
    KDoubleArray knots;
    ASSERT_TRUE(fn.getKnots(knots));
    EXPECT_EQ(knots, (KDoubleArray{0, 0, 0, 1, 2, 2, 2}));
    double start = -1.0;
    double end = -1.0;
    ASSERT_TRUE(fn.getKnotDomain(start, end));
    EXPECT_EQ(start, 0.0);
    EXPECT_EQ(end, 2.0);
}

TEST_F(CurveCreateTest, RationalCVsAreHomogeneousAndNonRationalOrFlatOnesDropWeightsOrZ) {
    KFnNurbsCurve fn;
    curveData(fn, circleCVs(2.0), circleKnots(), 2, KFnNurbsCurve::kClosed, true);
    const double h = std::sqrt(0.5);
    KPointArray cvs;
    ASSERT_TRUE(fn.getCVs(cvs));
    ASSERT_EQ(cvs.length(), 9u);
    EXPECT_TRUE(cvs[0].isEquivalent(KPoint(2, 0, 0, 1), 1e-15));
    // The corner CV (2, 2) with weight sqrt(1/2), premultiplied.
    EXPECT_TRUE(cvs[1].isEquivalent(KPoint(2 * h, 2 * h, 0, h), 1e-15));
    EXPECT_TRUE(cvs[1].cartesian().isEquivalent(KPoint(2, 2, 0), 1e-14));
    KPoint cv;
    ASSERT_TRUE(fn.getCV(7, cv));
    EXPECT_TRUE(cv.isEquivalent(KPoint(2 * h, -2 * h, 0, h), 1e-15));
    EXPECT_EQ(fn.getCV(9, cv).statusCode(), KStatus::kInvalidParameter);

    const KObject data = KFnNurbsCurveData().create();
    ASSERT_FALSE(fn.create({{0, 0, 5, 3}, {1, 1, 5, 2}, {2, 0, 5, 4}}, {0, 0, 1, 1}, 2,
                           KFnNurbsCurve::kOpen, true, false, data)
                     .isNull());
    ASSERT_TRUE(fn.getCVs(cvs));
    EXPECT_EQ(cvs[1], KPoint(1, 1, 0, 1));
    EXPECT_EQ(cvs[2], KPoint(2, 0, 0, 1));
}

// A create on curve data replaces its curve and drops its tags; readers attached before see
// that and every other edit.
TEST_F(CurveCreateTest, CreateOrSetCVsOnDataIsSeenByEveryFunctionSetOnIt) {
    KFnNurbsCurve reader;
    const KObject data = curveData(reader, {{0, 0, 0}, {3, 0, 0}}, {0, 1}, 1);
    ASSERT_DOUBLE_EQ(reader.length(), 3.0);
    KFnNurbsCurve writer(data);
    ASSERT_TRUE(writer.setCVs({{0, 0, 0}, {0, 5, 0}}));
    EXPECT_DOUBLE_EQ(reader.length(), 5.0);
    EXPECT_DOUBLE_EQ(reader.findParamFromLength(2.5), 0.5);
    KPoint point;
    ASSERT_TRUE(reader.getPointAtParam(1.0, point));
    EXPECT_EQ(point, KPoint(0, 5, 0));

    KFnGeometryData geometry(data);
    ASSERT_TRUE(geometry.addComponentTag("tip"));
    const KObject again = writer.create({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {0, 1, 2}, 1,
                                        KFnNurbsCurve::kOpen, false, false, data);
    EXPECT_EQ(again, data);
    EXPECT_EQ(reader.numCVs(), 3);
    EXPECT_DOUBLE_EQ(reader.length(), 2.0);
    EXPECT_FALSE(geometry.hasComponentTag("tip"));
}

TEST_F(CurveCreateTest, AttachesOnlyToCurveDataAndShapes) {
    KStatus status;
    KFnNurbsCurve fn(KFnDoubleArrayData().create(), &status);
    EXPECT_EQ(status.statusCode(), KStatus::kInvalidParameter);
    EXPECT_TRUE(fn.object().isNull());
    EXPECT_FALSE(fn.setObject(KObject()));
    EXPECT_EQ(fn.degree(&status), 0);
    EXPECT_FALSE(status);
    // Curve data without a curve attaches but has nothing to read.
    ASSERT_TRUE(fn.setObject(KFnNurbsCurveData().create()));
    double start = 0;
    double end = 0;
    EXPECT_EQ(fn.getKnotDomain(start, end).statusCode(), KStatus::kInvalidParameter);
}

TEST_F(CurveCreateTest, SetCVsReplacesThePointsAndKeepsTheCurveValid) {
    KFnNurbsCurve fn;
    curveData(fn, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {0, 0, 1, 1}, 2);
    ASSERT_TRUE(fn.setCVs({{0, 0, 0, 1}, {2, 4, 0, 2}, {2, 0, 0, 1}}));
    KPoint cv;
    ASSERT_TRUE(fn.getCV(1, cv));
    EXPECT_EQ(cv, KPoint(2, 4, 0, 2)); // homogeneous in, homogeneous out
    EXPECT_EQ(fn.setCVs({{0, 0, 0}}).statusCode(), KStatus::kInvalidParameter);
    EXPECT_EQ(fn.setCVs({{0, 0, 0, 1}, {1, 1, 0, -1}, {2, 0, 0, 1}}).statusCode(),
              KStatus::kInvalidParameter);
    ASSERT_TRUE(fn.getCV(1, cv));
    EXPECT_EQ(cv, KPoint(2, 4, 0, 2));
}

} // namespace
