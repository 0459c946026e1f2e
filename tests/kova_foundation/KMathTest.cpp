#include <gtest/gtest.h>
#include <kova/KFloatMatrix.h>
#include <kova/KMatrix.h>
#include <kova/KPoint.h>
#include <kova/KTransformationMatrix.h>
#include <numbers>

namespace {

// Scale (2, 4, 5) then translate by (1, 2, 3).
const double kScaleTranslate[4][4] = {{2, 0, 0, 0}, {0, 4, 0, 0}, {0, 0, 5, 0}, {1, 2, 3, 1}};

} // namespace

TEST(KMatrixAlgebra, InverseTransposeAndDeterminantMatchHandComputedValues) {
    const KMatrix m(kScaleTranslate);
    const double expected[4][4] = {
        {0.5, 0, 0, 0}, {0, 0.25, 0, 0}, {0, 0, 0.2, 0}, {-0.5, -0.5, -0.6, 1}};
    EXPECT_TRUE(m.inverse().isEquivalent(KMatrix(expected), 1e-12));
    EXPECT_TRUE((m * m.inverse()).isEquivalent(KMatrix::identity, 1e-12));
    EXPECT_DOUBLE_EQ(m.det4x4(), 40.0);
    const KMatrix t = m.transpose();
    EXPECT_EQ(t(0, 3), 1.0);
    EXPECT_EQ(t(2, 3), 3.0);
    EXPECT_EQ(t(3, 0), 0.0);
    EXPECT_EQ(t.transpose(), m);
}

TEST(KMatrixAlgebra, SingularMatrixHasNoInverseAndYieldsIdentity) {
    double values[4][4] = {{1, 2, 3, 0}, {2, 4, 6, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    const KMatrix m(values);
    EXPECT_TRUE(m.isSingular());
    EXPECT_EQ(m.inverse(), KMatrix::identity);
    // Small entries are not singular in themselves.
    const double tiny[4][4] = {{1e-9, 0, 0, 0}, {0, 1e-9, 0, 0}, {0, 0, 1e-9, 0}, {0, 0, 0, 1e-9}};
    EXPECT_FALSE(KMatrix(tiny).isSingular());
    EXPECT_NEAR(KMatrix(tiny).inverse()(0, 0), 1e9, 1e-3);
}

TEST(KMatrixAlgebra, RowVectorConventionTranslatesPointsButNotVectors) {
    const KMatrix m(kScaleTranslate);
    const KPoint p = KPoint(1, 1, 1) * m;
    EXPECT_EQ(p, KPoint(3, 6, 8, 1));
    EXPECT_EQ(KVector(1, 1, 1) * m, KVector(2, 4, 5));
    double out[4][4];
    ASSERT_TRUE(m.get(out));
    EXPECT_EQ(out[3][2], 3.0);
    EXPECT_FALSE(m.get(nullptr));
}

TEST(KFloatMatrixAlgebra, BuiltFromDoublesInvertsAndTransposes) {
    const KFloatMatrix m(kScaleTranslate);
    const KFloatMatrix normal = m.inverse().transpose();
    EXPECT_FLOAT_EQ(normal(0, 3), -0.5f);
    EXPECT_FLOAT_EQ(normal(2, 2), 0.2f);
    EXPECT_EQ(KFloatPoint(1, 1, 1) * m, KFloatPoint(3, 6, 8, 1));
    EXPECT_TRUE(
        KFloatMatrix(KMatrix(kScaleTranslate)).asMatrix().isEquivalent(KMatrix(kScaleTranslate)));
}

TEST(KTransformationMatrixCompose, ScalesThenRotatesXYZThenTranslates) {
    const double half = std::numbers::pi / 2;
    KTransformationMatrix t;
    t.setScale({2, 1, 1}).setRotation({0, 0, half}).setTranslation({10, 0, 0});
    // (1,0,0) -> scale (2,0,0) -> 90 degrees about Z (0,2,0) -> translate (10,2,0).
    EXPECT_TRUE((KPoint(1, 0, 0) * t.asMatrix()).isEquivalent(KPoint(10, 2, 0)));

    KTransformationMatrix order;
    order.setRotation({half, half, 0});
    // About X first: +Y goes to +Z, then about Y: +Z goes to +X.
    EXPECT_TRUE((KVector(0, 1, 0) * order.asMatrix()).isEquivalent(KVector(1, 0, 0)));
}

TEST(KPointForms, CartesianizeLeavesWOfZeroAndOneAlone) {
    KPoint p(2, 4, 6, 2);
    EXPECT_EQ(p.cartesianize(), KPoint(1, 2, 3, 1));
    KPoint atInfinity(1, 2, 3, 0);
    EXPECT_EQ(atInfinity.cartesianize(), KPoint(1, 2, 3, 0));
    KPoint rational(1, 2, 3, 2);
    EXPECT_EQ(rational.homogenize(), KPoint(2, 4, 6, 2));
    EXPECT_EQ(rational.rationalize(), KPoint(1, 2, 3, 2));
    EXPECT_DOUBLE_EQ(KPoint(0, 0, 0).distanceTo(KPoint(6, 8, 0, 2)), 5.0);
    KVector zero;
    EXPECT_FALSE(zero.normalize());
    EXPECT_EQ(KVector(1, 0, 0) ^ KVector(0, 1, 0), KVector(0, 0, 1));
}
