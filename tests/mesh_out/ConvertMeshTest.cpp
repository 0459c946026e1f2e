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
    EXPECT_EQ(hostPoints(data),
              (std::vector<float>{0, 0, 0, 1, 0, 0, 1,    1, 0, 0,    1, 0, 2,    0.5f, 0,
                                  3, 0, 0, 4, 0, 0, 4.5f, 1, 0, 3.5f, 2, 0, 2.5f, 1,    0}));
    const auto [counts, connects] = hostFaces(data);
    EXPECT_EQ(counts, (KIntArray{4, 3, 5}));
    EXPECT_EQ(connects, (KIntArray{0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, 9}));
    EXPECT_EQ(uvSetNames(data), KStringArray{"map1"});
    EXPECT_TRUE(tagNames(data).length() == 0);
}

TEST_F(MeshOutput, ObjectsThatAreNotMeshesGiveTheEmptyMeshSilently) {
    KMessageCapture messages;
    ObjectPtr strands = Zelvane::createObject();
    ASSERT_TRUE(Geo::populateStrand(graphArray<float3>({{0, 0, 0}, {1, 0, 0}}),
                                    graphArray<std::uint32_t>({0, 2}), *strands));
    const ObjectPtr plain = Zelvane::createObject();
    for (const Zelvane::Object* object : {&*strands, &*plain}) {
        const KObject data = convert(*object);
        ASSERT_TRUE(data.hasFn(KFn::kMeshData));
        EXPECT_EQ(KFnMesh(data).numVertices(), 0);
        EXPECT_EQ(KFnMesh(data).numPolygons(), 0);
    }
    EXPECT_EQ(messages.size(), 0u);
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

TEST_F(MeshOutput, FailingMeshDataCreationGivesTheNullObject) {
    KFailureInjection::failNext("KFnMeshData::create");
    EXPECT_TRUE(convert(*ngonObject()).isNull());
}

TEST_F(MeshOutput, FailingMeshCreationGivesTheEmptyMesh) {
    KFailureInjection::failAfter("KFnMesh::create", 1); // the empty mesh is made first
    const KObject data = convert(*ngonObject());
    ASSERT_FALSE(data.isNull());
    EXPECT_EQ(KFnMesh(data).numVertices(), 0);
}

// Normals.
class MeshNormals : public MeshOutput {
protected:
    // The n-gon with point normals (0, 0, 1) and face-vertex normals (k, 0, 0) at
    // face-vertex k, through indices into a table of 12 values stored in reverse.
    static ObjectPtr withNormals(bool pointNormals, bool faceVertexNormals) {
        ObjectPtr mesh = ngonObject();
        if (pointNormals) {
            addProperty(*mesh, Geo::sPointNormal, Geo::sPointComp,
                        std::vector<float3>(10, float3{0, 0, 1}));
        }
        if (faceVertexNormals) {
            std::vector<float3> table;
            std::vector<std::uint32_t> indices;
            for (std::uint32_t k = 0; k < 12; ++k) {
                table.push_back({float(11 - k), 0, 0});
                indices.push_back(11 - k);
            }
            addIndexedProperty(*mesh, Geo::sFaceVertexNormal, table, indices);
        }
        return mesh;
    }
    static ZelvaneMeshToKovaOpts transfer(bool normals) {
        ZelvaneMeshToKovaOpts options;
        options.transferNormals = normals;
        return options;
    }
};

TEST_F(MeshNormals, FaceVertexNormalsTakePrecedenceOverPointNormals) {
    const KObject data = convert(*withNormals(true, true), transfer(true));
    const std::vector<float3> normals = faceVertexNormals(data);
    ASSERT_EQ(normals.size(), 12u);
    for (std::size_t k = 0; k < 12; ++k) {
        EXPECT_EQ(normals[k], (float3{float(k), 0, 0})) << k;
    }
}

TEST_F(MeshNormals, PointNormalsApplyToEveryFaceVertexOfTheirPoint) {
    const KObject data = convert(*withNormals(true, false), transfer(true));
    EXPECT_EQ(faceVertexNormals(data), std::vector<float3>(12, float3{0, 0, 1}));
}

TEST_F(MeshNormals, WithoutTransferTheHostComputesItsOwnNormals) {
    const KObject plain = convert(*ngonObject());
    const KObject data = convert(*withNormals(true, true), transfer(false));
    EXPECT_EQ(faceVertexNormals(data), faceVertexNormals(plain));
    EXPECT_EQ(KFnMesh(data).numNormals(), 10);
}

TEST_F(MeshNormals, FaceVertexDataWithoutIndicesFallsBackToPointNormals) {
    ObjectPtr mesh = withNormals(true, true);
    mesh->remove(Geo::getGeoPropRangeName(Geo::sFaceVertexNormal));
    EXPECT_EQ(faceVertexNormals(convert(*mesh, transfer(true))),
              std::vector<float3>(12, float3{0, 0, 1}));
}

TEST_F(MeshNormals, ARefusedNormalWriteKeepsTheMesh) {
    KFailureInjection::failNext("KFnMesh::setFaceVertexNormals");
    const KObject data = convert(*withNormals(false, true), transfer(true));
    EXPECT_EQ(KFnMesh(data).numPolygons(), 3);
    EXPECT_EQ(faceVertexNormals(data), faceVertexNormals(convert(*ngonObject())));
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
