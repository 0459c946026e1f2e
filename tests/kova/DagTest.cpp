#include "KovaTestSupport.h"

#include <kova/KDagModifier.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnTransform.h>
#include <kova/KGlobal.h>
#include <kova/KObjectHandle.h>

namespace {

class DagTest : public KovaTest {
protected:
    KObject transform(const char* name, const KObject& parent = KObject()) {
        KFnDagNode fn;
        KStatus status;
        const KObject node = fn.create("transform", name, parent, &status);
        EXPECT_TRUE(status) << status.errorString();
        return node;
    }
};

KMatrix translation(double x, double y, double z) {
    KMatrix m;
    m(3, 0) = x;
    m(3, 1) = y;
    m(3, 2) = z;
    return m;
}

TEST_F(DagTest, WorldMatricesComposeNestedTransforms) {
    const KObject top = transform("top");
    const KObject middle = transform("middle", top);
    const KObject leaf = transform("leaf", middle);
    KFnTransform(top).setTranslation(KVector(1, 0, 0), KSpace::kTransform);
    const double scale[3] = {2, 2, 2};
    KFnTransform(middle).setScale(scale);
    KFnTransform(leaf).setTranslation(KVector(0, 3, 0), KSpace::kTransform);

    // leaf's origin: (0,3,0) scaled by 2, then moved by (1,0,0).
    const KMatrix world = plug(leaf, "worldMatrix").elementByLogicalIndex(0).asMatrix();
    KMatrix scaled;
    scaled(0, 0) = scaled(1, 1) = scaled(2, 2) = 2;
    EXPECT_TRUE(world.isEquivalent(translation(0, 3, 0) * scaled * translation(1, 0, 0)));
    EXPECT_TRUE(KFnTransform(leaf).getTranslation(KSpace::kWorld).isEquivalent(KVector(1, 6, 0)));

    KDagPath path;
    ASSERT_TRUE(KFnDagNode(leaf).getPath(path));
    EXPECT_EQ(path.fullPathName(), "|top|middle|leaf");
    EXPECT_EQ(path.partialPathName(), "leaf");
    EXPECT_TRUE(path.inclusiveMatrix().isEquivalent(world));
    EXPECT_TRUE(path.exclusiveMatrix().isEquivalent(
        plug(middle, "worldMatrix").elementByLogicalIndex(0).asMatrix()));
    EXPECT_TRUE(plug(leaf, "worldInverseMatrix")
                    .elementByLogicalIndex(0)
                    .asMatrix()
                    .isEquivalent(world.inverse()));

    // Moving the top dirties the world matrices below it.
    KFnTransform(top).setTranslation(KVector(5, 0, 0), KSpace::kTransform);
    EXPECT_TRUE(KFnTransform(leaf).getTranslation(KSpace::kWorld).isEquivalent(KVector(5, 6, 0)));
}

TEST_F(DagTest, RotationIsStoredInDegrees) {
    const KObject node = transform("spin");
    const double radians[3] = {0.0, 0.0, 1.5707963267948966};
    ASSERT_TRUE(KFnTransform(node).setRotation(radians));
    KStringArray words;
    ASSERT_TRUE(KGlobal::executeCommand("getAttr spin.rotate", &words));
    ASSERT_EQ(words.length(), 3u);
    EXPECT_NEAR(words[2].asDouble(), 90.0, 1e-9);
    const KMatrix m = KFnDagNode(node).transformationMatrix();
    EXPECT_NEAR(m(0, 1), 1.0, 1e-12); // x axis turns into y
}

TEST_F(DagTest, ShapeWithoutParentGetsATransform) {
    KDagModifier modifier;
    KStatus status;
    const KObject top = modifier.createNode("zelShape", KObject::kNullObj, &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(KFnDependencyNode(top).name(), ""); // not in the scene before doIt
    ASSERT_TRUE(modifier.doIt());
    KFnDagNode fn(top);
    EXPECT_EQ(fn.typeName(), "transform");
    EXPECT_EQ(fn.name(), "zelShape1");
    ASSERT_EQ(fn.childCount(), 1u);
    KFnDagNode shape(fn.child(0));
    EXPECT_EQ(shape.name(), "zelShapeShape1");
    EXPECT_EQ(shape.fullPathName(), "|zelShape1|zelShapeShape1");
    EXPECT_TRUE(shape.object().hasFn(KFn::kShape));

    KDagPath path;
    KDagPath::getAPathTo(top, path);
    ASSERT_TRUE(path.extendToShape());
    EXPECT_EQ(path.node(), shape.object());
    EXPECT_EQ(path.transform(), top);
}

TEST_F(DagTest, ReparentingChecksTheHierarchyAndDeletingAParentDeletesItsChildren) {
    const KObject a = transform("a");
    const KObject b = transform("b", a);
    KDagModifier modifier;
    modifier.reparentNode(a, b); // a below its own child
    EXPECT_FALSE(modifier.doIt());

    KDagModifier again;
    ASSERT_TRUE(again.reparentNode(b));
    ASSERT_TRUE(again.doIt());
    EXPECT_EQ(KFnDagNode(b).parentCount(), 0u);
    EXPECT_EQ(KFnDagNode(b).fullPathName(), "|b");

    // Deleting a parent deletes its children.
    const KObject c = transform("c", b);
    KObjectHandle handle(c);
    ASSERT_TRUE(KGlobal::executeCommand("delete b"));
    EXPECT_TRUE(handle.isAlive()); // `c` still refers to it
    EXPECT_FALSE(handle.isValid());
    EXPECT_TRUE(KScene::current().findNode("c").isNull());
}

} // namespace
