// Host attributes made for new graph ports, added through the board as the executor adds
// them.

#include "BoardScene.h"

#include <kova/KDagModifier.h>
#include <kova/KDagPath.h>
#include <kova/KFnAttribute.h>
#include <kova/KFnCompoundAttribute.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnSet.h>
#include <zelvane/geometry/GraphTransforms.h>

namespace {

using ZelvaneGraph::Executor::PortDirection;

Orsel::MetadataItem inputByPath(const char* key, const char* value) {
    Orsel::MetadataItem metadata;
    Orsel::MetadataItem options(Orsel::String("inputByPath"));
    options.setChild(Orsel::String(key), Orsel::String(value));
    metadata.addChild(options);
    return metadata;
}

KObject node(const char* name) {
    return KScene::current().findNode(name);
}

using PortAdded = BoardScene;

// Inputs get no display shape; an array of objects gets an array attribute.
TEST_F(PortAdded, ObjectInputsGetWritableGenericAttributesAcceptingGeometryAndGraphData) {
    ASSERT_TRUE(addPort("geo", PortDirection::Input, Zelvane::objectType()));
    ASSERT_TRUE(addPort("geos", PortDirection::Input, Orsel::Type::arrayOf(Zelvane::objectType())));
    KFnDependencyNode fnBoard(board_);
    for (const char* name : {"geo", "geos"}) {
        ASSERT_TRUE(fnBoard.hasAttribute(name));
        KFnAttribute fnAttribute(fnBoard.attribute(name));
        EXPECT_EQ(fnAttribute.shortName(), KString(name));
        EXPECT_TRUE(fnAttribute.isWritable());
        EXPECT_TRUE(fnAttribute.isKeyable());
        EXPECT_FALSE(fnAttribute.isReadable());
        EXPECT_EQ(fnAttribute.isArray(), name == std::string("geos"));
        for (KFnData::Type kind :
             {KFnData::kMesh, KFnData::kNurbsCurve, KFnData::kDoubleArray, KFnData::kVectorArray}) {
            EXPECT_TRUE(fnAttribute.accepts(kind)) << kind;
        }
        EXPECT_TRUE(fnAttribute.accepts(ZelData::id));
        EXPECT_FALSE(fnAttribute.accepts(KFnData::kString));
    }
    EXPECT_TRUE(node("zel1").isNull());
}

TEST_F(PortAdded, AnExistingAttributeIsKept) {
    ASSERT_TRUE(addPort("geo", PortDirection::Input, Zelvane::objectType()));
    const unsigned int before = KFnDependencyNode(board_).attributeCount();
    EXPECT_TRUE(translation().portAdded(board_, Orsel::String("geo"), PortDirection::Input,
                                        Zelvane::objectType(), Orsel::MetadataItem()));
    EXPECT_EQ(KFnDependencyNode(board_).attributeCount(), before);
}

TEST_F(PortAdded, AnObjectOutputIsShownByANewShapeInTheDefaultShadingGroup) {
    ASSERT_TRUE(addPort("result", PortDirection::Output, Zelvane::objectType()));
    KFnAttribute fnAttribute(KFnDependencyNode(board_).attribute("result"));
    EXPECT_TRUE(fnAttribute.isReadable());
    EXPECT_FALSE(fnAttribute.isWritable());
    EXPECT_FALSE(fnAttribute.isKeyable());

    // The transform takes the shape's name without "Shape".
    const KObject shape = node("zelShapeShape1");
    ASSERT_FALSE(shape.isNull());
    EXPECT_EQ(KFnDependencyNode(shape).typeName(), KString("zelShape"));
    KFnDagNode fnShape(shape);
    ASSERT_EQ(fnShape.parentCount(), 1u);
    EXPECT_EQ(KFnDependencyNode(fnShape.parent(0)).name(), KString("zel1"));
    EXPECT_EQ(fnShape.fullPathName(), KString("|zel1|zelShapeShape1"));
    EXPECT_EQ(sourcesOf(plug("zelShapeShape1.inputSurface")),
              std::vector<std::string>{"board1.result"});
    KDagPath path;
    ASSERT_TRUE(fnShape.getPath(path));
    EXPECT_TRUE(KFnSet(node("initialShadingGroup")).isMember(path));
}

TEST_F(PortAdded, AnOutputThatAsksForNoShapeGetsOnlyItsAttribute) {
    ASSERT_TRUE(addPort("result", PortDirection::Output, Zelvane::objectType(),
                        inputByPath("noShape", "1")));
    EXPECT_TRUE(KFnDependencyNode(board_).hasAttribute("result"));
    EXPECT_TRUE(node("zelShapeShape1").isNull());
}

TEST_F(PortAdded, AnOutputFedByPathConnectsToTheNodeFound) {
    KFnDependencyNode fnNode;
    ASSERT_FALSE(fnNode.create("zelShape", "viewer").isNull());
    ASSERT_TRUE(addPort("results", PortDirection::Output,
                        Orsel::Type::arrayOf(Zelvane::objectType()),
                        inputByPath("paths", "viewer")));
    EXPECT_EQ(sourcesOf(plug("viewer.inputSurface")),
              std::vector<std::string>{"board1.results[0]"});
    EXPECT_TRUE(node("zelShapeShape1").isNull()) << "no new shape when one was found";
}

TEST_F(PortAdded, ATransformsPortOnADependencyNodeIsHiddenAndUnconnectable) {
    ASSERT_TRUE(addPort("xform", PortDirection::Input,
                        Zelvane::Geometry::Transform::graphTransformsType()));
    KFnCompoundAttribute fnCompound(KFnDependencyNode(board_).attribute("xform"));
    EXPECT_TRUE(fnCompound.isHidden());
    EXPECT_FALSE(fnCompound.isConnectable());
    ASSERT_EQ(fnCompound.numChildren(), 1u);
    KFnAttribute fnChild(fnCompound.child(0));
    EXPECT_EQ(fnChild.name(), KString("totalTransform"));
    EXPECT_EQ(fnChild.shortName(), KString("totalTransform"));
    EXPECT_TRUE(plug("board1.totalTransform").asMatrix().isEquivalent(KMatrix::identity));
}

TEST_F(PortAdded, ATransformsPortOnAShapeFollowsItsTransform) {
    KDagModifier modifier;
    const KObject transform = modifier.createNode("zelShape");
    ASSERT_TRUE(modifier.doIt());
    const KObject shape = KFnDagNode(transform).child(0);
    ASSERT_FALSE(shape.isNull());
    ASSERT_TRUE(translation().portAdded(shape, Orsel::String("xform"), PortDirection::Input,
                                        Zelvane::Geometry::Transform::graphTransformsType(),
                                        Orsel::MetadataItem()));
    EXPECT_EQ(
        sourcesOf(KFnDependencyNode(shape).findPlug("totalTransform", false)),
        std::vector<std::string>{KFnDependencyNode(transform).name().str() + ".worldMatrix[0]"});
    EXPECT_FALSE(KFnCompoundAttribute(KFnDependencyNode(shape).attribute("xform")).isHidden());
}

TEST_F(PortAdded, AnUnsupportedTypeGetsNoAttribute) {
    const unsigned int before = KFnDependencyNode(board_).attributeCount();
    const Orsel::Type amount = Orsel::Type::builtin(Orsel::TypeKind::Float);
    EXPECT_FALSE(addPort("amount", PortDirection::Input, amount));
    EXPECT_FALSE(translation().portAdded(board_, Orsel::String("amount"), PortDirection::Input,
                                         amount, Orsel::MetadataItem()));
    EXPECT_EQ(KFnDependencyNode(board_).attributeCount(), before);
}

} // namespace
