#include "Fixtures.h"

#include <cmath>
#include <numbers>
#include <zelvane/algorithms/MeshVertexNormals.h>

namespace {

using Zelvane::GeometryAlgorithms::computeMeshVertexNormals;
using Zelvane::Math::float3;
using namespace fixtures;

constexpr float3 kZero{0.0f, 0.0f, 0.0f};

std::vector<float3> normalsOf(const Zelvane::Object& mesh, bool byArea, bool byAngle) {
    Orsel::Array<float3> normals;
    EXPECT_TRUE(computeMeshVertexNormals(mesh, byArea, byAngle, normals));
    return values(normals);
}

TEST(MeshVertexNormals, CubeCornersPointAlongTheDiagonalsInEveryWeighting) {
    const auto cube = unitCube();
    for (int mode = 0; mode < 4; ++mode) {
        const std::vector<float3> normals = normalsOf(*cube, mode & 1, mode & 2);
        ASSERT_EQ(normals.size(), 8u);
        for (int i = 0; i < 8; ++i) {
            const float3 diagonal = unit(float(i & 1) * 2 - 1, float((i >> 1) & 1) * 2 - 1,
                                         float((i >> 2) & 1) * 2 - 1);
            EXPECT_TRUE(near(normals[i], diagonal)) << "point " << i << ", mode " << mode;
        }
    }
}

TEST(MeshVertexNormals, PlanarTriangleQuadAndPentagonGiveTheirPlaneNormal) {
    const auto triangle = mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 3}, {0, 1, 2});
    for (const float3& n : normalsOf(*triangle, true, true)) {
        EXPECT_TRUE(near(n, {0, 0, 1}));
    }
    // Wound clockwise seen from +z: the normal follows the winding.
    const auto quad = mesh({{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}}, {0, 4}, {0, 1, 2, 3});
    for (const float3& n : normalsOf(*quad, false, false)) {
        EXPECT_TRUE(near(n, {0, 0, -1}));
    }
    // A convex pentagon in the plane z = x.
    const auto pentagon =
        mesh({{0, 0, 0}, {2, 0, 2}, {3, 1, 3}, {1, 3, 1}, {-1, 1, -1}}, {0, 5}, {0, 1, 2, 3, 4});
    for (int mode = 0; mode < 4; ++mode) {
        for (const float3& n : normalsOf(*pentagon, mode & 1, mode & 2)) {
            EXPECT_TRUE(near(n, unit(-1, 0, 1))) << "mode " << mode;
        }
    }
}

TEST(MeshVertexNormals, NonPlanarQuadUsesTheNewellNormalNotItsFirstTriangle) {
    // The first triangle alone would give (0, -1, 1)/sqrt(2); the vector area is
    // (1,1,1) x (-1,1,0) / 2 = (-1,-1,2)/2.
    const auto quad = mesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}, {0, 4}, {0, 1, 2, 3});
    for (const float3& n : normalsOf(*quad, false, false)) {
        EXPECT_TRUE(near(n, unit(-1, -1, 2)));
    }
}

TEST(MeshVertexNormals, AreaAndAngleWeightingDifferOnMixedFaces) {
    // Point 0 is shared by a triangle in z = 0 (area 1/2, angle pi/4 at point 0, normal +z)
    // and a 3 x 1 rectangle in y = 0 (area 3, angle pi/2 at point 0, normal +y).
    const auto mixed = mesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 1}, {3, 0, 1}, {3, 0, 0}},
                            {0, 3, 7}, {0, 1, 2, 0, 3, 4, 5});
    const float pi = std::numbers::pi_v<float>;
    EXPECT_TRUE(near(normalsOf(*mixed, false, false)[0], unit(0, 1, 1)));
    EXPECT_TRUE(near(normalsOf(*mixed, true, false)[0], unit(0, 3, 0.5f)));
    EXPECT_TRUE(near(normalsOf(*mixed, false, true)[0], unit(0, pi / 2, pi / 4)));
    EXPECT_TRUE(near(normalsOf(*mixed, true, true)[0], unit(0, 3 * pi / 2, pi / 8)));
    // Points of one face only keep that face's normal.
    EXPECT_TRUE(near(normalsOf(*mixed, true, true)[1], {0, 0, 1}));
    EXPECT_TRUE(near(normalsOf(*mixed, true, true)[4], {0, 1, 0}));
}

TEST(MeshVertexNormals, ReflexCornerWeighsItsFullInteriorAngle) {
    // An arrowhead in z = 0 whose notch at the origin has an interior angle of 3*pi/2, and a
    // triangle in x = 0 (normal +x) with a right angle there.
    const auto shapes = mesh({{0, 0, 0}, {1, -1, 0}, {0, 2, 0}, {-1, -1, 0}, {0, 1, 0}, {0, 0, 1}},
                             {0, 4, 7}, {0, 1, 2, 3, 0, 4, 5});
    EXPECT_TRUE(near(normalsOf(*shapes, false, true)[0], unit(1, 0, 3)));
}

TEST(MeshVertexNormals, DegenerateFacesContributeNothingAndUnusedPointsGetZero) {
    // Face 1 is collinear, face 2 has two corners, face 3 none; point 6 is used by no face.
    const auto degenerate =
        mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 2, 0}, {0, 3, 0}, {5, 5, 5}, {9, 9, 9}},
             {0, 3, 6, 8, 8}, {0, 1, 2, 2, 3, 4, 4, 5});
    for (int mode = 0; mode < 4; ++mode) {
        const std::vector<float3> normals = normalsOf(*degenerate, mode & 1, mode & 2);
        ASSERT_EQ(normals.size(), 7u);
        EXPECT_TRUE(near(normals[2], {0, 0, 1})) << "mode " << mode;
        for (int i : {3, 4, 5, 6}) {
            EXPECT_EQ(normals[i], kZero) << "point " << i << ", mode " << mode;
        }
    }
}

TEST(MeshVertexNormals, TinyFacesAreNotMistakenForDegenerateOnes) {
    // A right triangle (normal +z) and, sharing point 0, a quad of twice its area standing on
    // the x axis (normal +y); both have a right angle at point 0. Squared lengths of these
    // faces underflow in single precision.
    const auto tiny = [](float s) {
        return mesh({{0, 0, 0}, {s, 0, 0}, {0, s, 0}, {0, 0, s}, {s, 0, s}}, {0, 3, 7},
                    {0, 1, 2, 0, 3, 4, 1});
    };
    EXPECT_TRUE(near(normalsOf(*tiny(1e-15f), true, true)[0], unit(0, 2, 1)));
    EXPECT_TRUE(near(normalsOf(*tiny(1e-15f), true, false)[0], unit(0, 2, 1)));
    EXPECT_TRUE(near(normalsOf(*tiny(1e-30f), false, true)[0], unit(0, 1, 1)));
    EXPECT_TRUE(near(normalsOf(*tiny(1e-30f), false, false)[0], unit(0, 1, 1)));
}

TEST(MeshVertexNormals, OpposingFacesCancelToZero) {
    const auto sheet = mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 3, 6}, {0, 1, 2, 0, 2, 1});
    for (const float3& n : normalsOf(*sheet, true, true)) {
        EXPECT_EQ(n, kZero);
    }
}

TEST(MeshVertexNormals, EmptyMeshGivesNoNormals) {
    auto empty = Zelvane::createObject();
    Zelvane::Geometry::populateMesh(*empty);
    Orsel::Array<float3> normals{{1, 2, 3}};
    EXPECT_TRUE(computeMeshVertexNormals(*empty, true, true, normals));
    EXPECT_TRUE(normals.empty());
}

TEST(MeshVertexNormals, RejectsBrokenLayoutsAndLeavesTheOutputEmpty) {
    const auto broken = brokenMeshes();
    for (std::size_t i = 0; i < broken.size(); ++i) {
        Orsel::Array<float3> normals{{1, 2, 3}};
        EXPECT_FALSE(computeMeshVertexNormals(*broken[i], true, true, normals)) << "layout " << i;
        EXPECT_TRUE(normals.empty()) << "layout " << i;
    }
}

} // namespace
