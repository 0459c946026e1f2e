// The "zelvaneGeoToKova" node type as the plug-in registers it.

#include "PluginFixture.h"

#include <algorithm>
#include <kova/KFnAttribute.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KObjectArray.h>
#include <kova/KPlug.h>
#include <zeldata/ZelData.h>
#include <zelvane/geometry/Names.h>

namespace {

using GeoToKovaNode = BoundPlugin;

// The node's own attributes, after those every node has, in order: the four inputs are
// storable, writable and keyable and affect the mesh output, but for the property filter;
// the output is a read-only array of meshes built with a builder.
TEST_F(GeoToKovaNode, DeclaresItsAttributesAndWhatTheyAffect) {
    KFnDependencyNode creator;
    const KObject node = creator.create("zelvaneGeoToKova");
    ASSERT_FALSE(node.isNull());
    KFnDependencyNode fnNode(node);
    EXPECT_EQ(fnNode.typeName(), KString("zelvaneGeoToKova"));
    EXPECT_EQ(fnNode.typeId(), KTypeId(0x81123));
    EXPECT_EQ(KFnDependencyNode::classification("zelvaneGeoToKova"), KString());

    std::vector<std::string> described;
    for (unsigned int i = 0; i < fnNode.attributeCount(); ++i) {
        const KFnAttribute fn(fnNode.attribute(i));
        std::string text = fn.name().str() + "/" + fn.shortName().str() + " " +
                           (fn.isStorable() ? "S" : "-") + (fn.isWritable() ? "W" : "-") +
                           (fn.isKeyable() ? "K" : "-") + (fn.isArray() ? "A" : "-") +
                           (fn.usesArrayDataBuilder() ? "B" : "-") + " affects";
        KObjectArray affected;
        EXPECT_TRUE(fnNode.getAffectedAttributes(fnNode.attribute(i), affected));
        for (unsigned int a = 0; a < affected.length(); ++a) {
            text += " " + KFnAttribute(affected[a]).name().str();
        }
        described.push_back(text);
    }
    const std::vector<std::string> expected = {
        "transferNormals/tn SWK-- affects kovaMesh", "properties/pr SWK-- affects",
        "zelvaneGeo/zg SWK-- affects kovaMesh", "componentTags/ct SWK-- affects kovaMesh",
        "kovaMesh/km S--AB affects"};
    const auto first = std::find(described.begin(), described.end(), expected.front());
    ASSERT_NE(first, described.end());
    EXPECT_EQ(std::vector<std::string>(first, described.end()), expected);

    const KFnAttribute geo(fnNode.attribute("zelvaneGeo"));
    EXPECT_TRUE(geo.accepts(ZelData::id));
    EXPECT_FALSE(geo.accepts(KFnData::kMesh));
    const KFnAttribute mesh(fnNode.attribute("kovaMesh"));
    EXPECT_TRUE(mesh.isConnectable());
    EXPECT_TRUE(mesh.accepts(KFnData::kMesh));

    EXPECT_FALSE(fnNode.findPlug("transferNormals", false).asBool());
    EXPECT_EQ(fnNode.findPlug("properties", false).asString(),
              KString(Zelvane::Geometry::sPointColor.internal_string_view()));
    EXPECT_EQ(fnNode.findPlug("componentTags", false).asString(), KString("*"));
    EXPECT_TRUE(fnNode.findPlug("zelvaneGeo", false).asKObject().isNull());
}

} // namespace
