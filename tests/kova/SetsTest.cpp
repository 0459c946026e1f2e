#include "KovaTestSupport.h"

#include <kova/KDagModifier.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KGlobal.h>

namespace {

class SetsTest : public KovaTest {
protected:
    // A display shape under its own transform; returns the shape's path.
    KDagPath shape() {
        KDagModifier modifier;
        const KObject top = modifier.createNode("zelShape");
        EXPECT_TRUE(modifier.doIt());
        KDagPath path;
        KDagPath::getAPathTo(top, path);
        EXPECT_TRUE(path.extendToShape());
        return path;
    }

    static KObject faces(std::initializer_list<int> indices) {
        KFnSingleIndexedComponent fn;
        const KObject component = fn.create(KFn::kMeshPolygonComponent);
        for (int i : indices) {
            fn.addElement(i);
        }
        return component;
    }

    static KObjectArray setsOf(const KDagPath& path) {
        KSelectionList list;
        list.add(path);
        KObjectArray sets;
        EXPECT_TRUE(KGlobal::getAssociatedSets(list, sets));
        return sets;
    }
};

TEST_F(SetsTest, ForceElementMovesAShapeBetweenShadingGroupsUntilItIsDeleted) {
    const KDagPath path = shape();
    const KObject initial = KScene::current().findNode("initialShadingGroup");
    const std::string command =
        "sets -edit -forceElement \"initialShadingGroup\" \"" + path.fullPathName().str() + "\"";
    ASSERT_TRUE(KGlobal::executeCommand(KString(command)));
    EXPECT_TRUE(KFnSet(initial).isMember(path));

    ASSERT_TRUE(KGlobal::executeCommand("createNode shadingEngine -name redSG"));
    ASSERT_TRUE(KGlobal::executeCommand("sets -e -fe redSG zelShapeShape1"));
    EXPECT_FALSE(KFnSet(initial).isMember(path));
    const KObjectArray sets = setsOf(path);
    ASSERT_EQ(sets.length(), 1u);
    EXPECT_EQ(KFnDependencyNode(sets[0]).name(), "redSG");

    // A deleted node leaves its sets.
    ASSERT_TRUE(KGlobal::executeCommand("delete zelShape1"));
    KSelectionList members;
    KFnSet(KScene::current().findNode("redSG")).getMembers(members, false);
    EXPECT_EQ(members.length(), 0u);
}

TEST_F(SetsTest, ComponentsAreExclusiveAcrossRenderableSets) {
    const KDagPath path = shape();
    KSelectionList none;
    KFnSet red, blue;
    red.create(none, KFnSet::kRenderableOnly);
    blue.create(none, KFnSet::kRenderableOnly);
    ASSERT_TRUE(red.addMember(path, faces({0, 1, 2})));
    ASSERT_TRUE(blue.addMember(path, faces({2, 3})));
    EXPECT_TRUE(red.isMember(path, faces({0, 1})));
    EXPECT_FALSE(red.isMember(path, faces({2})));
    EXPECT_TRUE(blue.isMember(path, faces({2, 3})));

    KSelectionList members;
    ASSERT_TRUE(red.getMembers(members, true));
    ASSERT_EQ(members.length(), 1u);
    KDagPath memberPath;
    KObject component;
    ASSERT_TRUE(members.getDagPath(0, memberPath, component));
    EXPECT_EQ(memberPath, path);
    KIntArray elements;
    ASSERT_TRUE(KFnSingleIndexedComponent(component).getElements(elements));
    EXPECT_EQ(elements, (KIntArray{0, 1}));
    EXPECT_EQ(component.apiType(), KFn::kMeshPolygonComponent);
    const KObjectArray both = setsOf(path); // in the order of the scene
    ASSERT_EQ(both.length(), 2u);
    EXPECT_EQ(both[0], red.object());
    EXPECT_EQ(both[1], blue.object());

    // A whole-object assignment takes every component away from the other group.
    ASSERT_TRUE(blue.addMember(path));
    EXPECT_EQ(setsOf(path).length(), 1u);
}

TEST_F(SetsTest, PlainSetsAreNotExclusive) {
    const KDagPath path = shape();
    ASSERT_TRUE(KGlobal::executeCommand("sets -name one -empty; sets -name two -empty"));
    ASSERT_TRUE(KGlobal::executeCommand("sets -e -fe one zelShape1; sets -e -fe two zelShape1"));
    KDagPath top = path;
    top.pop();
    EXPECT_EQ(setsOf(top).length(), 2u);
    ASSERT_TRUE(KGlobal::executeCommand("sets -e -remove one zelShape1"));
    EXPECT_EQ(setsOf(top).length(), 1u);
    KFnSet two(KScene::current().findNode("two"));
    EXPECT_FALSE(two.removeMember(top, faces({1}))); // held whole
    EXPECT_EQ(two.restriction(), KFnSet::kNone);
}

} // namespace
