#include "KovaTestSupport.h"

#include <kova/KDGModifier.h>
#include <kova/KFnSet.h>
#include <kova/KGlobal.h>
#include <kova/KObjectHandle.h>

namespace {

class SceneTest : public KovaTest {};

TEST_F(SceneTest, ResetLeavesAFreshSceneWithTimeAndDefaultShadingGroup) {
    createNode("testScale");
    createNode("transform");
    KScene::reset();
    EXPECT_EQ(KScene::current().nodeCount(), 2u);
    const KObject time = KScene::current().findNode("time1");
    ASSERT_FALSE(time.isNull());
    EXPECT_TRUE(time.hasFn(KFn::kTime));
    EXPECT_EQ(KFnDependencyNode(time).typeName(), "time");

    const KObject group = KScene::current().findNode("initialShadingGroup");
    ASSERT_FALSE(group.isNull());
    EXPECT_TRUE(group.hasFn(KFn::kShadingEngine));
    EXPECT_TRUE(group.hasFn(KFn::kSet));
    EXPECT_EQ(KFn::kSet, 471);
    EXPECT_EQ(KFnSet(group).restriction(), KFnSet::kRenderableOnly);
    EXPECT_TRUE(KFnDependencyNode(group).hasAttribute("surfaceShader"));
}

TEST_F(SceneTest, NamesAreMadeUnique) {
    EXPECT_EQ(KFnDependencyNode(createNode("testScale")).name(), "testScale1");
    EXPECT_EQ(KFnDependencyNode(createNode("testScale")).name(), "testScale2");
    EXPECT_EQ(KFnDependencyNode(createNode("testScale", "cube")).name(), "cube");
    EXPECT_EQ(KFnDependencyNode(createNode("testScale", "cube")).name(), "cube1");
    EXPECT_EQ(KFnDependencyNode(createNode("testScale", "cube1")).name(), "cube2");

    KFnDependencyNode fn(KScene::current().findNode("cube"));
    EXPECT_EQ(fn.setName("cube"), "cube"); // its own name stays
    EXPECT_EQ(fn.setName("testScale1"), "testScale3");
    KStatus status;
    fn.setName("9lives", &status);
    EXPECT_EQ(status, KStatus::kInvalidParameter);
    EXPECT_EQ(fn.name(), "testScale3");
}

TEST_F(SceneTest, HandlesKnowWhenTheirNodeIsGone) {
    const KObject node = createNode("testScale", "gone");
    const KObjectHandle handle(node);
    EXPECT_NE(handle.objectHashCode(), 0u);
    EXPECT_NE(handle.objectHashCode(), KObjectHandle(createNode("testScale")).objectHashCode());
    EXPECT_TRUE(handle.isValid());
    KDGModifier modifier;
    ASSERT_TRUE(modifier.deleteNode(node));
    ASSERT_TRUE(modifier.doIt());
    EXPECT_FALSE(handle.isValid());
    EXPECT_TRUE(handle.isAlive());
    KStatus status;
    plug(node, "output").asDouble(&status); // a stale plug fails cleanly
    EXPECT_FALSE(status);
}

TEST_F(SceneTest, KindHierarchy) {
    EXPECT_TRUE(KFn::isA(KFn::kPluginTransformNode, KFn::kDagNode));
    EXPECT_TRUE(KFn::isA(KFn::kMeshVertComponent, KFn::kComponent));
    EXPECT_FALSE(KFn::isA(KFn::kMeshData, KFn::kDependencyNode));
    const KObject node = createNode("testScale");
    EXPECT_EQ(node.apiType(), KFn::kPluginDependNode);
    EXPECT_TRUE(node.hasFn(KFn::kDependencyNode));
    EXPECT_FALSE(node.hasFn(KFn::kDagNode));
    EXPECT_TRUE(KObject::kNullObj.isNull());
    EXPECT_FALSE(KObject::kNullObj.hasFn(KFn::kBase));
}

} // namespace
