#include "RandomCurves.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <kova/nurbs/Curve.h>
#include <limits>
#include <random>
#include <vector>

using namespace kova::nurbs;

namespace {

double binomial(int n, int k) {
    double value = 1.0;
    for (int i = 1; i <= k; ++i)
        value = value * (n - k + i) / i;
    return value;
}

// Derivative `order` (0-2) of the Bernstein polynomial B_{i,p} at t.
double bernstein(int i, int p, double t, int order) {
    if (i < 0 || i > p)
        return 0.0;
    if (order == 0)
        return binomial(p, i) * std::pow(t, i) * std::pow(1.0 - t, p - i);
    return p * (bernstein(i - 1, p - 1, t, order - 1) - bernstein(i, p - 1, t, order - 1));
}

// A rational Bezier curve and its derivatives straight from the Bernstein form and the quotient
// rule: an evaluation independent of the library's knot machinery.
Vec3 bernsteinDerivative(const std::vector<ControlVertex>& cvs, double t, int order) {
    const int p = static_cast<int>(cvs.size()) - 1;
    Vec3 A[3];
    double W[3] = {};
    for (int k = 0; k <= order; ++k)
        for (int i = 0; i <= p; ++i) {
            const double b = bernstein(i, p, t, k) * cvs[i].w;
            A[k] = A[k] + b * cvs[i].position();
            W[k] += b;
        }
    const Vec3 c0 = (1.0 / W[0]) * A[0];
    if (order == 0)
        return c0;
    const Vec3 c1 = (1.0 / W[0]) * (A[1] - W[1] * c0);
    if (order == 1)
        return c1;
    return (1.0 / W[0]) * (A[2] - 2.0 * W[1] * c1 - W[2] * c0);
}

} // namespace

TEST(CurveEvaluation, DegreeOneCurvesAreExactPolylines) {
    const std::vector<Vec3> points = {{0, 0, 0}, {3, 4, 0}, {3, 4, 12}, {0, 0, 12}};
    const Curve polyline = Curve::polyline(points);
    ASSERT_TRUE(polyline.isValid());
    EXPECT_EQ(polyline.knotDomain(), std::make_pair(0.0, 3.0));
    for (int j = 0; j < 4; ++j)
        EXPECT_EQ(polyline.pointAt(j), points[j]);
    EXPECT_EQ(polyline.pointAt(0.25), (Vec3{0.75, 1, 0}));
    // At an interior knot the segment to the right gives the tangent; at the end, the last one.
    EXPECT_EQ(polyline.tangentAt(1.0), (Vec3{0, 0, 12}));
    EXPECT_EQ(polyline.tangentAt(3.0), (Vec3{-3, -4, 0}));
    EXPECT_EQ(polyline.derivativeAt(0.6, 2), (Vec3{0, 0, 0}));
    EXPECT_EQ(polyline.length(1e-3), 22.0);
    EXPECT_DOUBLE_EQ(polyline.lengthBetween(2.5, 0.5, 1e-3), 2.5 + 12.0 + 2.5);
    EXPECT_DOUBLE_EQ(polyline.paramFromLength(11.0, 1e-3), 1.5);
    EXPECT_EQ(Curve::line({1, 2, 3}, {4, 6, 3}).length(1e-3), 5.0);
}

TEST(CurveEvaluation, BezierMatchesTheBernsteinForm) {
    std::mt19937_64 rng(7);
    std::uniform_real_distribution<double> coordinate(-5.0, 5.0);
    std::uniform_real_distribution<double> weight(0.3, 3.0);
    for (int p = 1; p <= 7; ++p) {
        for (const bool rational : {false, true}) {
            std::vector<ControlVertex> cvs;
            for (int i = 0; i <= p; ++i)
                cvs.push_back({coordinate(rng), coordinate(rng), coordinate(rng),
                               rational ? weight(rng) : 1.0});
            const Curve bezier = Curve::bezier(cvs);
            ASSERT_TRUE(bezier.isValid()) << bezier.validate();
            std::vector<double> knots(p, 0.0);
            knots.resize(2 * p, 1.0);
            EXPECT_EQ(bezier.knots(), knots);
            for (double t : {0.0, 0.1, 0.37, 0.5, 0.81, 1.0})
                for (int order = 0; order <= 2; ++order) {
                    const Vec3 expected = bernsteinDerivative(cvs, t, order);
                    EXPECT_LE(distance(bezier.derivativeAt(t, order), expected),
                              1e-12 * (1.0 + norm(expected)))
                        << "degree " << p << ", t " << t << ", order " << order;
                }
        }
    }
}

TEST(CurveEvaluation, ClampedEndsAndFullMultiplicityKnotsHitTheirCVsExactly) {
    std::mt19937_64 rng(11);
    for (int trial = 0; trial < 200; ++trial) {
        const Curve curve = fixtures::randomCurve(rng, {.periodic = false, .rational = true});
        ASSERT_TRUE(curve.isValid()) << curve.validate();
        const auto [start, end] = curve.knotDomain();
        EXPECT_EQ(curve.pointAt(start), curve.cvs().front().position());
        EXPECT_EQ(curve.pointAt(end), curve.cvs().back().position());
        // Parameters beyond the domain are clamped to it.
        EXPECT_EQ(curve.pointAt(start - 1.0), curve.pointAt(start));
        EXPECT_EQ(curve.pointAt(end + 1.0), curve.pointAt(end));
    }
}

TEST(CurveEvaluation, KnotOfFullMultiplicityIsACornerAtItsCV) {
    // Two cubic Bezier pieces joined at parameter 1 with a knot of multiplicity 3.
    const std::vector<ControlVertex> cvs = {{0, 0, 0, 1}, {1, 1, 0, 1}, {2, 1, 0, 1}, {3, 0, 0, 1},
                                            {3, 2, 0, 1}, {4, 3, 0, 1}, {6, 3, 0, 1}};
    const Curve curve(3, Form::Open, cvs, {0, 0, 0, 1, 1, 1, 3, 3, 3});
    ASSERT_TRUE(curve.isValid()) << curve.validate();
    EXPECT_EQ(curve.pointAt(1.0), (Vec3{3, 0, 0}));
    // The right-hand piece gives the derivative at the joint: 3 (P4 - P3) / (3 - 1).
    EXPECT_EQ(curve.tangentAt(1.0), (Vec3{0, 3, 0}));
    // Just before it, the left-hand piece heads along P3 - P2.
    const Vec3 before = curve.tangentAt(std::nextafter(1.0, 0.0));
    EXPECT_NEAR(before.x, 3.0, 1e-9);
    EXPECT_NEAR(before.y, -3.0, 1e-9);
    // The end of the domain takes the last piece: 3 (P6 - P5) / 2.
    EXPECT_EQ(curve.tangentAt(3.0), (Vec3{3, 0, 0}));
}

TEST(CurveEvaluation, SamplePointsAgreesWithPointAtInAnyOrder) {
    std::mt19937_64 rng(5);
    for (int trial = 0; trial < 100; ++trial) {
        const Curve curve =
            fixtures::randomCurve(rng, {.periodic = trial % 2 == 0, .rational = trial % 3 == 0});
        const auto [start, end] = curve.knotDomain();
        std::uniform_real_distribution<double> param(start - 0.5, end + 0.5);
        std::vector<double> params(64);
        for (double& t : params)
            t = param(rng);
        params.push_back(end);
        params.push_back(curve.knots()[curve.degree()]);
        if (trial % 2 == 1)
            std::sort(params.begin(), params.end());
        std::vector<double> xyz(3 * params.size());
        curve.samplePoints(params.data(), params.size(), xyz.data());
        for (std::size_t i = 0; i < params.size(); ++i)
            EXPECT_EQ((Vec3{xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]}), curve.pointAt(params[i]))
                << "trial " << trial << " t " << params[i];
    }
}

TEST(CurveEvaluation, GrevilleAbscissaeOfAClampedCubic) {
    const std::vector<Vec3> points = {{0, 0, 0}, {1, 0, 0}, {2, 1, 0},
                                      {3, 1, 0}, {4, 0, 0}, {5, 0, 0}};
    const Curve curve = Curve::clampedUniform(3, points);
    ASSERT_EQ(curve.knots(), (std::vector<double>{0, 0, 0, 1, 2, 3, 3, 3}));
    const std::vector<double> greville = curve.grevilleAbscissae();
    ASSERT_EQ(greville.size(), 6u);
    const double expected[6] = {0.0, 1.0 / 3.0, 1.0, 2.0, 8.0 / 3.0, 3.0};
    for (int j = 0; j < 6; ++j)
        EXPECT_DOUBLE_EQ(greville[j], expected[j]) << j;

    EXPECT_TRUE(
        Curve(3, Form::Open, curve.cvs(), {0, 0, 0, 1, 2, 3, 3}).grevilleAbscissae().empty());
    EXPECT_TRUE(Curve(0, Form::Open, curve.cvs(), {0, 1, 2, 3, 4}).grevilleAbscissae().empty());
}

TEST(CurveEvaluation, UnevaluableCurvesGiveNaNAndZeroLengthWithoutCrashing) {
    const std::vector<ControlVertex> four = {
        {0, 0, 0, 1}, {1, 0, 0, 1}, {2, 0, 0, 1}, {3, 0, 0, 1}};
    const Curve broken[] = {
        Curve(),
        Curve(3, Form::Open, four, {0, 0, 1, 1}),       // too few knots
        Curve(3, Form::Open, four, {0, 0, 0, 0, 0, 0}), // empty domain
        Curve(3, Form::Open, four, {0, 0, 2, 1, 1, 1}), // decreasing
        Curve(16, Form::Open, four, {}),                // degree too high
        Curve(2, Form::Periodic, {four[0]}, {0, 1}),    // too few CVs
    };
    for (const Curve& curve : broken) {
        EXPECT_FALSE(curve.evaluable());
        EXPECT_FALSE(curve.isValid());
        EXPECT_TRUE(std::isnan(curve.pointAt(0.5).x));
        EXPECT_TRUE(std::isnan(curve.knotDomain().first));
        EXPECT_EQ(curve.length(1e-3), 0.0);
        EXPECT_TRUE(std::isnan(curve.paramFromLength(1.0, 1e-3)));
        double xyz[3] = {};
        const double t = 0.5;
        curve.samplePoints(&t, 1, xyz);
        EXPECT_TRUE(std::isnan(xyz[0]));
    }
    // Zero and negative weights are invalid but still evaluate without faults.
    std::vector<ControlVertex> weighted = four;
    weighted[1].w = 0.0;
    weighted[2].w = -1.0;
    const Curve zeroWeight = Curve::bezier(weighted);
    EXPECT_TRUE(zeroWeight.evaluable());
    EXPECT_FALSE(zeroWeight.isValid());
    EXPECT_EQ(zeroWeight.pointAt(0.0), (Vec3{0, 0, 0}));
    (void)zeroWeight.paramFromLength(0.5 * zeroWeight.length(1e-3), 1e-3);
    // A NaN parameter or an unsupported derivative order gives NaN.
    const Curve line = Curve::line({0, 0, 0}, {1, 0, 0});
    EXPECT_TRUE(std::isnan(line.pointAt(std::numeric_limits<double>::quiet_NaN()).x));
    EXPECT_TRUE(std::isnan(line.derivativeAt(0.5, 3).x));
    EXPECT_TRUE(std::isnan(line.derivativeAt(0.5, -1).x));
}
