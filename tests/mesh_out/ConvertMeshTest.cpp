// zelvaneMeshToKova called through the plug-in's exported symbol: topology, normals and the
// profiling scopes.

#include "MeshOutputFixture.h"

#include <algorithm>
#include <kova/KProfiler.h>
#include <set>

namespace MeshOutputTest {
namespace {

TEST_F(MeshOutput, NgonMeshComesOutWithItsPointsAndFacesInOrder) {
    const KObject data = convert(*ngonObject());
    ASSERT_FALSE(data.isNull());
    EXPECT_TRUE(data.hasFn(KFn::kMeshData));
    const float* points = &NGonMesh::kPoints[0][0];
    EXPECT_EQ(hostPoints(data), std::vector<float>(points, points + 30));
    const auto [counts, connects] = hostFaces(data);
    EXPECT_EQ(counts, KIntArray(NGonMesh::kCounts, 3));
    EXPECT_EQ(connects, KIntArray(NGonMesh::kFaceVertices, 12));
    EXPECT_EQ(uvSetNames(data), KStringArray{"map1"});
    EXPECT_TRUE(tagNames(data).length() == 0);
}

TEST_F(MeshOutput, LargeMeshesFillInParallelWithTheSameResult) {
    // 150 x 1 quads: 302 points, 150 faces, 600 face-vertices, all above the serial limit.
    std::vector<float3> points;
    std::vector<std::uint32_t> offsets{0}, faceVertices;
    for (std::uint32_t i = 0; i <= 150; ++i) {
        points.push_back({float(i), 0, 0});
        points.push_back({float(i), 1, 0});
    }
    for (std::uint32_t i = 0; i < 150; ++i) {
        for (std::uint32_t corner : {2 * i, 2 * i + 2, 2 * i + 3, 2 * i + 1}) {
            faceVertices.push_back(corner);
        }
        offsets.push_back(faceVertices.size());
    }
    const KObject data = convert(*meshObject(points, offsets, faceVertices));
    const auto [counts, connects] = hostFaces(data);
    EXPECT_EQ(counts, KIntArray(150, 4));
    EXPECT_EQ(std::vector<int>(connects.begin(), connects.end()),
              std::vector<int>(faceVertices.begin(), faceVertices.end()));
    EXPECT_EQ(hostPoints(data)[3 * 301], 150.0f);
}

// Face-vertex normals (k, 0, 0) at face-vertex k, through indices into a table stored in
// reverse, take precedence over point normals (0, 0, -1: the host's own point up); without
// indices the point normals apply; without transfer the host computes its own.
TEST_F(MeshOutput, TransferredNormalsComeFromFaceVerticesThenPoints) {
    const auto withNormals = [](bool faceVertexNormals, bool indexed) {
        ObjectPtr mesh = ngonObject();
        addProperty(*mesh, Geo::sPointNormal, Geo::sPointComp,
                    std::vector<float3>(10, float3{0, 0, -1}));
        std::vector<float3> table;
        std::vector<std::uint32_t> indices;
        for (std::uint32_t k = 0; k < 12; ++k) {
            table.push_back({float(11 - k), 0, 0});
            indices.push_back(11 - k);
        }
        if (faceVertexNormals) {
            addIndexedProperty(*mesh, Geo::sFaceVertexNormal, table, indices);
        }
        if (!indexed) {
            mesh->remove(Geo::getGeoPropRangeName(Geo::sFaceVertexNormal));
        }
        return mesh;
    };
    ZelvaneMeshToKovaOpts transfer;
    transfer.transferNormals = true;
    std::vector<float3> byFaceVertex;
    for (std::size_t k = 0; k < 12; ++k) {
        byFaceVertex.push_back({float(k), 0, 0});
    }
    const std::vector<float3> byPoint(12, float3{0, 0, -1});
    EXPECT_EQ(faceVertexNormals(convert(*withNormals(true, true), transfer)), byFaceVertex);
    EXPECT_EQ(faceVertexNormals(convert(*withNormals(false, true), transfer)), byPoint);
    EXPECT_EQ(faceVertexNormals(convert(*withNormals(true, false), transfer)), byPoint);

    const KObject own = convert(*withNormals(true, true));
    EXPECT_EQ(faceVertexNormals(own), faceVertexNormals(convert(*ngonObject())));
    EXPECT_EQ(KFnMesh(own).numNormals(), 10);
}

TEST_F(MeshOutput, StepsAreTimedInTheMeshConverterCategory) {
    ObjectPtr mesh = ngonObject();
    addProperty(*mesh, Geo::sPointNormal, Geo::sPointComp, std::vector<float3>(10, {0, 0, 1}));
    addIndexedProperty(*mesh, Geo::sFaceVertexUV, std::vector<float2>(12, {0, 0}),
                       std::vector<std::uint32_t>(12, 0));
    addTag(*mesh, Geo::sFaceComp, "top", {true, false, false});
    ZelvaneMeshToKovaOpts options;
    options.transferNormals = true;
    KProfiler::clear();
    KProfiler::setRecording(true);
    convert(*mesh, options);
    KProfiler::setRecording(false);
    std::set<std::string> labels;
    for (const KProfiler::Event& event : KProfiler::events()) {
        EXPECT_EQ(KProfiler::categoryName(event.category), KString("Zelvane/MeshConverter"));
        EXPECT_EQ(event.colorIndex, 9);
        labels.insert(event.label);
    }
    KProfiler::clear();
    EXPECT_EQ(labels, (std::set<std::string>{"zelvane to kova mesh conversion", "write kova mesh",
                                             "write vertex normals", "write uvs", "write cpvs",
                                             "write component tags"}));
}

} // namespace
} // namespace MeshOutputTest
