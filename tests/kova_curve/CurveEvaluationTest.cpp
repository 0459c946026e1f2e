// Evaluation through the host's function set. The curve math itself is checked by the curve
// library's own tests; these check what the host adds: cartesian points, derivatives as they
// are, normals, NaN parameters, cached lengths, and the host's knots and forms.

#include "CurveTestSupport.h"

#include <numbers>
#include <thread>

namespace {

class CurveEvaluationTest : public CurveTest {};

KPoint pointAt(const KFnNurbsCurve& fn, double t) {
    KPoint p;
    EXPECT_TRUE(fn.getPointAtParam(t, p));
    return p;
}

TEST_F(CurveEvaluationTest, DegreeOneCurvesAreTheirPolylineAndHaveNoNormal) {
    KFnNurbsCurve fn;
    curveData(fn, {{0, 0, 0}, {2, 0, 0}, {2, 3, 0}}, {0, 1, 3}, 1);
    EXPECT_EQ(pointAt(fn, 1.0), KPoint(2, 0, 0));
    EXPECT_TRUE(pointAt(fn, 2.0).isEquivalent(KPoint(2, 1.5, 0), 1e-15));
    EXPECT_TRUE(fn.tangent(0.5).isEquivalent(KVector(2, 0, 0), 1e-15));
    EXPECT_TRUE(fn.tangent(2.0).isEquivalent(KVector(0, 1.5, 0), 1e-15));
    EXPECT_DOUBLE_EQ(fn.length(), 5.0);
    EXPECT_NEAR(fn.findParamFromLength(3.5), 2.0, 1e-12);
    KStatus status;
    fn.normal(0.5, KSpace::kObject, &status);
    EXPECT_EQ(status.statusCode(), KStatus::kInvalidParameter); // a straight piece
}

TEST_F(CurveEvaluationTest, RationalCirclePointsTangentsNormalsAndLengths) {
    KFnNurbsCurve fn;
    curveData(fn, circleCVs(2.0), circleKnots(), 2, KFnNurbsCurve::kClosed, true);
    const double h = std::sqrt(0.5);
    const KPoint mid = pointAt(fn, 0.5);
    EXPECT_TRUE(mid.isEquivalent(KPoint(2 * h, 2 * h, 0, 1), 1e-14)); // cartesian, w = 1
    EXPECT_TRUE(pointAt(fn, 2.0).isEquivalent(KPoint(-2, 0, 0), 1e-15));
    // dC/dt at the start, not normalised: 2 * (w1 / w0) * (P1 - P0) = (0, 2 sqrt(2), 0).
    EXPECT_TRUE(fn.tangent(0.0).isEquivalent(KVector(0, 2 * std::sqrt(2.0), 0), 1e-13));
    for (double t : {0.3, 1.7, 3.9}) {
        const KPoint p = pointAt(fn, t);
        EXPECT_NEAR(KVector(p.x, p.y, p.z).length(), 2.0, 1e-13) << t;
        EXPECT_TRUE(fn.normal(t).isEquivalent(KVector(-p.x / 2, -p.y / 2, 0), 1e-12)) << t;
    }
    KPoint p;
    EXPECT_EQ(fn.getPointAtParam(std::nan(""), p).statusCode(), KStatus::kInvalidParameter);
    KStatus status;
    fn.tangent(std::nan(""), KSpace::kObject, &status);
    EXPECT_EQ(status.statusCode(), KStatus::kInvalidParameter);
    fn.findLengthFromParam(std::nan(""), &status);
    EXPECT_EQ(status.statusCode(), KStatus::kInvalidParameter);

    // The default tolerance is served by the cached table, a finer one is measured anew.
    EXPECT_NEAR(fn.length(), 4 * std::numbers::pi, 1e-10);
    EXPECT_NEAR(fn.length(1e-12), 4 * std::numbers::pi, 1e-11);
    EXPECT_NEAR(fn.findLengthFromParam(1.0), std::numbers::pi, 1e-10);
    EXPECT_NEAR(fn.findParamFromLength(std::numbers::pi / 2), 0.5, 1e-10);
}

TEST_F(CurveEvaluationTest, PeriodicCurvesTakeTheHostKnotsAndCountTheOverlap) {
    // The uniform periodic cubic on a square: 4 distinct CVs and 3 repeated, domain [0, 4].
    KFnNurbsCurve fn;
    curveData(fn,
              {{1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}},
              {-2, -1, 0, 1, 2, 3, 4, 5, 6}, 3, KFnNurbsCurve::kPeriodic);
    EXPECT_TRUE(fn.isPeriodic());
    EXPECT_EQ(fn.form(), KFnNurbsCurve::kPeriodic);
    EXPECT_EQ(fn.numCVs(), 7);
    double start = 0;
    double end = 0;
    ASSERT_TRUE(fn.getKnotDomain(start, end));
    EXPECT_EQ(start, 0.0);
    EXPECT_EQ(end, 4.0);
    // The uniform cubic at a knot: (P0 + 4 P1 + P2) / 6, the same at both ends of the domain.
    EXPECT_TRUE(pointAt(fn, 0.0).isEquivalent(KPoint(-2.0 / 3, 2.0 / 3, 0), 1e-14));
    EXPECT_TRUE(pointAt(fn, 4.0).isEquivalent(KPoint(-2.0 / 3, 2.0 / 3, 0), 1e-14));
    EXPECT_NEAR(fn.findLengthFromParam(1.0), fn.length() / 4, 1e-9); // fourfold symmetry
}

TEST_F(CurveEvaluationTest, ConcurrentReadersOfOneCurveAgree) {
    // A cubic of two Bezier pieces joined at t = 1 by a triple knot.
    KFnNurbsCurve fn;
    const KObject data = curveData(
        fn, {{0, 0, 0}, {1, 2, 0}, {2, 2, 1}, {3, 0, 1}, {4, -1, 2}, {5, 1, 2}, {6, 0, 0}},
        {0, 0, 0, 1, 1, 1, 2, 2, 2}, 3);
    constexpr int kThreads = 4;
    std::vector<double> lengths(kThreads);
    std::vector<double> params(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            const KFnNurbsCurve reader(data);
            lengths[i] = reader.length();
            params[i] = reader.findParamFromLength(lengths[i] / 2);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(lengths[i], lengths[0]);
        EXPECT_EQ(params[i], params[0]);
    }
    EXPECT_NEAR(fn.findLengthFromParam(params[0]), lengths[0] / 2, 1e-9 * lengths[0]);
}

} // namespace
