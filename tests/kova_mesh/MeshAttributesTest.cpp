#include "MeshFixtures.h"

#include <array>
#include <gtest/gtest.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/detail/DataObject.h>
#include <vector>

namespace {

class MeshAttributes : public ::testing::Test {
protected:
    void SetUp() override {
        KFailureInjection::reset();
        data = makeMeshData(fn);
    }
    void TearDown() override { KFailureInjection::reset(); }
    KFnMesh fn;
    KObject data;
};

TEST_F(MeshAttributes, DefaultNormalsAreUnitVertexNormals) {
    EXPECT_EQ(fn.numNormals(), 10);
    const float* n = fn.getRawNormals();
    ASSERT_NE(n, nullptr);
    EXPECT_FLOAT_EQ(n[3 * 4 + 2], 1.0f); // a flat mesh in the xy plane faces +z
    KIntArray counts, ids;
    ASSERT_TRUE(fn.getNormalIds(counts, ids));
    EXPECT_EQ(ids, (KIntArray{0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, 9}));
}

TEST_F(MeshAttributes, FaceVertexNormalsSplitSharedVertices) {
    const KVectorArray normals{{1, 0, 0}, {0, 1, 0}};
    ASSERT_TRUE(fn.setFaceVertexNormals(normals, {1, 0}, {1, 1}));
    KIntArray counts, ids;
    ASSERT_TRUE(fn.getNormalIds(counts, ids));
    const float* n = fn.getRawNormals();
    // Face-vertex 4 is vertex 1 on face 1, face-vertex 1 is vertex 1 on face 0.
    EXPECT_FLOAT_EQ(n[3 * ids[4]], 1.0f);
    EXPECT_FLOAT_EQ(n[3 * ids[1] + 1], 1.0f);
    EXPECT_NE(ids[1], ids[4]);
    EXPECT_EQ(fn.numNormals(), 11); // vertex 1's computed normal is no longer used
    EXPECT_FALSE(fn.setFaceVertexNormals(normals, {2, 0}, {1, 1})) << "vertex 1 is not on face 2";
    EXPECT_FALSE(fn.setFaceVertexNormals(normals, {0}, {1})) << "length mismatch";
    EXPECT_FALSE(fn.setFaceVertexNormals(normals, {1, 0}, {1, 1}, KSpace::kWorld));
}

TEST_F(MeshAttributes, VertexNormalsApplyToEveryFaceVertexOfTheVertex) {
    ASSERT_TRUE(fn.setVertexNormals({{0, 0, -1}}, {2}));
    KIntArray counts, ids;
    ASSERT_TRUE(fn.getNormalIds(counts, ids));
    EXPECT_EQ(ids[2], ids[6]);
    EXPECT_FLOAT_EQ(fn.getRawNormals()[3 * ids[6] + 2], -1.0f);
    EXPECT_FALSE(fn.setVertexNormals({{0, 0, 1}}, {10}));
}

// The normals of the mesh as one (x, y, z) per face-vertex.
std::vector<std::array<float, 3>> normalPerFaceVertex(const KFnMesh& fn) {
    KIntArray counts, ids;
    EXPECT_TRUE(fn.getNormalIds(counts, ids));
    const float* n = fn.getRawNormals();
    std::vector<std::array<float, 3>> result;
    for (const int id : ids) {
        result.push_back({n[3 * id], n[3 * id + 1], n[3 * id + 2]});
    }
    return result;
}

TEST_F(MeshAttributes, NormalsForEveryFaceVertexReplaceTheComputedOnesInFaceVertexOrder) {
    KVectorArray normals;
    KIntArray faces, vertices;
    const MeshArrays a;
    for (unsigned int k = 0; k < 12; ++k) {
        normals.append(KVector(k, 0.5, -1));
        faces.append(k < 4 ? 0 : k < 7 ? 1 : 2);
        vertices.append(a.connects[k]);
    }
    // In face-vertex order, and the same pairs backwards: the same normals come out.
    for (const bool reversed : {false, true}) {
        KFnMesh other;
        makeMeshData(other);
        KVectorArray n;
        KIntArray f, v;
        for (unsigned int i = 0; i < 12; ++i) {
            const unsigned int k = reversed ? 11 - i : i;
            n.append(normals[k]);
            f.append(faces[k]);
            v.append(vertices[k]);
        }
        ASSERT_TRUE(other.setFaceVertexNormals(n, f, v));
        EXPECT_EQ(other.numNormals(), 12);
        KIntArray counts, ids;
        ASSERT_TRUE(other.getNormalIds(counts, ids));
        EXPECT_EQ(ids, (KIntArray{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
        for (int k = 0; k < 12; ++k) {
            const float* got = other.getRawNormals() + 3 * k;
            EXPECT_EQ((std::array<float, 3>{got[0], got[1], got[2]}),
                      (std::array<float, 3>{float(k), 0.5f, -1.0f}))
                << "face-vertex " << k << (reversed ? " (pairs backwards)" : "");
        }
    }
}

TEST_F(MeshAttributes, TheLastNormalGivenForAFaceVertexWins) {
    const MeshArrays a;
    KVectorArray normals;
    KIntArray faces, vertices;
    for (unsigned int k = 0; k < 12; ++k) {
        normals.append(KVector(0, 0, 1));
        faces.append(k < 4 ? 0 : k < 7 ? 1 : 2);
        vertices.append(a.connects[k]);
    }
    normals.append(KVector(1, 0, 0)); // face-vertex 5 again
    faces.append(1);
    vertices.append(4);
    ASSERT_TRUE(fn.setFaceVertexNormals(normals, faces, vertices));
    const auto n = normalPerFaceVertex(fn);
    EXPECT_EQ(n[5], (std::array<float, 3>{1, 0, 0}));
    EXPECT_EQ(n[4], (std::array<float, 3>{0, 0, 1}));
    EXPECT_EQ(fn.numNormals(), 12);
}

TEST_F(MeshAttributes, VertexNormalsForEveryVertexAreNumberedInOrderOfFirstUse) {
    KVectorArray normals;
    KIntArray vertices;
    for (int v = 9; v >= 0; --v) {
        normals.append(KVector(v, 0, 0));
        vertices.append(v);
    }
    ASSERT_TRUE(fn.setVertexNormals(normals, vertices));
    KIntArray counts, ids;
    ASSERT_TRUE(fn.getNormalIds(counts, ids));
    EXPECT_EQ(ids, (KIntArray{0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, 9}));
    const float* n = fn.getRawNormals();
    for (int v = 0; v < 10; ++v) {
        EXPECT_EQ(n[3 * v], float(v)) << "normal " << v;
    }
}

TEST_F(MeshAttributes, ComputedNormalsComeBackAfterAFailedWriteAndANewMesh) {
    const auto computed = normalPerFaceVertex(fn);
    EXPECT_FALSE(fn.setFaceVertexNormals({{1, 0, 0}, {1, 0, 0}}, {0, 0}, {0, 4}));
    EXPECT_EQ(normalPerFaceVertex(fn), computed) << "a bad pair changes nothing";
    ASSERT_TRUE(fn.setVertexNormals({{0, 0, -1}}, {5}));
    EXPECT_NE(normalPerFaceVertex(fn), computed);
    const MeshArrays a;
    ASSERT_FALSE(fn.create(10, 3, a.points, a.counts, a.connects, data).isNull());
    EXPECT_EQ(fn.numNormals(), 10);
    EXPECT_EQ(normalPerFaceVertex(fn), computed);
}

TEST_F(MeshAttributes, ACopyMadeBeforeTheNormalsAreReadComputesTheSameNormals) {
    const KObject copied(kova::detail::dataOf(data)->clone());
    EXPECT_EQ(normalPerFaceVertex(KFnMesh(copied)), normalPerFaceVertex(fn));
}

TEST_F(MeshAttributes, PartialUVSetStoresIdsOfMappedFacesOnly) {
    const KString set("partial");
    ASSERT_TRUE(fn.createUVSetDataMesh(set));
    EXPECT_FALSE(fn.createUVSetDataMesh(set)) << "taken name";
    ASSERT_TRUE(fn.setUVs({0, 1, 1, 0, 0.5f}, {0, 0, 1, 1, 0.5f}, &set));
    ASSERT_TRUE(fn.assignUVs({4, 0, 5}, {0, 1, 2, 3, 0, 1, 4, 2, 3}, &set));
    KIntArray uvCounts, uvIds;
    ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds, &set));
    EXPECT_EQ(uvCounts, (KIntArray{4, 0, 5}));
    EXPECT_EQ(uvIds.length(), 9u);
    EXPECT_LT(uvIds.length(), static_cast<unsigned int>(fn.numFaceVertices()));
    KFloatArray u, v;
    ASSERT_TRUE(fn.getUVs(u, v, &set));
    EXPECT_EQ(v, (KFloatArray{0, 0, 1, 1, 0.5f}));
    KStringArray names;
    fn.getUVSetNames(names);
    EXPECT_EQ(names, (KStringArray{"map1", "partial"}));
}

TEST_F(MeshAttributes, UVCountsFollowEveryAssignment) {
    KIntArray uvCounts, uvIds;
    ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
    EXPECT_EQ(uvCounts, (KIntArray{0, 0, 0})) << "a new mesh maps no face";
    ASSERT_TRUE(fn.setUVs({0, 1}, {0, 1}));
    const KIntArray everyCorner(12, 1);
    ASSERT_TRUE(fn.assignUVs({4, 3, 5}, everyCorner));
    ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
    EXPECT_EQ(uvCounts, (KIntArray{4, 3, 5}));
    EXPECT_EQ(uvIds, everyCorner);
    ASSERT_TRUE(fn.assignUVs({0, 3, 0}, {0, 1, 0}));
    ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
    EXPECT_EQ(uvCounts, (KIntArray{0, 3, 0}));
    EXPECT_EQ(uvIds, (KIntArray{0, 1, 0}));
    EXPECT_FALSE(fn.assignUVs({4, 3, 0}, everyCorner)) << "the counts add up to 7";
    ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
    EXPECT_EQ(uvCounts, (KIntArray{0, 3, 0})) << "a refused assignment changes nothing";
    ASSERT_TRUE(fn.assignUVs({0, 0, 0}, {}));
    ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
    EXPECT_EQ(uvCounts, (KIntArray{0, 0, 0}));
    EXPECT_EQ(uvIds.length(), 0u);
}

TEST_F(MeshAttributes, AssignUVsRejectsBadCountsAndIds) {
    ASSERT_TRUE(fn.setUVs({0, 1, 2}, {0, 1, 2}));
    EXPECT_FALSE(fn.setUVs({0, 1}, {0})) << "u and v differ";
    EXPECT_FALSE(fn.assignUVs({4, 3}, {})) << "one count per polygon";
    EXPECT_FALSE(fn.assignUVs({2, 0, 0}, {0, 1})) << "count neither 0 nor face size";
    EXPECT_FALSE(fn.assignUVs({0, 3, 0}, {0, 1})) << "ids fewer than counts";
    EXPECT_FALSE(fn.assignUVs({0, 3, 0}, {0, 1, 3})) << "id past the table";
    const KString missing("none");
    EXPECT_FALSE(fn.setUVs({0}, {0}, &missing));
    ASSERT_TRUE(fn.assignUVs({0, 3, 0}, {0, 1, 2}));
    ASSERT_TRUE(fn.setUVs({0}, {0})); // the table shrinks: assignments no longer fit
    KIntArray uvCounts, uvIds;
    fn.getAssignedUVs(uvCounts, uvIds);
    EXPECT_EQ(uvCounts, (KIntArray{0, 0, 0}));
    EXPECT_EQ(uvIds.length(), 0u);
    EXPECT_FALSE(fn.deleteUVSet("map1")) << "the last UV set stays";
}

TEST_F(MeshAttributes, UVAndColourSetsAreNamedCountedAndDeleted) {
    EXPECT_EQ(fn.createUVSet("map1"), KString("map11")) << "a taken name gets a number";
    ASSERT_TRUE(fn.setCurrentUVSetName("map11"));
    ASSERT_TRUE(fn.setUVs({0, 1}, {0, 1}));
    EXPECT_EQ(fn.numUVs(), 2);
    const KString map1("map1");
    EXPECT_EQ(fn.numUVs(&map1), 0);
    ASSERT_TRUE(fn.deleteUVSet("map11"));
    EXPECT_EQ(fn.getCurrentUVSetName(), map1);
    EXPECT_FALSE(fn.setCurrentUVSetName("map11"));
    ASSERT_TRUE(fn.createColorSetDataMesh("a"));
    ASSERT_TRUE(fn.createColorSetDataMesh("b", true, 3));
    EXPECT_TRUE(fn.isColorClamped("b"));
    ASSERT_TRUE(fn.setColors({{1, 0, 0}}));
    EXPECT_EQ(fn.numColors(), 1);
    ASSERT_TRUE(fn.deleteColorSet("a"));
    EXPECT_EQ(fn.getCurrentColorSetName(), KString("b"));
    KColorArray colors;
    EXPECT_FALSE(fn.getColors(colors, &map1)) << "no colour set of that name";
}

TEST_F(MeshAttributes, ColourSetsKeepRepresentationAndUnassignedFaceVertices) {
    for (int representation : {1, 3, 4}) {
        const KString name(("c" + std::to_string(representation)).c_str());
        ASSERT_TRUE(fn.createColorSetDataMesh(name, false, representation));
        EXPECT_EQ(fn.getColorRepresentation(name), representation);
    }
    EXPECT_FALSE(fn.createColorSetDataMesh("c2", false, 2));
    const KString set("c3");
    ASSERT_TRUE(fn.setColors({{0.5f, 0.25f, 1.0f}, {2.0f, -1.0f, 0.0f}}, &set));
    KIntArray ids(12, -1);
    ids[0] = 1;
    ids[5] = 0;
    ASSERT_TRUE(fn.assignColors(ids, &set));
    KColorArray colors;
    ASSERT_TRUE(fn.getFaceVertexColors(colors, &set));
    ASSERT_EQ(colors.length(), 12u);
    EXPECT_EQ(colors[0], KColor(2.0f, -1.0f, 0.0f));
    EXPECT_EQ(colors[5], KColor(0.5f, 0.25f, 1.0f));
    EXPECT_EQ(colors[1], KColor(-1, -1, -1, -1));
    ASSERT_TRUE(fn.setIsColorClamped(set, true));
    fn.getFaceVertexColors(colors, &set);
    EXPECT_EQ(colors[0], KColor(1.0f, 0.0f, 0.0f));
    EXPECT_FALSE(fn.assignColors({0, 1}, &set)) << "one id per face-vertex";
    ids[3] = 2;
    EXPECT_FALSE(fn.assignColors(ids, &set)) << "id past the table";
    KStringArray names;
    fn.getColorSetNames(names);
    EXPECT_EQ(names, (KStringArray{"c1", "c3", "c4"}));
    EXPECT_EQ(fn.getCurrentColorSetName(), KString("c1"));
}

TEST_F(MeshAttributes, ComponentTagsRoundTripWithCategories) {
    KFnGeometryData geo(data);
    KFnSingleIndexedComponent faces, verts;
    const KObject faceComponent = faces.create(KFn::kMeshPolygonComponent);
    faces.addElements({2, 0});
    const KObject vertComponent = verts.create(KFn::kMeshVertComponent);
    verts.setCompleteData(10);
    ASSERT_TRUE(geo.addComponentTag("top"));
    ASSERT_TRUE(geo.addComponentTag("all"));
    EXPECT_FALSE(geo.addComponentTag("top"));
    EXPECT_EQ(geo.componentTagCategory("top"), 0);
    ASSERT_TRUE(geo.setComponentTagContents("top", faceComponent));
    ASSERT_TRUE(geo.setComponentTagContents("all", vertComponent));
    EXPECT_FALSE(geo.setComponentTagContents("missing", faceComponent));
    faces.addElement(3);
    EXPECT_FALSE(geo.setComponentTagContents("top", faceComponent)) << "face 3 does not exist";
    KStringArray names;
    ASSERT_TRUE(geo.componentTags(names));
    EXPECT_EQ(names, (KStringArray{"top", "all"}));
    EXPECT_EQ(geo.componentTagCategory("top"), 4);
    EXPECT_EQ(geo.componentTagCategory("all"), 2);
    KFnSingleIndexedComponent top(geo.componentTagContents("top"));
    KIntArray elements;
    ASSERT_TRUE(top.getElements(elements));
    EXPECT_EQ(elements, (KIntArray{0, 2}));
    EXPECT_TRUE(KFnComponent(geo.componentTagContents("all")).isComplete());
    ASSERT_TRUE(geo.removeComponentTag("top"));
    EXPECT_FALSE(geo.hasComponentTag("top"));
    KFailureInjection::failNext("KFnGeometryData::addComponentTag");
    EXPECT_FALSE(geo.addComponentTag("later"));
    KStatus status;
    KFailureInjection::failNext("KFnGeometryData::KFnGeometryData");
    KFnGeometryData failed(data, &status);
    EXPECT_FALSE(status);
}

TEST_F(MeshAttributes, CloneIsADeepCopy) {
    KFnGeometryData(data).addComponentTag("t");
    const auto copy = kova::detail::dataOf(data)->clone();
    const KObject copied(copy);
    KFnMesh(copied).setVertexNormals({{1, 0, 0}}, {0});
    ASSERT_TRUE(KFnGeometryData(copied).removeComponentTag("t"));
    EXPECT_TRUE(KFnGeometryData(data).hasComponentTag("t"));
    EXPECT_FLOAT_EQ(fn.getRawNormals()[2], 1.0f);
}

} // namespace
