#include "Fixtures.h"

#include <cmath>
#include <zelvane/algorithms/MeshVertexNormals.h>

namespace {

using Zelvane::GeometryAlgorithms::computeMeshVertexNormals;
using Zelvane::Math::float3;
using namespace fixtures;

constexpr float3 kZero{0.0f, 0.0f, 0.0f};

std::vector<float3> normalsOf(const Zelvane::Object& mesh, bool byArea, bool normalize) {
    Orsel::Array<float3> normals;
    EXPECT_TRUE(computeMeshVertexNormals(mesh, byArea, normalize, normals));
    return values(normals);
}

TEST(MeshVertexNormals, CubeCornersSumTheirThreeFacesAndPointAlongTheDiagonals) {
    const auto cube = unitCube();
    for (const bool byArea : {false, true}) {
        const std::vector<float3> sums = normalsOf(*cube, byArea, false);
        const std::vector<float3> normals = normalsOf(*cube, byArea, true);
        ASSERT_EQ(sums.size(), 8u);
        ASSERT_EQ(normals.size(), 8u);
        for (int i = 0; i < 8; ++i) {
            const float3 diagonal{float(i & 1) * 2 - 1, float((i >> 1) & 1) * 2 - 1,
                                  float((i >> 2) & 1) * 2 - 1};
            EXPECT_EQ(sums[i], diagonal) << "point " << i << ", by area " << byArea;
            EXPECT_TRUE(near(normals[i], unit(diagonal.x, diagonal.y, diagonal.z)))
                << "point " << i << ", by area " << byArea;
        }
    }
}

TEST(MeshVertexNormals, PolygonsContributeTheirNewellVectorAreaOrItsUnitNormal) {
    const auto triangle = mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 3}, {0, 1, 2});
    EXPECT_EQ(normalsOf(*triangle, true, false), std::vector<float3>(3, {0, 0, 0.5f}));
    EXPECT_EQ(normalsOf(*triangle, false, false), std::vector<float3>(3, {0, 0, 1}));
    // Wound clockwise seen from +z: the normal follows the winding.
    const auto quad = mesh({{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}}, {0, 4}, {0, 1, 2, 3});
    EXPECT_EQ(normalsOf(*quad, true, false), std::vector<float3>(4, {0, 0, -1}));
    EXPECT_EQ(normalsOf(*quad, true, true), std::vector<float3>(4, {0, 0, -1}));
    // A convex pentagon in the plane z = x whose projection on z = 0 has area 7.
    const auto pentagon =
        mesh({{0, 0, 0}, {2, 0, 2}, {3, 1, 3}, {1, 3, 1}, {-1, 1, -1}}, {0, 5}, {0, 1, 2, 3, 4});
    EXPECT_EQ(normalsOf(*pentagon, true, false), std::vector<float3>(5, {-7, 0, 7}));
    for (const bool byArea : {false, true}) {
        for (const float3& n : normalsOf(*pentagon, byArea, true)) {
            EXPECT_TRUE(near(n, unit(-1, 0, 1))) << "by area " << byArea;
        }
    }
    // A non-planar quad counts its Newell vector, not its first triangle's normal: the first
    // triangle alone would give (0, -1, 1)/sqrt(2); the vector area is
    // (1,1,1) x (-1,1,0) / 2 = (-1,-1,2)/2.
    const auto bent = mesh({{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}, {0, 4}, {0, 1, 2, 3});
    EXPECT_EQ(normalsOf(*bent, true, false), std::vector<float3>(4, {-0.5f, -0.5f, 1}));
    for (const float3& n : normalsOf(*bent, false, true)) {
        EXPECT_TRUE(near(n, unit(-1, -1, 2)));
    }
}

TEST(MeshVertexNormals, ConcaveFaceCountsItsWholeAreaAndOutweighsASmallerFace) {
    // An arrowhead in z = 0 of area 2, its notch at the origin, listed from a corner whose
    // first fan triangle turns backwards; and a triangle in x = 0 (area 1/2, normal +x) at the
    // notch.
    const auto shapes = mesh({{0, 0, 0}, {1, -1, 0}, {0, 2, 0}, {-1, -1, 0}, {0, 1, 0}, {0, 0, 1}},
                             {0, 4, 7}, {3, 0, 1, 2, 0, 4, 5});
    const std::vector<float3> sums = normalsOf(*shapes, true, false);
    EXPECT_EQ(sums[0], float3(0.5f, 0, 2));
    for (int i : {1, 2, 3}) {
        EXPECT_EQ(sums[i], float3(0, 0, 2)) << "point " << i;
    }
    EXPECT_EQ(normalsOf(*shapes, false, false)[0], float3(1, 0, 1));
    EXPECT_TRUE(near(normalsOf(*shapes, true, true)[0], unit(1, 0, 4)));
    EXPECT_TRUE(near(normalsOf(*shapes, false, true)[0], unit(1, 0, 1)));
}

TEST(MeshVertexNormals, DegenerateAndOpposingFacesContributeNothingAndUnusedPointsGetZero) {
    // Face 1 is collinear, face 2 has two corners, face 3 none, face 4 repeats a point of
    // face 0 (a triangle of area 1/2 whose point 0 counts twice); point 6 is used by no face.
    const auto degenerate =
        mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 2, 0}, {0, 3, 0}, {5, 5, 5}, {9, 9, 9}},
             {0, 3, 6, 8, 8, 12}, {0, 1, 2, 2, 3, 4, 4, 5, 0, 1, 2, 0});
    for (int mode = 0; mode < 4; ++mode) {
        const std::vector<float3> normals = normalsOf(*degenerate, mode & 1, mode & 2);
        ASSERT_EQ(normals.size(), 7u);
        for (int i : {3, 4, 5, 6}) {
            EXPECT_EQ(normals[i], kZero) << "point " << i << ", mode " << mode;
        }
    }
    const std::vector<float3> sums = normalsOf(*degenerate, true, false);
    EXPECT_EQ(sums[0], float3(0, 0, 1.5f));
    EXPECT_EQ(sums[2], float3(0, 0, 1));
    EXPECT_EQ(normalsOf(*degenerate, true, true)[2], float3(0, 0, 1));
    // Two sides of one triangle cancel.
    const auto sheet = mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 3, 6}, {0, 1, 2, 0, 2, 1});
    for (int mode = 0; mode < 4; ++mode) {
        EXPECT_EQ(normalsOf(*sheet, mode & 1, mode & 2), std::vector<float3>(3, kZero));
    }
}

TEST(MeshVertexNormals, TinyFacesKeepTheirDirectionUntilTheirAreaUnderflows) {
    // A right triangle (normal +z) and, sharing point 0, a quad of twice its area standing on
    // the x axis (normal +y). Squared lengths of these faces underflow in single precision.
    const auto tiny = [](float s) {
        return mesh({{0, 0, 0}, {s, 0, 0}, {0, s, 0}, {0, 0, s}, {s, 0, s}}, {0, 3, 7},
                    {0, 1, 2, 0, 3, 4, 1});
    };
    EXPECT_TRUE(near(normalsOf(*tiny(1e-15f), true, true)[0], unit(0, 2, 1)));
    EXPECT_TRUE(near(normalsOf(*tiny(1e-30f), false, true)[0], unit(0, 1, 1)));
    // Areas of about 1e-60 are zero in single precision.
    EXPECT_EQ(normalsOf(*tiny(1e-30f), true, true), std::vector<float3>(5, kZero));
}

TEST(MeshVertexNormals, LargeMeshSumsEveryFaceOnceAtEachCornerInAnyFaceOrder) {
    // 30k quads: in grid order the faces are summed chunk by chunk; shuffled, their points
    // are too scattered for that and are summed point by point. Vector areas are multiples
    // of 1/2, so both sums are exact.
    const auto ordered = bumpyGrid(300, 100);
    const auto shuffled = shuffledFaces(*ordered);
    const std::vector<float3> sums = normalsOf(*ordered, true, false);
    ASSERT_EQ(sums.size(), 301u * 101u);
    EXPECT_EQ(normalsOf(*shuffled, true, false), sums);
    // The vector areas of a height field over a 300 x 100 rectangle add up to 30000 along z,
    // and every face counts at its four corners.
    double z = 0.0;
    for (const float3& sum : sums) {
        z += sum.z;
    }
    EXPECT_EQ(z, 4.0 * 30000.0);
    EXPECT_EQ(sums[0], float3(0, 0, 1)); // the first quad alone: (1,1,0) x (-1,1,0) / 2

    for (const bool byArea : {false, true}) {
        const std::vector<float3> inOrder = normalsOf(*ordered, byArea, true);
        const std::vector<float3> outOfOrder = normalsOf(*shuffled, byArea, true);
        for (std::size_t p = 0; p < inOrder.size(); ++p) {
            ASSERT_TRUE(near(inOrder[p], outOfOrder[p])) << "point " << p;
            ASSERT_NEAR(Zelvane::Math::length(inOrder[p]), 1.0f, 1e-6f) << "point " << p;
        }
    }
}

TEST(MeshVertexNormals, FaceLongerThanAChunkIsSummedOnce) {
    const auto shapes = longFaceThenTriangles();
    for (const bool byArea : {false, true}) {
        const std::vector<float3> normals = normalsOf(*shapes, byArea, true);
        ASSERT_EQ(normals.size(), 29000u);
        for (std::size_t p = 0; p < normals.size(); ++p) {
            ASSERT_TRUE(near(normals[p], p < 20000 ? float3(0, 0, 1) : float3(1, 0, 0)))
                << "point " << p;
        }
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
    auto broken = brokenMeshes();
    // A large mesh whose very last face-vertex names a point past the end.
    const auto grid = bumpyGrid(300, 100);
    namespace G = Zelvane::Geometry;
    std::vector<std::uint32_t> corners = values(*grid->getArray<std::uint32_t>(G::sFaceVertex));
    corners.back() = 301 * 101;
    broken.push_back(rawMesh(values(*grid->getArray<float3>(G::sPointPosition)),
                             values(*grid->getArray<std::uint32_t>(G::sFaceOffset)), corners));
    for (std::size_t i = 0; i < broken.size(); ++i) {
        for (int mode = 0; mode < 4; ++mode) {
            Orsel::Array<float3> normals{{1, 2, 3}};
            EXPECT_FALSE(computeMeshVertexNormals(*broken[i], mode & 1, mode & 2, normals))
                << "layout " << i;
            EXPECT_TRUE(normals.empty()) << "layout " << i;
        }
    }
}

} // namespace
