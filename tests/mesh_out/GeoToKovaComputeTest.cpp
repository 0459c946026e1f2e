// The "zelvaneGeoToKova" node evaluated in a scene: a ZelData of graph objects on
// "zelvaneGeo" becomes one host mesh per object on "kovaMesh".

#include "MeshOutputFixture.h"

namespace MeshOutputTest {
namespace {

TEST_F(GeoToKovaCompute, OutputGrowsAndShrinksToTheObjectCount) {
    feed({triangles(1), triangles(2), triangles(3)});
    ASSERT_TRUE(evaluate());
    ASSERT_EQ(meshCount(), 3u);
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(KFnMesh(mesh(i)).numPolygons(), int(i + 1)) << i;
    }
    feed({triangles(4)});
    ASSERT_TRUE(evaluate());
    ASSERT_EQ(meshCount(), 1u);
    EXPECT_EQ(KFnMesh(mesh(0)).numPolygons(), 4);
    feed({});
    ASSERT_TRUE(evaluate());
    EXPECT_EQ(meshCount(), 0u);
}

// A plain object, a strand object and a null entry each give an empty mesh, silently.
TEST_F(GeoToKovaCompute, ObjectsThatAreNotMeshesGiveEmptyMeshElements) {
    ObjectPtr strands = Zelvane::createObject();
    ASSERT_TRUE(Geo::populateStrand(graphArray<float3>({{0, 0, 0}, {1, 0, 0}}),
                                    graphArray<std::uint32_t>({0, 2}), *strands));
    feed({shared(Zelvane::createObject()), shared(std::move(strands)),
          Orsel::Ptr<Zelvane::Object>(), triangles(2)});
    KMessageCapture messages;
    ASSERT_TRUE(evaluate());
    ASSERT_EQ(meshCount(), 4u);
    for (unsigned int i = 0; i < 3; ++i) {
        ASSERT_TRUE(mesh(i).hasFn(KFn::kMeshData)) << i;
        EXPECT_EQ(KFnMesh(mesh(i)).numVertices(), 0) << i;
        EXPECT_EQ(KFnMesh(mesh(i)).numPolygons(), 0) << i;
    }
    EXPECT_EQ(KFnMesh(mesh(3)).numPolygons(), 2);
    EXPECT_EQ(messages.size(), 0u);
}

TEST_F(GeoToKovaCompute, TheNodesAttributesAreTheConversionOptions) {
    ObjectPtr object = ngonObject();
    addProperty(*object, Geo::sPointNormal, Geo::sPointComp, std::vector<float3>(10, {0, 0, -1}));
    addProperty(*object, "paint", Geo::sPointComp, std::vector<float3>(10, {1, 0, 0}));
    addTag(*object, Geo::sFaceComp, "top", {true, false, false});
    addTag(*object, Geo::sFaceComp, "bottom", {false, true, false});
    feed({shared(std::move(object))});
    ASSERT_TRUE(nodePlug("transferNormals").setBool(true));
    ASSERT_TRUE(nodePlug("properties").setString("paint"));
    ASSERT_TRUE(nodePlug("componentTags").setString("faceTag(top)"));
    ASSERT_TRUE(evaluate());
    const KObject data = mesh(0);
    EXPECT_EQ(faceVertexNormals(data), std::vector<float3>(12, float3{0, 0, -1}));
    KStringArray colorSets;
    KFnMesh(data).getColorSetNames(colorSets);
    EXPECT_EQ(colorSets, KStringArray{"paint"});
    EXPECT_EQ(tagNames(data), KStringArray{"top"});
}

// Missing input data, or an exception from the converter (caught by the host), fail the
// evaluation; the next goes on.
TEST_F(GeoToKovaCompute, AnExceptionFromTheConverterIsCaughtByTheHost) {
    EXPECT_FALSE(evaluate());
    ObjectPtr object = ngonObject();
    addIndexedProperty(*object, Geo::sFaceVertexUV, std::vector<float2>(12),
                       std::vector<std::uint32_t>(12, 0), "mapping");
    feed({shared(std::move(object))});
    KMessageCapture messages;
    EXPECT_FALSE(evaluate());
    ASSERT_FALSE(messages.errors().empty());
    EXPECT_NE(messages.errors().back().str().find("invalid stoi argument"), std::string::npos)
        << messages.errors().back();
    feed({triangles(2)});
    ASSERT_TRUE(evaluate()) << "the host goes on";
    EXPECT_EQ(KFnMesh(mesh(0)).numPolygons(), 2);
}

} // namespace
} // namespace MeshOutputTest
