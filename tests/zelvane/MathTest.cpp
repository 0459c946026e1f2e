#include <gtest/gtest.h>
#include <zelvane/math/Matrix.h>

using namespace Zelvane::Math;

namespace {

constexpr float4x4 translation(float x, float y, float z) {
    float4x4 m = float4x4::identity();
    m.m[3][0] = x;
    m.m[3][1] = y;
    m.m[3][2] = z;
    return m;
}

constexpr float4x4 scale(float x, float y, float z) {
    return {{{x, 0, 0, 0}, {0, y, 0, 0}, {0, 0, z, 0}, {0, 0, 0, 1}}};
}

void expectNear(const float4x4& a, const float4x4& b, float tolerance) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            EXPECT_NEAR(a.m[r][c], b.m[r][c], tolerance) << r << "," << c;
        }
    }
}

TEST(Matrix, PointsAreRowVectorsAndProductsApplyTheLeftMatrixFirst) {
    const float4x4 move = translation(1, 2, 3);
    EXPECT_EQ(transformPoint(move, {1, 1, 1}), (float3{2, 3, 4}));
    EXPECT_EQ(transformVector(move, {1, 1, 1}), (float3{1, 1, 1}));
    EXPECT_EQ(transformPoint(scale(2, 2, 2) * translation(1, 0, 0), {1, 0, 0}), (float3{3, 0, 0}));
    EXPECT_EQ(transformPoint(translation(1, 0, 0) * scale(2, 2, 2), {1, 0, 0}), (float3{4, 0, 0}));
}

TEST(Matrix, InverseUndoesTheTransformUnlessItIsSingularOrNotFinite) {
    const float4x4 m = scale(2, 3, 0.5f) * translation(4, -1, 2);
    const auto inverted = inverse(m);
    ASSERT_TRUE(inverted);
    expectNear(m * *inverted, float4x4::identity(), 1e-6f);
    EXPECT_EQ(transpose(transpose(m)), m);
    EXPECT_EQ(transpose(m).m[0][3], 4.0f);
    // Tiny uniform scales are still invertible.
    const auto tiny = inverse(scale(1e-4f, 1e-4f, 1e-4f));
    ASSERT_TRUE(tiny);
    EXPECT_NEAR(tiny->m[0][0], 1e4f, 1e-1f);

    EXPECT_FALSE(inverse(scale(1, 0, 1)));
    float4x4 broken = float4x4::identity();
    broken.m[1][1] = std::numeric_limits<float>::infinity();
    EXPECT_FALSE(inverse(broken));
}

TEST(Vector, NormalizeKeepsTheZeroVector) {
    EXPECT_EQ(normalize(float3{0, 0, 0}), (float3{0, 0, 0}));
    EXPECT_EQ(normalize(float3{0, 3, 4}), (float3{0, 0.6f, 0.8f}));
    EXPECT_EQ(cross(float3{1, 0, 0}, float3{0, 1, 0}), (float3{0, 0, 1}));
}

} // namespace
