#include "CurveTestSupport.h"

#include <numbers>
#include <thread>

namespace {

class CurveEvaluationTest : public CurveTest {};

// A cubic of two Bezier pieces joined at t = 1 by a triple knot.
const std::vector<KPoint> kTwoPieces{{0, 0, 0},  {1, 2, 0}, {2, 2, 1}, {3, 0, 1},
                                     {4, -1, 2}, {5, 1, 2}, {6, 0, 0}};
const std::vector<double> kTwoPieceKnots{0, 0, 0, 1, 1, 1, 2, 2, 2};

KPoint pointAt(const KFnNurbsCurve& fn, double t) {
    KPoint p;
    EXPECT_TRUE(fn.getPointAtParam(t, p));
    return p;
}

TEST_F(CurveEvaluationTest, EndsAndFullMultiplicityKnotsHitTheirCVsExactly) {
    KFnNurbsCurve fn;
    curveData(fn, kTwoPieces, kTwoPieceKnots, 3);
    EXPECT_EQ(pointAt(fn, 0.0), kTwoPieces[0]);
    EXPECT_EQ(pointAt(fn, 1.0), kTwoPieces[3]);
    EXPECT_EQ(pointAt(fn, 2.0), kTwoPieces[6]);
    // Outside the domain the parameter is clamped.
    EXPECT_EQ(pointAt(fn, -3.0), kTwoPieces[0]);
    EXPECT_EQ(pointAt(fn, 7.0), kTwoPieces[6]);
    // End tangents of a clamped cubic: 3 (P1 - P0) over a unit interval, not normalised.
    EXPECT_TRUE(fn.tangent(0.0).isEquivalent(KVector(3, 6, 0), 1e-12));
    EXPECT_TRUE(fn.tangent(2.0).isEquivalent(KVector(3, -3, -6), 1e-12));
    // At the joint the piece on the right is used: 3 (P4 - P3).
    EXPECT_TRUE(fn.tangent(1.0).isEquivalent(KVector(3, -3, 3), 1e-12));
}

TEST_F(CurveEvaluationTest, DegreeOneCurvesAreTheirPolyline) {
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

TEST_F(CurveEvaluationTest, RationalCirclePointsTangentsAndNormals) {
    KFnNurbsCurve fn;
    curveData(fn, circleCVs(2.0), circleKnots(), 2, KFnNurbsCurve::kClosed, true);
    const double h = std::sqrt(0.5);
    const KPoint mid = pointAt(fn, 0.5);
    EXPECT_TRUE(mid.isEquivalent(KPoint(2 * h, 2 * h, 0, 1), 1e-14)); // cartesian, w = 1
    EXPECT_TRUE(pointAt(fn, 2.0).isEquivalent(KPoint(-2, 0, 0), 1e-15));
    // dC/dt at the start: 2 * (w1 / w0) * (P1 - P0) = (0, 2 sqrt(2), 0).
    EXPECT_TRUE(fn.tangent(0.0).isEquivalent(KVector(0, 2 * std::sqrt(2.0), 0), 1e-13));
    for (double t : {0.3, 1.7, 3.9}) {
        const KPoint p = pointAt(fn, t);
        EXPECT_NEAR(KVector(p.x, p.y, p.z).length(), 2.0, 1e-13) << t;
        EXPECT_NEAR(fn.tangent(t) * KVector(p.x, p.y, p.z), 0.0, 1e-12) << t;
        EXPECT_TRUE(fn.normal(t).isEquivalent(KVector(-p.x / 2, -p.y / 2, 0), 1e-12)) << t;
    }
    KPoint p;
    EXPECT_EQ(fn.getPointAtParam(std::nan(""), p).statusCode(), KStatus::kInvalidParameter);
}

TEST_F(CurveEvaluationTest, LengthsOfALineAndACircle) {
    KFnNurbsCurve line;
    curveData(line, {{1, 1, 1}, {4, 5, 1}}, {0, 1}, 1);
    EXPECT_DOUBLE_EQ(line.length(), 5.0);
    KFnNurbsCurve cubicLine; // a straight cubic with uneven speed
    curveData(cubicLine, {{0, 0, 0}, {0.5, 0, 0}, {4, 0, 0}, {6, 0, 0}}, {0, 0, 0, 1, 1, 1}, 3);
    EXPECT_NEAR(cubicLine.length(), 6.0, 1e-12);

    KFnNurbsCurve circle;
    curveData(circle, circleCVs(2.0), circleKnots(), 2, KFnNurbsCurve::kClosed, true);
    EXPECT_NEAR(circle.length(), 4 * std::numbers::pi, 1e-10);
    EXPECT_NEAR(circle.length(1e-12), 4 * std::numbers::pi, 1e-11);
    EXPECT_NEAR(circle.findLengthFromParam(1.0), std::numbers::pi, 1e-10);
}

TEST_F(CurveEvaluationTest, ParamFromLengthInvertsLengthFromParam) {
    KFnNurbsCurve circle;
    curveData(circle, circleCVs(), circleKnots(), 2, KFnNurbsCurve::kClosed, true);
    // An eighth of the circle ends at 45 degrees, parameter 0.5 by symmetry.
    EXPECT_NEAR(circle.findParamFromLength(std::numbers::pi / 4), 0.5, 1e-10);

    KFnNurbsCurve fn;
    curveData(fn, kTwoPieces, kTwoPieceKnots, 3);
    const double total = fn.length();
    for (int i = 0; i <= 20; ++i) {
        const double s = total * i / 20.0;
        const double t = fn.findParamFromLength(s);
        EXPECT_NEAR(fn.findLengthFromParam(t), s, 1e-9 * total) << i;
    }
    EXPECT_EQ(fn.findParamFromLength(-1.0), 0.0);
    EXPECT_EQ(fn.findParamFromLength(total + 1.0), 2.0);
    EXPECT_EQ(fn.findParamFromLength(0.0), 0.0);
}

TEST_F(CurveEvaluationTest, PeriodicCurvesCloseSmoothly) {
    // The uniform periodic cubic on a square: 4 distinct CVs and 3 repeated, domain [0, 4].
    const std::vector<KPoint> cvs{{1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}, {1, -1, 0},
                                  {1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}};
    KFnNurbsCurve fn;
    curveData(fn, cvs, {-2, -1, 0, 1, 2, 3, 4, 5, 6}, 3, KFnNurbsCurve::kPeriodic);
    EXPECT_TRUE(fn.isPeriodic());
    EXPECT_EQ(fn.form(), KFnNurbsCurve::kPeriodic);
    EXPECT_EQ(fn.numCVs(), 7); // the overlap counts
    double start = 0;
    double end = 0;
    ASSERT_TRUE(fn.getKnotDomain(start, end));
    EXPECT_EQ(start, 0.0);
    EXPECT_EQ(end, 4.0);
    EXPECT_TRUE(pointAt(fn, 0.0).isEquivalent(pointAt(fn, 4.0), 1e-14));
    EXPECT_TRUE(fn.tangent(0.0).isEquivalent(fn.tangent(4.0), 1e-13));
    // The uniform cubic at a knot: (P0 + 4 P1 + P2) / 6.
    EXPECT_TRUE(pointAt(fn, 0.0).isEquivalent(KPoint(-2.0 / 3, 2.0 / 3, 0), 1e-14));
    const double length = fn.length();
    EXPECT_GT(length, 2 * std::numbers::pi * 2.0 / 3);          // beyond the inscribed circle
    EXPECT_LT(length, 8.0);                                     // inside the square
    EXPECT_NEAR(fn.findLengthFromParam(1.0), length / 4, 1e-9); // fourfold symmetry
}

TEST_F(CurveEvaluationTest, ConcurrentReadersOfOneCurveAgree) {
    KFnNurbsCurve fn;
    const KObject data = curveData(fn, kTwoPieces, kTwoPieceKnots, 3);
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
