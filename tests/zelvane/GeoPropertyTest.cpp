#include <gtest/gtest.h>
#include <zelvane/Geometry.h>

using namespace Zelvane;
using namespace Zelvane::Geometry;
using Math::float2;

namespace {

// A mesh-like object with one UV set (data + index property), a point colour and some
// properties that are not geometry properties.
Object uvMesh() {
    Object mesh;
    Orsel::MutablePtr<Object> index = createObject();
    populateRangeGeoProperty(*index, Orsel::make<Orsel::Array<std::uint32_t>>(
                                         std::initializer_list<std::uint32_t>{0, 1, 1}));
    mesh.set(getGeoPropRangeName(sFaceVertexUV), std::move(index));
    mesh.set(sFaceVertexUV,
             createGeoProperty<float2>(getGeoPropRangeName(sFaceVertexUV),
                                       Orsel::make<Orsel::Array<float2>>(std::size_t{2})));
    mesh.set(sPointColor, createGeoProperty<float>(sPointComp, nullptr));
    mesh.set("uvScale", 2.0f);
    mesh.set("uvNotes", createObject());
    mesh.set(sFaceVertexUV + "1",
             createGeoProperty<float2>(sFaceVertexComp,
                                       Orsel::make<Orsel::Array<float2>>(std::size_t{3})));
    return mesh;
}

TEST(GeoProperty, CreatedPropertiesCarryTargetAndData) {
    const Object mesh = uvMesh();
    const Orsel::Ptr<Object> color = getDataGeoProperty(mesh, sPointColor);
    ASSERT_TRUE(color);
    EXPECT_EQ(*color->get<Orsel::String>(sTarget), sPointComp);
    ASSERT_TRUE(color->getArray<float>(sData));
    EXPECT_TRUE(color->getArray<float>(sData)->empty());
    EXPECT_FALSE(getDataGeoProperty(mesh, "uvScale"));
    EXPECT_FALSE(getDataGeoProperty(mesh, "uvNotes"));
    EXPECT_FALSE(getDataGeoProperty(mesh, getGeoPropRangeName(sFaceVertexUV)));
    EXPECT_FALSE(getDataGeoProperty(mesh, "missing"));
}

TEST(GeoProperty, TargetsLeadThroughIndexPropertiesToComponents) {
    const Object mesh = uvMesh();
    EXPECT_EQ(getGeoPropRangeName("uv"), "uv" + sIndexSuffix);
    EXPECT_EQ(getGeoPropTargetName(mesh, sFaceVertexUV), getGeoPropRangeName(sFaceVertexUV));
    EXPECT_EQ(getGeoPropTargetName(mesh, getGeoPropRangeName(sFaceVertexUV)), sFaceVertexComp);
    EXPECT_EQ(getGeoPropTargetName(mesh, "uvScale"), "");
    EXPECT_EQ(getTargetComponent(mesh, sFaceVertexUV), sFaceVertexComp);
    EXPECT_EQ(getTargetComponent(mesh, sPointColor), sPointComp);
    EXPECT_EQ(getTargetComponent(mesh, "missing"), "");
    // Unknown components are reported as they are; circles lead nowhere.
    Object geometry;
    geometry.set("edgeData", createGeoProperty<float>("edge", nullptr));
    geometry.set("a", createGeoProperty<float>("b", nullptr));
    geometry.set("b", createGeoProperty<float>("a", nullptr));
    EXPECT_EQ(getTargetComponent(geometry, "edgeData"), "edge");
    EXPECT_EQ(getTargetComponent(geometry, "a"), "");
}

TEST(GeoProperty, RangeIndicesAreReadFromIndexProperties) {
    const Object mesh = uvMesh();
    const auto indices = getRangeGeoPropIndices(mesh, getGeoPropRangeName(sFaceVertexUV));
    ASSERT_TRUE(indices);
    EXPECT_EQ(*indices, (Orsel::Array<std::uint32_t>{0, 1, 1}));
    EXPECT_FALSE(getRangeGeoPropIndices(mesh, sPointColor));
    EXPECT_FALSE(getRangeGeoPropIndices(mesh, "missing"));
    EXPECT_EQ(*populateTrivialRangeIndices(4), (Orsel::Array<std::uint32_t>{0, 1, 2, 3}));
    EXPECT_TRUE(populateTrivialRangeIndices(0)->empty());
    EXPECT_FALSE(populateTrivialRangeIndices((std::uint64_t(1) << 32) + 1));
}

TEST(GeoProperty, PatternsSelectGeometryPropertiesInObjectOrder) {
    const Object mesh = uvMesh();
    EXPECT_EQ(getGeoPropsByName(mesh, sFaceVertexUV + "*"),
              (Orsel::Array<Orsel::String>{sFaceVertexUV, sFaceVertexUV + "1"}));
    EXPECT_EQ(getGeoPropsByName(mesh, sFaceVertexUV + "1, " + sPointColor),
              (Orsel::Array<Orsel::String>{sPointColor, sFaceVertexUV + "1"}));
    EXPECT_EQ(getGeoPropsByName(mesh, "* ^" + sFaceVertexUV + "?"),
              (Orsel::Array<Orsel::String>{sFaceVertexUV, sPointColor}));
    EXPECT_TRUE(getGeoPropsByName(mesh, "").empty());
    EXPECT_TRUE(getGeoPropsByName(mesh, "^").empty());
}

TEST(GeoProperty, UniqueNamesTakeTheSmallestFreeNumber) {
    Object geometry;
    EXPECT_EQ(getUniqueGeoPropName("tag", geometry), "tag");
    geometry.set("tag", 1);
    EXPECT_EQ(getUniqueGeoPropName("tag", geometry), "tag1");
    geometry.set("tag1", 1);
    geometry.set("tag3", 1);
    EXPECT_EQ(getUniqueGeoPropName("tag", geometry), "tag2");
}

} // namespace
