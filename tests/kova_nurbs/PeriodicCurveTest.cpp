#include <algorithm>
#include <gtest/gtest.h>
#include <kova/nurbs/Curve.h>
#include <vector>

using namespace kova::nurbs;

namespace {

const std::vector<Vec3> kPentagon = {{2, 0, 0}, {1, 2, 1}, {-1, 2, 0}, {-2, 0, -1}, {0, -2, 0}};

} // namespace

TEST(PeriodicCurve, UniformCubicRepeatsItsFirstCVsWhereTheClampedOneEndsOnThem) {
    const Curve curve = Curve::periodicUniform(3, kPentagon);
    ASSERT_TRUE(curve.isValid()) << curve.validate();
    EXPECT_EQ(curve.form(), Form::Periodic);
    ASSERT_EQ(curve.numCVs(), 8);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(curve.cvs()[5 + i], curve.cvs()[i]);
    EXPECT_EQ(curve.knots(), (std::vector<double>{-2, -1, 0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(curve.knotDomain(), std::make_pair(0.0, 5.0));
    // At knot j a uniform cubic B-spline sits at (P[j] + 4 P[j+1] + P[j+2]) / 6.
    for (int j = 0; j <= 5; ++j) {
        const Vec3 expected = (1.0 / 6.0) * (kPentagon[j % 5] + 4.0 * kPentagon[(j + 1) % 5] +
                                             kPentagon[(j + 2) % 5]);
        EXPECT_LE(distance(curve.pointAt(j), expected), 1e-14) << j;
    }
    // The clamped uniform cubic, unlike the periodic one, ends on its CVs.
    const Curve clamped = Curve::clampedUniform(3, kPentagon);
    ASSERT_TRUE(clamped.isValid()) << clamped.validate();
    EXPECT_EQ(clamped.knotDomain(), std::make_pair(0.0, 2.0));
    EXPECT_EQ(clamped.pointAt(0.0), kPentagon.front());
    EXPECT_EQ(clamped.pointAt(2.0), kPentagon.back());
    // The clamped tangent at the start runs along the first leg of the polygon: p (P1 - P0) / 1.
    EXPECT_EQ(clamped.tangentAt(0.0), 3.0 * (kPentagon[1] - kPentagon[0]));
    EXPECT_GT(distance(curve.pointAt(0.0), kPentagon.front()), 0.5);
}

TEST(PeriodicCurve, SeamIsSmoothUpToTheSecondDerivative) {
    for (int p = 1; p <= 5; ++p) {
        const Curve curve = Curve::periodicUniform(p, kPentagon);
        ASSERT_TRUE(curve.isValid()) << curve.validate();
        const auto [start, end] = curve.knotDomain();
        for (int order = 0; order < std::min(p, 3); ++order)
            EXPECT_LE(distance(curve.derivativeAt(end, order), curve.derivativeAt(start, order)),
                      1e-12)
                << "degree " << p << ", order " << order;
    }
}

TEST(PeriodicCurve, CircleStaysOnTheCircleInBothForms) {
    const Vec3 centre{1, 2, 3};
    for (const Form form : {Form::Closed, Form::Periodic}) {
        const Curve circle = Curve::circle(centre, 2.5, form);
        ASSERT_TRUE(circle.isValid()) << circle.validate();
        EXPECT_EQ(circle.numCVs(), form == Form::Periodic ? 10 : 9);
        for (int i = 0; i <= 1000; ++i) {
            const double t = i / 1000.0;
            const Vec3 point = circle.pointAt(t);
            EXPECT_NEAR(distance(point, centre), 2.5, 1e-12) << t;
            EXPECT_NEAR(point.z, 3.0, 1e-15);
            // The tangent is perpendicular to the radius.
            EXPECT_NEAR(dot(circle.tangentAt(t), point - centre), 0.0, 1e-10) << t;
        }
        EXPECT_EQ(circle.pointAt(0.0), (Vec3{3.5, 2, 3}));
        EXPECT_LE(distance(circle.pointAt(0.25), {1, 4.5, 3}), 1e-15);
        EXPECT_LE(distance(circle.tangentAt(1.0), circle.tangentAt(0.0)), 1e-12);
    }
}
