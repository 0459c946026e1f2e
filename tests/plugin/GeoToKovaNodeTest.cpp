// The "zelvaneGeoToKova" node type as the plug-in registers it.

#include "PluginFixture.h"

#include <zeldata/ZelData.h>
#include <zelvane/geometry/Names.h>

#include <kova/KFnAttribute.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KObjectArray.h>
#include <kova/KPlug.h>

#include <algorithm>

namespace {

class GeoToKovaNode : public BoundPlugin {
protected:
    void SetUp() override {
        BoundPlugin::SetUp();
        KFnDependencyNode fnNode;
        node_ = fnNode.create("zelvaneGeoToKova");
        ASSERT_FALSE(node_.isNull());
    }

    KFnAttribute attribute(const char* name) const {
        return KFnAttribute(KFnDependencyNode(node_).attribute(name));
    }
    KPlug plug(const char* name) const { return KFnDependencyNode(node_).findPlug(name, false); }

    KObject node_;
};

TEST_F(GeoToKovaNode, HasItsTypeNameAndId) {
    KFnDependencyNode fnNode(node_);
    EXPECT_EQ(fnNode.typeName(), KString("zelvaneGeoToKova"));
    EXPECT_EQ(fnNode.typeId(), KTypeId(0x81123));
    EXPECT_EQ(KFnDependencyNode::classification("zelvaneGeoToKova"), KString());
}

TEST_F(GeoToKovaNode, DeclaresItsAttributesInOrderWithTheirShortNames) {
    KFnDependencyNode fnNode(node_);
    std::vector<std::string> ours;
    for (unsigned int i = 0; i < fnNode.attributeCount(); ++i) {
        const KFnAttribute fnAttribute(fnNode.attribute(i));
        ours.push_back(fnAttribute.name().str() + "/" + fnAttribute.shortName().str());
    }
    const std::vector<std::string> expected = {"transferNormals/tn", "properties/pr",
                                               "zelvaneGeo/zg", "componentTags/ct",
                                               "kovaMesh/km"};
    auto first = std::find(ours.begin(), ours.end(), expected.front());
    ASSERT_NE(first, ours.end());
    EXPECT_EQ(std::vector<std::string>(first, ours.end()), expected);
}

TEST_F(GeoToKovaNode, InputsAreStorableWritableAndKeyable) {
    for (const char* name : {"transferNormals", "properties", "zelvaneGeo", "componentTags"}) {
        const KFnAttribute fnAttribute = attribute(name);
        EXPECT_TRUE(fnAttribute.isStorable()) << name;
        EXPECT_TRUE(fnAttribute.isWritable()) << name;
        EXPECT_TRUE(fnAttribute.isKeyable()) << name;
        EXPECT_FALSE(fnAttribute.isArray()) << name;
    }
    EXPECT_TRUE(attribute("zelvaneGeo").accepts(ZelData::id));
    EXPECT_FALSE(attribute("zelvaneGeo").accepts(KFnData::kMesh));
}

TEST_F(GeoToKovaNode, TheMeshOutputIsAConnectableArrayBuiltWithABuilder) {
    const KFnAttribute fnAttribute = attribute("kovaMesh");
    EXPECT_TRUE(fnAttribute.isStorable());
    EXPECT_FALSE(fnAttribute.isWritable());
    EXPECT_FALSE(fnAttribute.isKeyable());
    EXPECT_TRUE(fnAttribute.isConnectable());
    EXPECT_TRUE(fnAttribute.isArray());
    EXPECT_TRUE(fnAttribute.usesArrayDataBuilder());
    EXPECT_TRUE(fnAttribute.accepts(KFnData::kMesh));
}

TEST_F(GeoToKovaNode, StartsFromItsDefaults) {
    EXPECT_FALSE(plug("transferNormals").asBool());
    EXPECT_EQ(plug("properties").asString(),
              KString(Zelvane::Geometry::sPointColor.internal_string_view()));
    EXPECT_EQ(plug("componentTags").asString(), KString("*"));
    EXPECT_TRUE(plug("zelvaneGeo").asKObject().isNull());
}

} // namespace

namespace {

std::vector<std::string> affectedBy(const KObject& node, const char* attribute) {
    KFnDependencyNode fnNode(node);
    KObjectArray affected;
    EXPECT_TRUE(fnNode.getAffectedAttributes(fnNode.attribute(attribute), affected));
    std::vector<std::string> names;
    for (unsigned int i = 0; i < affected.length(); ++i) {
        names.push_back(KFnAttribute(affected[i]).name().str());
    }
    return names;
}

TEST_F(GeoToKovaNode, TheMeshDependsOnEveryInputButThePropertyFilter) {
    const std::vector<std::string> mesh = {"kovaMesh"};
    EXPECT_EQ(affectedBy(node_, "transferNormals"), mesh);
    EXPECT_EQ(affectedBy(node_, "zelvaneGeo"), mesh);
    EXPECT_EQ(affectedBy(node_, "componentTags"), mesh);
    EXPECT_EQ(affectedBy(node_, "properties"), std::vector<std::string>{});
}

} // namespace
