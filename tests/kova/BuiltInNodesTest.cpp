#include "KovaTestSupport.h"

#include <kova/KDagModifier.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnTransform.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KFnUnitAttribute.h>
#include <kova/KGlobal.h>
#include <kova/KPlugArray.h>

namespace {

// A shape whose "points" attribute is in world space, for geometry matrices.
class PointsShape : public KPxNode {
public:
    static inline KObject points;
    static void* create() { return new PointsShape; }
    static KStatus initialize() {
        KFnTypedAttribute typed;
        points = typed.create("points", "pts", KFnData::kDoubleArray);
        typed.setWorldSpace(true);
        return addAttribute(points);
    }
};

class BuiltInNodesTest : public KovaTest {
protected:
    // A new shape of `type` under a new transform; returns the shape.
    static KObject shape(const char* type) {
        KDagModifier modifier;
        const KObject top = modifier.createNode(type);
        EXPECT_TRUE(modifier.doIt());
        return KFnDagNode(top).child(0);
    }
};

TEST_F(BuiltInNodesTest, LambertIsASurfaceShader) {
    ASSERT_TRUE(KGlobal::executeCommand("createNode lambert -n red; setAttr red.color 1 0 0"));
    KStringArray words;
    ASSERT_TRUE(KGlobal::executeCommand("getAttr red.outColor", &words));
    ASSERT_EQ(words.length(), 3u);
    EXPECT_EQ(words[0], "1");
    EXPECT_EQ(words[1], "0");
    const KObject red = KScene::current().findNode("red");
    EXPECT_TRUE(red.hasFn(KFn::kShaderNode));
    EXPECT_TRUE(KFnDependencyNode(red).classification().startsWith("drawdb/shader"));
    ASSERT_TRUE(
        KGlobal::executeCommand("connectAttr red.message initialShadingGroup.surfaceShader"));
    KPlugArray sources;
    const KObject group = KScene::current().findNode("initialShadingGroup");
    ASSERT_TRUE(plug(group, "surfaceShader").connectedTo(sources, true, false));
    EXPECT_EQ(sources[0].node(), red);
    EXPECT_FALSE(plug(group, "displacementShader").isConnected());
}

TEST_F(BuiltInNodesTest, WorldSpaceAttributesCarryTheWorldMatrixToTheDisplayShape) {
    ASSERT_TRUE(KFnPlugin(module).registerNode("pointsShape", KTypeId(0x7E0041),
                                               &PointsShape::create, &PointsShape::initialize,
                                               KPxNode::kSurfaceShape));
    const KObject points = shape("pointsShape");
    const KObject top = KFnDagNode(points).parent(0);
    KFnTransform(top).setTranslation(KVector(0, 0, 7), KSpace::kTransform);
    plug(points, "points").setKObject(KFnDoubleArrayData().create({2.0}));

    KDataHandle handle;
    ASSERT_TRUE(plug(points, "points").getValue(handle));
    EXPECT_EQ(handle.geometryTransformMatrix()(3, 2), 7.0);

    // Through a connection the reader still sees where the data came from; the display shape
    // reports what arrives.
    const KObject display = shape("zelShape");
    EXPECT_TRUE(display.hasFn(KFn::kShape));
    EXPECT_EQ(plug(display, "displayType").asInt(), KFnData::kInvalid);
    EXPECT_EQ(plug(display, "displayName").asString(), "");
    ASSERT_TRUE(KGlobal::executeCommand(
        "connectAttr pointsShapeShape1.points zelShapeShape1.inputSurface"));
    EXPECT_EQ(plug(display, "displayType").asInt(), KFnData::kDoubleArray);
    EXPECT_EQ(plug(display, "displayName").asString(), "doubleArray");
    ASSERT_TRUE(plug(display, "inputSurface").getValue(handle));
    EXPECT_EQ(handle.type(), KFnData::kDoubleArray);
    EXPECT_EQ(handle.geometryTransformMatrix()(3, 2), 7.0);
    KFnTransform(top).setTranslation(KVector(0, 0, -1), KSpace::kTransform);
    ASSERT_TRUE(plug(display, "inputSurface").getValue(handle));
    EXPECT_EQ(handle.geometryTransformMatrix()(3, 2), -1.0);

    // A value set directly on a plain attribute has no geometry transform.
    ASSERT_TRUE(plug(display, "displayType").getValue(handle));
    EXPECT_EQ(handle.geometryTransformMatrix(), KMatrix::identity);
}

TEST_F(BuiltInNodesTest, TimeFlowsFromTime1) {
    KFnUnitAttribute unit;
    const KObject local = unit.create("localTime", "lt", KFnUnitAttribute::kTime);
    const KObject node = createNode("testScale", "clock");
    ASSERT_TRUE(KFnDependencyNode(node).addAttribute(local));
    ASSERT_TRUE(KGlobal::executeCommand("connectAttr time1.outTime clock.localTime"));
    ASSERT_TRUE(KGlobal::executeCommand("setAttr time1.outTime 48"));
    const KTime time = plug(node, "localTime").asTime();
    EXPECT_DOUBLE_EQ(time.as(KTime::kSeconds), 2.0);
    EXPECT_EQ(time.asTicks(), 2 * KTime::ticksPerSecond());
}

} // namespace
