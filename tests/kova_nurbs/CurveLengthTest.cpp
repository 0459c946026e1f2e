#include "RandomCurves.h"

#include <cmath>
#include <gtest/gtest.h>
#include <kova/nurbs/ArcLengthTable.h>
#include <kova/nurbs/Curve.h>
#include <limits>
#include <numbers>
#include <random>

using namespace kova::nurbs;

TEST(CurveLength, CircleIsTwoPiRToTheToleranceAndClampsOutsideItsLength) {
    for (const Form form : {Form::Closed, Form::Periodic}) {
        const Curve circle = Curve::circle({1, -2, 0.5}, 3.0, form);
        ASSERT_TRUE(circle.isValid()) << circle.validate();
        const double exact = 2.0 * std::numbers::pi * 3.0;
        EXPECT_NEAR(circle.length(1e-3), exact, 1e-3 * exact);
        EXPECT_NEAR(circle.length(1e-10), exact, 1e-10 * exact);
        // A quarter of the circle per quarter of the domain, by symmetry.
        EXPECT_NEAR(circle.lengthBetween(0.25, 0.5, 1e-10), exact / 4, 1e-10 * exact);
        EXPECT_NEAR(circle.paramFromLength(exact / 2, 1e-10), 0.5, 1e-10);
    }
    // Lengths outside the curve clamp to its ends.
    const Curve unit = Curve::circle({0, 0, 0}, 1.0);
    EXPECT_EQ(unit.paramFromLength(-1.0, 1e-3), 0.0);
    EXPECT_EQ(unit.paramFromLength(std::numeric_limits<double>::quiet_NaN(), 1e-3), 0.0);
    EXPECT_EQ(unit.paramFromLength(100.0, 1e-3), 1.0);
    EXPECT_EQ(unit.paramFromLength(unit.length(1e-3), 1e-3), 1.0);
    // Tolerances too small or meaningless fall back to the finest one instead of failing.
    EXPECT_NEAR(unit.length(0.0), 2 * std::numbers::pi, 1e-12);
    EXPECT_NEAR(unit.length(-1.0), 2 * std::numbers::pi, 1e-12);
}

TEST(CurveLength, RationalLinearSegmentsAreMeasuredExactly) {
    const Curve segment(1, Form::Open, {{0, 0, 0, 1}, {6, 8, 0, 4}}, {0, 1});
    ASSERT_TRUE(segment.isValid());
    EXPECT_EQ(segment.length(1e-3), 10.0);
    // The weights pull the points towards the heavier end, so length is not linear in t ...
    const double half = segment.lengthBetween(0.0, 0.5, 1e-3);
    EXPECT_NEAR(half, 8.0, 1e-12); // C(0.5) = (0.5*0 + 0.5*4*(6,8)) / 2.5 = (4.8, 6.4)
    // ... and the inverse follows the weights.
    EXPECT_NEAR(segment.paramFromLength(8.0, 1e-3), 0.5, 1e-14);
}

TEST(CurveLength, ACurveThatDoublesBackKeepsItsLengthsAcrossTheTurn) {
    // Out along x and back: C(t) = (4t - 4t^2, 0, 0), whose speed |4 - 8t| has a kink at 0.5.
    const Curve curve = Curve::bezier({{0, 0, 0, 1}, {2, 0, 0, 1}, {0, 0, 0, 1}});
    ASSERT_TRUE(curve.isValid()) << curve.validate();
    EXPECT_NEAR(curve.length(1e-3), 2.0, 1e-7 * 2.0);
    EXPECT_NEAR(curve.lengthBetween(0.0, 0.3, 1e-10), 0.84, 1e-10 * 2.0);
    EXPECT_NEAR(curve.lengthBetween(0.2, 0.9, 1e-10), 1.0, 1e-10 * 2.0);
    const ArcLengthTable table(curve, 1e-3);
    EXPECT_NEAR(table.lengthAt(0.7), 1.16, 1e-7 * 2.0);
    // Half a unit short of the end: back at x = 0.5, where 4t - 4t^2 = 0.5 on the way back.
    EXPECT_NEAR(table.paramAt(1.5), 0.5 + 0.5 * std::sqrt(0.5), 1e-7);
}

TEST(CurveLength, LengthsAddUpOverAnySplitAndParamFromLengthInvertsThem) {
    std::mt19937_64 rng(17);
    for (int trial = 0; trial < 300; ++trial) {
        const Curve curve =
            fixtures::randomCurve(rng, {.periodic = trial % 3 == 0, .rational = trial % 2 == 0});
        ASSERT_TRUE(curve.isValid()) << curve.validate();
        const auto [start, end] = curve.knotDomain();
        const double t = std::uniform_real_distribution<double>(start, end)(rng);
        const double total = curve.length(1e-9);
        const double head = curve.lengthBetween(start, t, 1e-9);
        EXPECT_NEAR(head + curve.lengthBetween(t, end, 1e-9), total, 1e-8 * total) << trial;
        // The chord never exceeds the arc.
        EXPECT_LE(distance(curve.pointAt(start), curve.pointAt(t)), head * (1 + 1e-9)) << trial;
        // Against lengths measured on their own, to better than 1e-6 in parameter ...
        const double s = curve.lengthBetween(start, t, 1e-3);
        EXPECT_NEAR(curve.paramFromLength(s, 1e-3), t, 1e-7 * (end - start)) << trial;
        // ... and against the table's own lengths, to rounding, monotonically.
        const ArcLengthTable table(curve, 1e-3);
        EXPECT_EQ(table.totalLength(), curve.length(1e-3));
        EXPECT_EQ(table.lengthAt(start), 0.0);
        EXPECT_DOUBLE_EQ(table.lengthAt(end), table.totalLength());
        double previous = start;
        for (int j = 0; j <= 20; ++j) {
            const double length = table.totalLength() * j / 20;
            const double param = table.paramAt(length);
            EXPECT_GE(param, previous);
            previous = param;
            EXPECT_NEAR(table.lengthAt(param), length, 1e-11 * table.totalLength()) << trial;
        }
    }
}

TEST(CurveLength, StationaryStretchesKeepLengthAndParameterConsistent) {
    // Three coincident CVs in the middle of a quadratic make the curve stop at that point.
    const Curve curve(2, Form::Open,
                      {{0, 0, 0, 1}, {1, 0, 0, 1}, {1, 0, 0, 1}, {1, 0, 0, 1}, {1, 2, 0, 1}},
                      {0, 0, 1, 2, 3, 3});
    ASSERT_TRUE(curve.isValid()) << curve.validate();
    EXPECT_NEAR(curve.lengthBetween(1.0, 2.0, 1e-6), 0.0, 1e-15);
    const double toCorner = curve.lengthBetween(0.0, 1.0, 1e-9);
    EXPECT_NEAR(toCorner, 1.0, 1e-9);
    const double t = curve.paramFromLength(toCorner, 1e-9);
    EXPECT_GE(t, 1.0 - 1e-9);
    EXPECT_LE(t, 2.0 + 1e-9);
    EXPECT_NEAR(curve.length(1e-9), 3.0, 1e-9);
}
