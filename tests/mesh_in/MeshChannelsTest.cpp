#include "MeshInputFixture.h"

#include <kova/KColorArray.h>
#include <kova/KFloatArray.h>
#include <kova/KStringArray.h>
#include <zelvane/geometry/RangeProperty.h>

namespace {

using Zelvane::Math::float2;
using Zelvane::Math::float3;
using Zelvane::Math::float4;
namespace Geo = Zelvane::Geometry;

// UV sets and colour sets of the n-gon mesh (10 points, 3 faces, 12 face-vertices).
class MeshChannels : public MeshInput {
protected:
    void SetUp() override {
        MeshInput::SetUp();
        shape_ = makeNGonMesh();
    }
    KFnMesh mesh() const { return KFnMesh(shape_); }

    // Maps every face-vertex of `set` to a UV of its own: face-vertex i gets (i + base, i).
    void mapAllFaces(const KString& set, float base) const {
        KFnMesh fn = mesh();
        KFloatArray u, v;
        KIntArray ids;
        for (int i = 0; i < 12; ++i) {
            u.append(float(i) + base);
            v.append(float(i));
            ids.append(i);
        }
        ASSERT_TRUE(fn.setUVs(u, v, &set));
        ASSERT_TRUE(fn.assignUVs({4, 3, 5}, ids, &set));
    }
    void addUVSet(const char* name, float base) const {
        ASSERT_TRUE(mesh().createUVSetDataMesh(name));
        mapAllFaces(name, base);
    }
    // Host sets "A", "map1", "B" in that order: "map1" is made again after "A".
    void makeSetsAroundMap1() const {
        addUVSet("A", 100);
        ASSERT_TRUE(mesh().deleteUVSet("map1"));
        addUVSet("map1", 0);
        addUVSet("B", 200);
        KStringArray names;
        mesh().getUVSetNames(names);
        ASSERT_EQ(names, (KStringArray{"A", "map1", "B"}));
    }
    // A colour set with one colour per face-vertex, `colorOf(i)`; face-vertices listed in
    // `unassigned` get none.
    template <class ColorOf>
    void addColorSet(const char* name, int representation, ColorOf colorOf,
                     std::initializer_list<int> unassigned = {}) const {
        KFnMesh fn = mesh();
        const KString set(name);
        ASSERT_TRUE(fn.createColorSetDataMesh(set, false, representation));
        KColorArray colors;
        KIntArray ids;
        for (int i = 0; i < 12; ++i) {
            colors.append(colorOf(i));
            ids.append(i);
        }
        for (int i : unassigned) {
            ids[i] = -1;
        }
        ASSERT_TRUE(fn.setColors(colors, &set));
        ASSERT_TRUE(fn.assignColors(ids, &set));
    }

    KObject shape_;
};

std::vector<float2> uvTable(float base) {
    std::vector<float2> table;
    for (int i = 0; i < 12; ++i) {
        table.push_back({float(i) + base, float(i)});
    }
    return table;
}

const std::vector<std::uint32_t> kIdentityIds{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};

TEST_F(MeshChannels, Map1ComesFirstAndTheOthersAreNumberedByPosition) {
    makeSetsAroundMap1();
    const auto object = convert(shape_);
    ASSERT_TRUE(object);
    const std::vector<std::pair<std::string, std::string>> expected{
        {"uv", "map1"}, {"uv1", "A"}, {"uv2", "B"}};
    const float bases[] = {0, 100, 200};
    for (std::size_t k = 0; k < expected.size(); ++k) {
        const auto& [name, host] = expected[k];
        EXPECT_EQ(stringMember(*object, name, Geo::sDccName), host);
        EXPECT_EQ(stringMember(*object, name, Geo::sTarget), name + "_index");
        EXPECT_EQ(stringMember(*object, name + "_index", Geo::sTarget), "faceVertex");
        EXPECT_EQ(propertyData<float2>(*object, name), uvTable(bases[k])) << name;
        EXPECT_EQ(propertyIndices(*object, name + "_index"), kIdentityIds) << name;
    }
    // The channel filter skips sets without renumbering the others.
    MeshOptions options;
    ASSERT_TRUE(options.setChannelFilter("* ^A"));
    const auto filtered = convert(shape_, options);
    ASSERT_TRUE(filtered);
    EXPECT_EQ(stringMember(*filtered, "uv", Geo::sDccName), "map1");
    EXPECT_FALSE(filtered->has("uv1"));
    EXPECT_EQ(stringMember(*filtered, "uv2", Geo::sDccName), "B");
}

TEST_F(MeshChannels, WithoutMap1TheHostOrderStays) {
    addUVSet("first", 10);
    addUVSet("second", 20);
    ASSERT_TRUE(mesh().deleteUVSet("map1"));
    const auto object = convert(shape_);
    ASSERT_TRUE(object);
    EXPECT_EQ(stringMember(*object, "uv", Geo::sDccName), "first");
    EXPECT_EQ(stringMember(*object, "uv1", Geo::sDccName), "second");
    EXPECT_EQ(propertyData<float2>(*object, "uv1"), uvTable(20));
}

TEST_F(MeshChannels, SetLeavingFacesUnmappedIsDroppedWithTheMessageWhenLogging) {
    mapAllFaces("map1", 0);
    const KString partial("partial");
    ASSERT_TRUE(mesh().createUVSetDataMesh(partial));
    ASSERT_TRUE(mesh().setUVs({0, 1, 1, 0}, {0, 0, 1, 1}, &partial));
    ASSERT_TRUE(mesh().assignUVs({4, 0, 0}, {0, 1, 2, 3}, &partial));
    addUVSet("after", 5);
    for (const bool logging : {false, true}) {
        logRuntimeMessages(logging);
        KMessageCapture capture;
        const auto object = convert(shape_);
        ASSERT_TRUE(object);
        EXPECT_TRUE(object->has("uv"));
        EXPECT_FALSE(object->has("uv1"));
        EXPECT_FALSE(object->has("uv1_index"));
        EXPECT_EQ(stringMember(*object, "uv2", Geo::sDccName), "after");
        EXPECT_EQ(capture.errors(),
                  logging ? std::vector<KString>{"Could not convert this uv component: partial"}
                          : std::vector<KString>{});
    }
}

// Point colours are means over each point's coloured face-vertices: point 1 is used by
// face-vertices 1 and 4, point 2 by 2 and 6. In the RGB set "tint" face-vertex 6 has no
// colour, so point 2 takes face-vertex 2's colour alone; in the alpha set "fade" point 0 has no
// coloured face-vertex and gets the default, 1; "paint" is RGBA.
TEST_F(MeshChannels, ColourSetsGiveTheMeanOfEachPointsColouredFaceVertices) {
    addColorSet("tint", 3, [](int i) { return KColor(float(i), 2.0f * float(i), 0.5f); }, {6});
    addColorSet("fade", 1, [](int i) { return KColor(0, 0, 0, i < 4 ? 0.25f : 0.75f); }, {0});
    addColorSet("paint", 4, [](int i) { return KColor(float(i), 0, 1, 0.5f); });
    const auto object = convert(shape_);
    ASSERT_TRUE(object);
    EXPECT_EQ(stringMember(*object, "tint", Geo::sTarget), "point");
    const std::vector<float3> tint{{0, 0, 0.5f},   {2.5f, 5, 0.5f}, {2, 4, 0.5f},  {3, 6, 0.5f},
                                   {5, 10, 0.5f},  {7, 14, 0.5f},   {8, 16, 0.5f}, {9, 18, 0.5f},
                                   {10, 20, 0.5f}, {11, 22, 0.5f}};
    EXPECT_EQ(propertyData<float3>(*object, "tint"), tint);
    EXPECT_EQ(
        propertyData<float>(*object, "fade"),
        (std::vector<float>{1.0f, 0.5f, 0.5f, 0.25f, 0.75f, 0.75f, 0.75f, 0.75f, 0.75f, 0.75f}));
    const auto fade = object->getObject("fade");
    ASSERT_TRUE(fade);
    ASSERT_NE(fade->get<float>(Geo::sDefault), nullptr);
    EXPECT_EQ(*fade->get<float>(Geo::sDefault), 1.0f);
    const auto paint = propertyData<float4>(*object, "paint");
    ASSERT_EQ(paint.size(), 10u);
    EXPECT_EQ(paint[1], (float4{2.5f, 0, 1, 0.5f}));
    EXPECT_EQ(paint[9], (float4{11, 0, 1, 0.5f}));

    // Sets outside the channel filter are not converted.
    MeshOptions options;
    ASSERT_TRUE(options.setChannelFilter("tint map1"));
    const auto filtered = convert(shape_, options);
    ASSERT_TRUE(filtered);
    EXPECT_TRUE(filtered->has("tint"));
    EXPECT_FALSE(filtered->has("fade"));
    EXPECT_FALSE(filtered->has("paint"));
}

} // namespace
