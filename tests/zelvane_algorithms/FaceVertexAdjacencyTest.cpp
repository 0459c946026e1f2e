#include "Fixtures.h"

#include <zelvane/algorithms/FaceVertexAdjacency.h>
#include <zelvane/algorithms/FaceVertexAverage.h>

namespace {

using Zelvane::GeometryAlgorithms::averageFaceVertexToPoints;
using Zelvane::GeometryAlgorithms::buildFaceVertexAdjacency;
using Zelvane::GeometryAlgorithms::FaceVertexAdjacency;
using Zelvane::Math::float3;
using Zelvane::Math::float4;
using namespace fixtures;
using Indices = std::vector<std::uint32_t>;

// A triangle (0 1 2), a quad (1 3 4 2) and point 5, which no face uses.
Orsel::Ptr<Zelvane::Object> triangleQuadAndLonePoint() {
    return mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {2, 0, 0}, {2, 1, 0}, {7, 7, 7}}, {0, 3, 7},
                {0, 1, 2, 1, 3, 4, 2});
}

FaceVertexAdjacency adjacencyOf(const Zelvane::Object& mesh) {
    FaceVertexAdjacency adjacency;
    EXPECT_TRUE(buildFaceVertexAdjacency(mesh, adjacency));
    return adjacency;
}

TEST(FaceVertexAdjacency, ListsTheFaceVerticesOfEveryPointInAscendingOrder) {
    const FaceVertexAdjacency adjacency = adjacencyOf(*triangleQuadAndLonePoint());
    EXPECT_EQ(values(adjacency.pointOffsets), (Indices{0, 1, 3, 5, 6, 7, 7}));
    EXPECT_EQ(values(adjacency.pointFaceVertices), (Indices{0, 1, 3, 2, 6, 4, 5}));
    EXPECT_EQ(values(adjacency.faceVertexFace), (Indices{0, 0, 0, 1, 1, 1, 1}));
    EXPECT_EQ(adjacency.pointCount(), 6u);
    EXPECT_EQ(adjacency.faceVertexCount(), 7u);
    EXPECT_EQ(Indices(adjacency.faceVerticesOf(2).begin(), adjacency.faceVerticesOf(2).end()),
              (Indices{2, 6}));
    EXPECT_TRUE(adjacency.faceVerticesOf(5).empty());
}

TEST(FaceVertexAdjacency, EmptyFacesAndAPointRepeatedInOneFaceAreKept) {
    const auto odd = mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 0, 4, 4}, {2, 0, 2, 1});
    const FaceVertexAdjacency adjacency = adjacencyOf(*odd);
    EXPECT_EQ(values(adjacency.pointOffsets), (Indices{0, 1, 2, 4}));
    EXPECT_EQ(values(adjacency.pointFaceVertices), (Indices{1, 3, 0, 2}));
    EXPECT_EQ(values(adjacency.faceVertexFace), (Indices{1, 1, 1, 1}));
}

TEST(FaceVertexAdjacency, RejectsBrokenLayoutsAndEmptiesTheTable) {
    for (const auto& broken : brokenMeshes()) {
        FaceVertexAdjacency adjacency = adjacencyOf(*triangleQuadAndLonePoint());
        EXPECT_FALSE(buildFaceVertexAdjacency(*broken, adjacency));
        EXPECT_TRUE(adjacency.pointOffsets.empty() && adjacency.pointFaceVertices.empty() &&
                    adjacency.faceVertexFace.empty());
        EXPECT_EQ(adjacency.pointCount(), 0u);
    }
}

TEST(FaceVertexAverage, EachPointGetsTheMeanOfItsFaceVertices) {
    const FaceVertexAdjacency adjacency = adjacencyOf(*triangleQuadAndLonePoint());
    const std::vector<float> perCorner{1, 2, 3, 4, 5, 6, 7};
    std::vector<float> perPoint(6, 0.0f);
    ASSERT_TRUE(averageFaceVertexToPoints(adjacency, perCorner.data(), perPoint.data(), -1.0f));
    EXPECT_EQ(perPoint, (std::vector<float>{1, 3, 5, 5, 6, -1}));

    const std::vector<float3> colours{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0.5f, 0},
                                      {1, 1, 1}, {0, 0, 0}, {0, 0, 0}};
    std::vector<float3> pointColours(6);
    ASSERT_TRUE(averageFaceVertexToPoints(adjacency, colours.data(), pointColours.data(),
                                          float3{0.5f, 0.5f, 0.5f}));
    EXPECT_EQ(pointColours[1], (float3{0, 0.75f, 0}));
    EXPECT_EQ(pointColours[2], (float3{0, 0, 0.5f}));
    EXPECT_EQ(pointColours[5], (float3{0.5f, 0.5f, 0.5f}));

    const std::vector<float4> rgba(7, float4{0.1f, 0.2f, 0.3f, 0.7f});
    std::vector<float4> pointRgba(6);
    ASSERT_TRUE(
        averageFaceVertexToPoints(adjacency, rgba.data(), pointRgba.data(), float4{0, 0, 0, 1}));
    for (int p = 0; p < 5; ++p) {
        EXPECT_EQ(pointRgba[p], (float4{0.1f, 0.2f, 0.3f, 0.7f})) << "equal values stay exact";
    }
    EXPECT_EQ(pointRgba[5], (float4{0, 0, 0, 1}));
}

TEST(FaceVertexAverage, RefusesMissingOrInconsistentTablesWithoutWriting) {
    const std::vector<float> perCorner{1, 2, 3, 4, 5, 6, 7};
    std::vector<float> perPoint(6, 42.0f);
    FaceVertexAdjacency unbuilt;
    EXPECT_FALSE(averageFaceVertexToPoints(unbuilt, perCorner.data(), perPoint.data(), 0.0f));

    FaceVertexAdjacency adjacency = adjacencyOf(*triangleQuadAndLonePoint());
    EXPECT_FALSE(averageFaceVertexToPoints(adjacency, nullptr, perPoint.data(), 0.0f));
    EXPECT_FALSE(averageFaceVertexToPoints(adjacency, perCorner.data(), nullptr, 0.0f));

    FaceVertexAdjacency pastTheEnd = adjacency;
    pastTheEnd.pointOffsets[3] = 9;
    EXPECT_FALSE(averageFaceVertexToPoints(pastTheEnd, perCorner.data(), perPoint.data(), 0.0f));
    FaceVertexAdjacency badIndex = adjacency;
    badIndex.pointFaceVertices[2] = 7;
    EXPECT_FALSE(averageFaceVertexToPoints(badIndex, perCorner.data(), perPoint.data(), 0.0f));
    EXPECT_EQ(perPoint, std::vector<float>(6, 42.0f));

    // An adjacency of no points and no face-vertices needs no buffers.
    FaceVertexAdjacency none;
    none.pointOffsets.push_back(0);
    EXPECT_TRUE(averageFaceVertexToPoints(none, static_cast<const float*>(nullptr), nullptr, 0.0f));
}

} // namespace
