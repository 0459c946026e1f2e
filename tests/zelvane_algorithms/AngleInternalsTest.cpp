// The arc tangent behind angle weighting, against the standard library's.

#include "detail/Angle.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

using Zelvane::GeometryAlgorithms::detail::angleOf;
constexpr double pi = std::numbers::pi;

TEST(AngleOf, MatchesAtan2AcrossTheHalfTurnToARelative3e8) {
    for (int i = 1; i <= 100'000; ++i) {
        const double angle = pi * i / 100'000.0;
        for (const double scale : {1e-30, 1.0, 1e30}) {
            const double sine = std::abs(std::sin(angle)) * scale;
            const double cosine = std::cos(angle) * scale;
            const double expected = std::atan2(sine, cosine);
            ASSERT_NEAR(angleOf(sine, cosine), expected, 3e-8 * expected) << angle;
        }
    }
}

TEST(AngleOf, AxesAndTheZeroVectorAreExact) {
    EXPECT_EQ(angleOf(0.0, 0.0), 0.0);
    EXPECT_EQ(angleOf(0.0, 2.0), 0.0);
    EXPECT_EQ(angleOf(0.0, -2.0), pi);
    EXPECT_EQ(angleOf(3.0, 0.0), pi / 2);
    EXPECT_NEAR(angleOf(1.0, 1.0), pi / 4, 1e-15);
    EXPECT_NEAR(angleOf(1.0, -1.0), 3 * pi / 4, 1e-15);
}

} // namespace
