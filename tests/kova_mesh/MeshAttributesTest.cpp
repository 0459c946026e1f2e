#include "MeshFixtures.h"

#include <array>
#include <kova/KFnGeometryData.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/detail/DataObject.h>
#include <vector>

namespace {

using MeshAttributes = MeshTest;

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

TEST_F(MeshAttributes, ComputedNormalsAreUnitVertexNormalsThatComeBackWithANewMesh) {
    // A copy made before the normals are first read computes the same normals.
    const KObject copied(kova::detail::dataOf(data)->clone());
    EXPECT_EQ(fn.numNormals(), 10);
    EXPECT_FLOAT_EQ(fn.getRawNormals()[3 * 4 + 2], 1.0f); // a flat mesh in the xy plane faces +z
    KIntArray counts, ids;
    ASSERT_TRUE(fn.getNormalIds(counts, ids));
    EXPECT_EQ(ids, a.connects);
    const auto computed = normalPerFaceVertex(fn);
    EXPECT_EQ(normalPerFaceVertex(KFnMesh(copied)), computed);

    EXPECT_FALSE(fn.setFaceVertexNormals({{1, 0, 0}, {1, 0, 0}}, {0, 0}, {0, 4}));
    EXPECT_EQ(normalPerFaceVertex(fn), computed) << "a bad pair changes nothing";
    ASSERT_TRUE(fn.setVertexNormals({{0, 0, -1}}, {5}));
    EXPECT_NE(normalPerFaceVertex(fn), computed);
    ASSERT_FALSE(fn.create(10, 3, a.points, a.counts, a.connects, data).isNull());
    EXPECT_EQ(fn.numNormals(), 10);
    EXPECT_EQ(normalPerFaceVertex(fn), computed);
}

TEST_F(MeshAttributes, FaceVertexNormalsSplitSharedVertices) {
    const KVectorArray normals{{1, 0, 0}, {0, 1, 0}};
    ASSERT_TRUE(fn.setFaceVertexNormals(normals, {1, 0}, {1, 1}));
    const auto n = normalPerFaceVertex(fn);
    // Face-vertex 4 is vertex 1 on face 1, face-vertex 1 is vertex 1 on face 0.
    EXPECT_EQ(n[4], (std::array<float, 3>{1, 0, 0}));
    EXPECT_EQ(n[1], (std::array<float, 3>{0, 1, 0}));
    EXPECT_EQ(fn.numNormals(), 11); // vertex 1's computed normal is no longer used
    EXPECT_FALSE(fn.setFaceVertexNormals(normals, {2, 0}, {1, 1})) << "vertex 1 is not on face 2";
    EXPECT_FALSE(fn.setFaceVertexNormals(normals, {0}, {1})) << "length mismatch";
    EXPECT_FALSE(fn.setFaceVertexNormals(normals, {1, 0}, {1, 1}, KSpace::kWorld));
}

TEST_F(MeshAttributes, VertexNormalsAreNumberedInOrderOfFirstUseAndApplyToEveryFaceVertex) {
    KVectorArray normals;
    KIntArray vertices;
    for (int v = 9; v >= 0; --v) {
        normals.append(KVector(v, 0, 0));
        vertices.append(v);
    }
    ASSERT_TRUE(fn.setVertexNormals(normals, vertices));
    KIntArray counts, ids;
    ASSERT_TRUE(fn.getNormalIds(counts, ids));
    EXPECT_EQ(ids, a.connects);
    for (int v = 0; v < 10; ++v) {
        EXPECT_EQ(fn.getRawNormals()[3 * v], float(v)) << "normal " << v;
    }
    ASSERT_TRUE(fn.setVertexNormals({{0, 0, -1}}, {2}));
    const auto n = normalPerFaceVertex(fn);
    EXPECT_EQ(n[2], (std::array<float, 3>{0, 0, -1}));
    EXPECT_EQ(n[6], n[2]);
    EXPECT_FALSE(fn.setVertexNormals({{0, 0, 1}}, {10}));
}

TEST_F(MeshAttributes, NormalsForEveryFaceVertexReplaceTheComputedOnesInFaceVertexOrder) {
    // In face-vertex order, the same pairs backwards, and with face-vertex 5 given again at the
    // end: the same numbering comes out, and the last normal given for a face-vertex wins.
    for (const int variant : {0, 1, 2}) {
        KFnMesh other;
        makeMeshData(other);
        KVectorArray normals;
        KIntArray faces, vertices;
        for (unsigned int i = 0; i < 12; ++i) {
            const unsigned int k = variant == 1 ? 11 - i : i;
            normals.append(KVector(k, 0.5, -1));
            faces.append(k < 4 ? 0 : k < 7 ? 1 : 2);
            vertices.append(a.connects[k]);
        }
        if (variant == 2) {
            normals.append(KVector(99, 0.5, -1));
            faces.append(1);
            vertices.append(4);
        }
        ASSERT_TRUE(other.setFaceVertexNormals(normals, faces, vertices));
        EXPECT_EQ(other.numNormals(), 12);
        KIntArray counts, ids;
        ASSERT_TRUE(other.getNormalIds(counts, ids));
        EXPECT_EQ(ids, (KIntArray{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
        const auto n = normalPerFaceVertex(other);
        for (int k = 0; k < 12; ++k) {
            const float x = variant == 2 && k == 5 ? 99.0f : float(k);
            EXPECT_EQ(n[k], (std::array<float, 3>{x, 0.5f, -1.0f}))
                << "variant " << variant << ", face-vertex " << k;
        }
    }
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
    EXPECT_EQ(uvIds, (KIntArray{0, 1, 2, 3, 0, 1, 4, 2, 3}));
    KFloatArray u, v;
    ASSERT_TRUE(fn.getUVs(u, v, &set));
    EXPECT_EQ(v, (KFloatArray{0, 0, 1, 1, 0.5f}));
    KStringArray names;
    fn.getUVSetNames(names);
    EXPECT_EQ(names, (KStringArray{"map1", "partial"}));
}

TEST_F(MeshAttributes, UVCountsFollowEveryAssignmentAndRefusalsChangeNothing) {
    KIntArray uvCounts, uvIds;
    const auto expectAssigned = [&](const KIntArray& counts, const KIntArray& ids) {
        ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
        EXPECT_EQ(uvCounts, counts);
        EXPECT_EQ(uvIds, ids);
    };
    expectAssigned({0, 0, 0}, {}); // a new mesh maps no face
    ASSERT_TRUE(fn.setUVs({0, 1, 2}, {0, 1, 2}));
    const KIntArray everyCorner(12, 1);
    ASSERT_TRUE(fn.assignUVs({4, 3, 5}, everyCorner));
    expectAssigned({4, 3, 5}, everyCorner);
    ASSERT_TRUE(fn.assignUVs({0, 3, 0}, {0, 1, 2}));
    expectAssigned({0, 3, 0}, {0, 1, 2});

    EXPECT_FALSE(fn.setUVs({0, 1}, {0})) << "u and v differ";
    EXPECT_FALSE(fn.assignUVs({4, 3, 0}, everyCorner)) << "the counts add up to 7";
    EXPECT_FALSE(fn.assignUVs({4, 3}, {})) << "one count per polygon";
    EXPECT_FALSE(fn.assignUVs({2, 0, 0}, {0, 1})) << "count neither 0 nor face size";
    EXPECT_FALSE(fn.assignUVs({0, 3, 0}, {0, 1})) << "ids fewer than counts";
    EXPECT_FALSE(fn.assignUVs({0, 3, 0}, {0, 1, 3})) << "id past the table";
    const KString missing("none");
    EXPECT_FALSE(fn.setUVs({0}, {0}, &missing));
    expectAssigned({0, 3, 0}, {0, 1, 2});

    ASSERT_TRUE(fn.setUVs({0}, {0})); // the table shrinks: assignments no longer fit
    expectAssigned({0, 0, 0}, {});
    ASSERT_TRUE(fn.assignUVs({0, 3, 0}, {0, 0, 0}));
    ASSERT_TRUE(fn.assignUVs({0, 0, 0}, {}));
    expectAssigned({0, 0, 0}, {});
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
}

// The mesh writers the plug-in calls fail by injection in its failure tests, which check the
// mesh it makes; these are the effects on the host side that those tests cannot see.
TEST_F(MeshAttributes, InjectedWriteFailuresChangeNothing) {
    const KString set("c");
    ASSERT_TRUE(fn.createColorSetDataMesh(set, true, 4));
    KFailureInjection::failNext("KFnMesh::setIsColorClamped");
    EXPECT_FALSE(fn.setIsColorClamped(set, false));
    EXPECT_TRUE(fn.isColorClamped(set));

    KFnSingleIndexedComponent component;
    const KObject vertices = component.create(KFn::kMeshVertComponent);
    KFailureInjection::failAfter("KFnSingleIndexedComponent::addElement", 1);
    EXPECT_FALSE(component.addElements({1, 2, 3}));
    KIntArray elements;
    ASSERT_TRUE(component.getElements(elements));
    EXPECT_EQ(elements, KIntArray{1});

    KFnGeometryData geometry(data);
    ASSERT_TRUE(geometry.addComponentTag("top"));
    KFailureInjection::failNext("KFnGeometryData::setComponentTagContents");
    EXPECT_FALSE(geometry.setComponentTagContents("top", vertices));
    EXPECT_FALSE(geometry.setComponentTagContents("top", KObject()));
    EXPECT_TRUE(geometry.componentTagContents("top").isNull());
    EXPECT_EQ(geometry.componentTagCategory("top"), 0);
}

TEST_F(MeshAttributes, CloneIsADeepCopy) {
    KFnGeometryData(data).addComponentTag("t");
    const KObject copied(kova::detail::dataOf(data)->clone());
    KFnMesh(copied).setVertexNormals({{1, 0, 0}}, {0});
    ASSERT_TRUE(KFnGeometryData(copied).removeComponentTag("t"));
    EXPECT_TRUE(KFnGeometryData(data).hasComponentTag("t"));
    EXPECT_FLOAT_EQ(fn.getRawNormals()[2], 1.0f);
}

} // namespace
