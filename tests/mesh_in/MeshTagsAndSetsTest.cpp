#include "MeshInputFixture.h"

#include <kova/KFnSingleIndexedComponent.h>

namespace {

namespace Geo = Zelvane::Geometry;

std::vector<bool> membership(std::size_t count, const std::vector<int>& members) {
    std::vector<bool> result(count, false);
    for (int m : members) {
        result[m] = true;
    }
    return result;
}

TEST_F(MeshInput, CompleteFaceTagMarksEveryFace) {
    const KObject shape = makeQuadStrip(6);
    KFnSingleIndexedComponent all;
    const KObject contents = all.create(KFn::kMeshPolygonComponent);
    all.setCompleteData(6);
    addTag(shape, "all", contents);
    const auto object = convert(shape);
    ASSERT_TRUE(object);
    EXPECT_EQ(propertyData<bool>(*object, "faceTag(all)"), std::vector<bool>(6, true));
    EXPECT_EQ(stringMember(*object, "faceTag(all)", Geo::sTarget), "face");
    EXPECT_EQ(stringMember(*object, "faceTag(all)", Geo::sDccName), "all");
}

// 150 listed vertices are marked by a parallel loop, 100 by a plain one; both exactly.
TEST_F(MeshInput, VertexTagsMarkTheirListedVerticesWhateverTheirNumber) {
    const KObject shape = makeQuadStrip(499); // 1000 points
    std::vector<int> many, few;
    KIntArray manyIds, fewIds;
    for (int i = 0; i < 150; ++i) {
        many.push_back(6 * i + 1);
        manyIds.append(6 * i + 1);
    }
    for (int i = 0; i < 100; ++i) {
        few.push_back(9 * i);
        fewIds.append(9 * i);
    }
    addTag(shape, "many", component(KFn::kMeshVertComponent, manyIds));
    addTag(shape, "few", component(KFn::kMeshVertComponent, fewIds));
    const auto object = convert(shape);
    ASSERT_TRUE(object);
    EXPECT_EQ(propertyData<bool>(*object, "pointTag(many)"), membership(1000, many));
    EXPECT_EQ(propertyData<bool>(*object, "pointTag(few)"), membership(1000, few));
    EXPECT_EQ(stringMember(*object, "pointTag(many)", Geo::sTarget), "point");
}

TEST_F(MeshInput, TagWhoseNameIsTakenGetsTheNextFreeNumber) {
    const KObject shape = makeNGonMesh();
    KFnMesh fn(shape);
    ASSERT_TRUE(fn.createColorSetDataMesh("pointTag(top)", false, 3));
    ASSERT_TRUE(fn.createColorSetDataMesh("pointTag(top)1", false, 3));
    addTag(shape, "top", component(KFn::kMeshVertComponent, {2, 3}));
    const auto object = convert(shape);
    ASSERT_TRUE(object);
    EXPECT_EQ(propertyData<bool>(*object, "pointTag(top)"), std::vector<bool>())
        << "the colour set stays";
    EXPECT_EQ(propertyData<bool>(*object, "pointTag(top)2"), membership(10, {2, 3}));
}

// The tag filter follows the channel parser: an empty expression selects nothing, and so does
// a malformed one. Edge tags are never converted.
TEST_F(MeshInput, EdgeTagsAndTagsOutsideTheTagFilterAreLeftOut) {
    const KObject shape = makeNGonMesh();
    addTag(shape, "edges", component(KFn::kMeshEdgeComponent, {0, 1}));
    addTag(shape, "keep", component(KFn::kMeshPolygonComponent, {1}));
    addTag(shape, "drop", component(KFn::kMeshPolygonComponent, {2}));
    MeshOptions options;
    options.componentTagFilter = "* ^drop";
    const auto object = convert(shape, options);
    ASSERT_TRUE(object);
    EXPECT_EQ(propertyData<bool>(*object, "faceTag(keep)"), membership(3, {1}));
    EXPECT_FALSE(object->has("faceTag(drop)"));
    for (const std::string& name : propertyNames(*object)) {
        EXPECT_EQ(name.find("edges"), std::string::npos) << name;
    }
    for (const char* filter : {"", "a^b"}) {
        options.componentTagFilter = filter;
        const auto none = convert(shape, options);
        ASSERT_TRUE(none);
        EXPECT_FALSE(none->has("faceTag(keep)")) << filter;
    }
}

TEST_F(MeshInput, SetsOfTheMeshBecomePointOrFaceMemberships) {
    const KObject shape = makeNGonMesh();
    const KObject other = makeNGonMesh();
    makeSet("lid", shape, component(KFn::kMeshPolygonComponent, {0, 2}));
    makeSet("pins", shape, component(KFn::kMeshVertComponent, {4, 9}));
    makeSet("elsewhere", other, component(KFn::kMeshPolygonComponent, {1}));
    makeSet("hidden", shape, component(KFn::kMeshPolygonComponent, {1}));
    // Set names are used as they stand: a set named like a colour set replaces it.
    ASSERT_TRUE(KFnMesh(shape).createColorSetDataMesh("rim", false, 3));
    makeSet("rim", shape, component(KFn::kMeshPolygonComponent, {1}));
    MeshOptions options;
    ASSERT_TRUE(options.setChannelFilter("* ^hidden"));
    const auto object = convert(shape, options);
    ASSERT_TRUE(object);
    EXPECT_EQ(propertyData<bool>(*object, "lid"), membership(3, {0, 2}));
    EXPECT_EQ(stringMember(*object, "lid", Geo::sTarget), "face");
    EXPECT_EQ(propertyData<bool>(*object, "pins"), membership(10, {4, 9}));
    EXPECT_EQ(stringMember(*object, "pins", Geo::sTarget), "point");
    EXPECT_FALSE(object->has("elsewhere"));
    EXPECT_FALSE(object->has("hidden"));
    EXPECT_EQ(propertyData<bool>(*object, "rim"), membership(3, {1}));
}

} // namespace
