#include "IoTestSupport.h"

#include <kova/KFnMesh.h>
#include <kova_io/AssimpReader.h>
#include <kova_io/HostSceneReader.h>
#include <kova_io/SceneExport.h>
#include <kova_io/SceneImport.h>

using namespace KovaIo;

namespace {

using AssimpFormats = IoTest;

// A unit square split the way per-vertex formats store it: two triangles, six vertices.
const char* kSplitSquarePly = "ply\nformat ascii 1.0\nelement vertex 6\nproperty float x\n"
                              "property float y\nproperty float z\nproperty float s\n"
                              "property float t\nelement face 2\n"
                              "property list uchar int vertex_indices\nend_header\n"
                              "0 0 0 0 0\n1 0 0 1 0\n1 1 0 1 1\n"
                              "0 0 0 0.5 0\n1 1 0 1 1\n0 1 0 0 1\n3 0 1 2\n3 3 4 5\n";

TEST_F(AssimpFormats, PlyVerticesAreWeldedAndUVsStayPerFaceVertex) {
    SceneData scene;
    ASSERT_TRUE(readWithAssimp(file("square.ply", kSplitSquarePly), true, scene));
    ASSERT_EQ(scene.meshes.size(), 1u);
    const MeshRecord& m = scene.meshes[0];
    EXPECT_EQ(m.pointCount(), 4);
    EXPECT_EQ(m.faceVertices, (std::vector<int>{0, 1, 2, 0, 2, 3}));
    ASSERT_EQ(m.uvSets.size(), 1u);
    // Point 0 has two UVs (0, 0) and (0.5, 0): it is shared, its UVs are not.
    EXPECT_EQ(m.uvSets[0].ids, (std::vector<int>{0, 1, 2, 3, 2, 4}));
    EXPECT_EQ(m.uvSets[0].u[3], 0.5f);

    ASSERT_TRUE(readWithAssimp(file("square.ply", kSplitSquarePly), false, scene));
    EXPECT_EQ(scene.meshes.at(0).pointCount(), 6);
}

TEST_F(AssimpFormats, GltfSampleBringsTwoUVSetsColoursNormalsAndMaterials) {
    const ImportResult result = importScene(dataFile("sample_mesh_uvsets.gltf"));
    ASSERT_TRUE(result.status) << result.status.errorString();
    ASSERT_EQ(result.nodes.meshShapes.size(), 1u);
    KFnMesh fn(result.nodes.meshShapes[0]);
    EXPECT_EQ(fn.numVertices(), 8);
    EXPECT_EQ(fn.numPolygons(), 12);
    KStringArray uvSets;
    fn.getUVSetNames(uvSets);
    EXPECT_EQ(uvSets, (KStringArray{"map1", "map2"}));
    const KString second("map2");
    EXPECT_EQ(fn.numUVs(&second), 12); // atlas cells share the corners where they touch
    EXPECT_EQ(fn.numUVs(), 4);
    EXPECT_EQ(fn.numNormals(), 6);
    EXPECT_EQ(fn.getColorRepresentation("colorSet1"), 4);
    EXPECT_EQ(fn.numColors(), 8);
    EXPECT_EQ(result.nodes.shadingGroups.size(), 2u);
}

TEST_F(AssimpFormats, MeshesWrittenThroughAssimpReadBackWithTheirValues) {
    ASSERT_TRUE(importScene(dataFile("sample_mesh.obj")).status);
    SceneData before;
    ASSERT_TRUE(readHostScene(geometryShapes(), before));
    for (const char* name : {"cube.ply", "cube.glb", "cube.dae"}) {
        const std::string path = file(name, "");
        const ExportResult exported = exportScene(path, geometryShapes());
        ASSERT_TRUE(exported.status) << exported.status.errorString();
        EXPECT_EQ(exported.meshes, 1);
        EXPECT_EQ(exported.warnings.size(), 3u) << "the three face sets are not carried";
        SceneData after;
        ASSERT_TRUE(readWithAssimp(path, true, after)) << name;
        ASSERT_EQ(after.meshes.size(), 1u) << name;
        const MeshRecord& m = after.meshes[0];
        EXPECT_EQ(m.pointCount(), 8) << name;
        std::vector<float> sortedBefore = before.meshes[0].points;
        std::vector<float> sortedAfter = m.points;
        std::sort(sortedBefore.begin(), sortedBefore.end());
        std::sort(sortedAfter.begin(), sortedAfter.end());
        EXPECT_EQ(sortedAfter, sortedBefore) << name;
        // glTF holds triangles only: the quads come back split in two.
        EXPECT_EQ(m.faceVertexCount(), std::string(name) == "cube.glb" ? 36 : 24) << name;
    }
}

} // namespace
