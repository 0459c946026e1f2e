// Host attributes made for new graph ports, added through the board as the executor adds
// them.

#include "PluginFixture.h"

#include <kova/KDagModifier.h>
#include <kova/KDagPath.h>
#include <kova/KFnAttribute.h>
#include <kova/KFnCompoundAttribute.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnSet.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <kova/KSelectionList.h>
#include <zeldata/ZelData.h>
#include <zelvane/Object.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/simulation/Time.h>

namespace {

using ZelvaneBoard::PortDescription;
using ZelvaneGraph::Executor::PortDirection;

PortDescription port(const char* name, PortDirection direction, const Orsel::Type& type) {
    PortDescription description;
    description.name = Orsel::String(name);
    description.direction = direction;
    description.type = type;
    return description;
}

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

KPlug plug(const KObject& owner, const char* attribute) {
    return KFnDependencyNode(owner).findPlug(attribute, false);
}

// Sources feeding `destination`.
std::vector<KString> sourcesOf(const KPlug& destination) {
    KPlugArray sources;
    destination.connectedTo(sources, true, false);
    std::vector<KString> names;
    for (unsigned int i = 0; i < sources.length(); ++i) {
        names.push_back(sources[i].name());
    }
    return names;
}

using PortAdded = BoundPlugin;

TEST_F(PortAdded, AnObjectInputGetsAWritableGenericAttributeAcceptingGeometryAndGraphData) {
    ASSERT_TRUE(
        ZelvaneBoard::addPort(board_, port("geo", PortDirection::Input, Zelvane::objectType())));
    KFnDependencyNode fnBoard(board_);
    ASSERT_TRUE(fnBoard.hasAttribute("geo"));
    KFnAttribute fnAttribute(fnBoard.attribute("geo"));
    EXPECT_EQ(fnAttribute.name(), KString("geo"));
    EXPECT_EQ(fnAttribute.shortName(), KString("geo"));
    EXPECT_TRUE(fnAttribute.isWritable());
    EXPECT_TRUE(fnAttribute.isKeyable());
    EXPECT_FALSE(fnAttribute.isReadable());
    EXPECT_FALSE(fnAttribute.isArray());
    for (KFnData::Type kind :
         {KFnData::kMesh, KFnData::kNurbsCurve, KFnData::kDoubleArray, KFnData::kVectorArray}) {
        EXPECT_TRUE(fnAttribute.accepts(kind)) << kind;
    }
    EXPECT_TRUE(fnAttribute.accepts(ZelData::id));
    EXPECT_FALSE(fnAttribute.accepts(KFnData::kString));
    EXPECT_TRUE(node("zel1").isNull()) << "inputs get no display shape";
}

TEST_F(PortAdded, AnArrayOfObjectsIsAnObjectPortWithAnArrayAttribute) {
    ASSERT_TRUE(ZelvaneBoard::addPort(
        board_, port("geos", PortDirection::Input, Orsel::Type::arrayOf(Zelvane::objectType()))));
    KFnAttribute fnAttribute(KFnDependencyNode(board_).attribute("geos"));
    EXPECT_TRUE(fnAttribute.isArray());
    EXPECT_TRUE(fnAttribute.accepts(KFnData::kMesh));
}

TEST_F(PortAdded, AnExistingAttributeIsKept) {
    ASSERT_TRUE(
        ZelvaneBoard::addPort(board_, port("geo", PortDirection::Input, Zelvane::objectType())));
    const unsigned int before = KFnDependencyNode(board_).attributeCount();
    EXPECT_TRUE(translation().portAdded(board_, Orsel::String("geo"), PortDirection::Input,
                                        Zelvane::objectType(), Orsel::MetadataItem()));
    EXPECT_EQ(KFnDependencyNode(board_).attributeCount(), before);
}

TEST_F(PortAdded, AnObjectOutputIsShownByANewShapeInTheDefaultShadingGroup) {
    ASSERT_TRUE(ZelvaneBoard::addPort(
        board_, port("result", PortDirection::Output, Zelvane::objectType())));
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

    EXPECT_EQ(sourcesOf(plug(shape, "inputSurface")),
              std::vector<KString>{KString("board1.result")});

    KDagPath path;
    ASSERT_TRUE(fnShape.getPath(path));
    EXPECT_TRUE(KFnSet(node("initialShadingGroup")).isMember(path));
}

TEST_F(PortAdded, AnOutputThatAsksForNoShapeGetsOnlyItsAttribute) {
    PortDescription description = port("result", PortDirection::Output, Zelvane::objectType());
    description.metadata = inputByPath("noShape", "1");
    ASSERT_TRUE(ZelvaneBoard::addPort(board_, description));
    EXPECT_TRUE(KFnDependencyNode(board_).hasAttribute("result"));
    EXPECT_TRUE(node("zelShapeShape1").isNull());
}

TEST_F(PortAdded, AnOutputFedByPathConnectsToTheNodeFound) {
    KFnDependencyNode fnNode;
    const KObject existing = fnNode.create("zelShape", "viewer");
    ASSERT_FALSE(existing.isNull());
    PortDescription description =
        port("results", PortDirection::Output, Orsel::Type::arrayOf(Zelvane::objectType()));
    description.metadata = inputByPath("paths", "viewer");
    ASSERT_TRUE(ZelvaneBoard::addPort(board_, description));
    EXPECT_EQ(sourcesOf(plug(existing, "inputSurface")),
              std::vector<KString>{KString("board1.results[0]")});
    EXPECT_TRUE(node("zelShapeShape1").isNull()) << "no new shape when one was found";
}

TEST_F(PortAdded, ATransformsPortOnADependencyNodeIsHiddenAndUnconnectable) {
    ASSERT_TRUE(
        ZelvaneBoard::addPort(board_, port("xform", PortDirection::Input,
                                           Zelvane::Geometry::Transform::graphTransformsType())));
    KFnDependencyNode fnBoard(board_);
    KFnCompoundAttribute fnCompound(fnBoard.attribute("xform"));
    EXPECT_TRUE(fnCompound.isHidden());
    EXPECT_FALSE(fnCompound.isConnectable());
    ASSERT_EQ(fnCompound.numChildren(), 1u);
    KFnAttribute fnChild(fnCompound.child(0));
    EXPECT_EQ(fnChild.name(), KString("totalTransform"));
    EXPECT_EQ(fnChild.shortName(), KString("totalTransform"));
    EXPECT_TRUE(plug(board_, "totalTransform").asMatrix().isEquivalent(KMatrix::identity));
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
    const KString transformName = KFnDependencyNode(transform).name();
    EXPECT_EQ(sourcesOf(plug(shape, "totalTransform")),
              std::vector<KString>{transformName + ".worldMatrix[0]"});
    KFnCompoundAttribute fnCompound(KFnDependencyNode(shape).attribute("xform"));
    EXPECT_FALSE(fnCompound.isHidden());
}

TEST_F(PortAdded, ASceneInfoPortGetsThreeStringsAndAFlag) {
    ASSERT_TRUE(ZelvaneBoard::addPort(
        board_, port("scene", PortDirection::Input, Zelvane::File::Project::sceneInfoType())));
    KFnCompoundAttribute fnCompound(KFnDependencyNode(board_).attribute("scene"));
    ASSERT_EQ(fnCompound.numChildren(), 4u);
    const char* names[] = {"scene_scene", "scene_scene_directory", "scene_project_directory",
                           "scene_has_project"};
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(KFnAttribute(fnCompound.child(i)).name(), KString(names[i]));
    }
    const KPlug hasProject = plug(board_, "scene_has_project");
    EXPECT_FALSE(hasProject.asBool());
    ASSERT_TRUE(plug(board_, "scene_scene").setString("shot.kova"));
    EXPECT_EQ(plug(board_, "scene_scene").asString(), KString("shot.kova"));
}

TEST_F(PortAdded, ATimeInputFollowsTheSceneTime) {
    ASSERT_TRUE(ZelvaneBoard::addPort(
        board_, port("now", PortDirection::Input, Zelvane::Simulation::timeType())));
    EXPECT_EQ(sourcesOf(plug(board_, "now")), std::vector<KString>{KString("time1.outTime")});
    ASSERT_TRUE(plug(node("time1"), "outTime").setTime(KTime(48.0, KTime::k24FPS)));
    EXPECT_DOUBLE_EQ(plug(board_, "now").asTime().as(KTime::kSeconds), 2.0);
}

TEST_F(PortAdded, AnUnsupportedTypeGetsNoAttribute) {
    const unsigned int before = KFnDependencyNode(board_).attributeCount();
    EXPECT_FALSE(ZelvaneBoard::addPort(board_, port("amount", PortDirection::Input,
                                                    Orsel::Type::builtin(Orsel::TypeKind::Float))));
    EXPECT_FALSE(translation().portAdded(board_, Orsel::String("amount"), PortDirection::Input,
                                         Orsel::Type::builtin(Orsel::TypeKind::Float),
                                         Orsel::MetadataItem()));
    EXPECT_EQ(KFnDependencyNode(board_).attributeCount(), before);
}

} // namespace
