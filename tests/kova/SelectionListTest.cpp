#include "KovaTestSupport.h"

#include <kova/KDagModifier.h>
#include <kova/KFnDagNode.h>
#include <kova/KGlobal.h>
#include <kova/KObjectArray.h>
#include <kova/KSelectionList.h>

namespace {

class SelectionListTest : public KovaTest {
protected:
    void SetUp() override {
        KovaTest::SetUp();
        ASSERT_TRUE(KGlobal::executeCommand("createNode transform -n rig; createNode transform "
                                            "-n arm -p rig; createNode testScale -n armScale"));
    }

    static Words strings(const KSelectionList& list) {
        KStringArray words;
        EXPECT_TRUE(list.getSelectionStrings(words));
        return wordsOf(words);
    }
};

TEST_F(SelectionListTest, WildcardsMatchInSceneOrderAndItemsAreNodesPathsOrPlugs) {
    KSelectionList list;
    ASSERT_TRUE(list.add("arm*"));
    EXPECT_EQ(strings(list), (Words{"|rig|arm", "armScale"}));
    ASSERT_TRUE(list.add("?ig"));
    EXPECT_EQ(list.length(), 3u);
    EXPECT_EQ(list.add("nothing*"), KStatus::kInvalidParameter);
    EXPECT_EQ(list.length(), 3u);
    ASSERT_TRUE(list.remove(0));
    EXPECT_EQ(strings(list), (Words{"armScale", "|rig"}));
    EXPECT_FALSE(list.remove(5));

    // Items are nodes, paths or plugs.
    list.clear();
    ASSERT_TRUE(KGlobal::getSelectionListByName("|rig|arm", list));
    ASSERT_TRUE(list.add("armScale"));
    ASSERT_TRUE(list.add("armScale.input"));

    KDagPath path;
    KObject component, node;
    ASSERT_TRUE(list.getDagPath(0, path, component));
    EXPECT_EQ(path.fullPathName(), "|rig|arm");
    EXPECT_TRUE(component.isNull());
    EXPECT_FALSE(list.getDagPath(1, path)); // a dependency node
    ASSERT_TRUE(list.getDependNode(1, node));
    EXPECT_EQ(KFnDependencyNode(node).name(), "armScale");
    KPlug plug;
    EXPECT_FALSE(list.getPlug(1, plug));
    ASSERT_TRUE(list.getPlug(2, plug));
    EXPECT_EQ(plug.name(), "armScale.input");
    ASSERT_TRUE(list.getDependNode(2, node));
    EXPECT_EQ(KFnDependencyNode(node).name(), "armScale");
    EXPECT_FALSE(list.getDependNode(3, node));

    EXPECT_FALSE(list.add("|arm"));   // arm is not at the root
    EXPECT_FALSE(list.add("|rig|x")); // no such child
    EXPECT_FALSE(list.add(KDagPath()));
    EXPECT_FALSE(list.add(KObject()));
    list.clear();
    EXPECT_TRUE(list.isEmpty());
}

TEST_F(SelectionListTest, ObjectArrayAndDagPathEditing) {
    KObjectArray array;
    const KObject a = KScene::current().findNode("rig");
    const KObject b = KScene::current().findNode("arm");
    array.append(a);
    ASSERT_TRUE(array.insert(b, 0));
    EXPECT_FALSE(array.insert(b, 5));
    EXPECT_EQ(array.length(), 2u);
    EXPECT_EQ(array.indexOf(a), 1);
    EXPECT_EQ(array.indexOf(KObject()), -1);
    KObject out;
    EXPECT_FALSE(array.get(2, out));
    ASSERT_TRUE(array.remove(0));
    ASSERT_TRUE(array.get(0, out));
    EXPECT_EQ(out, a);
    EXPECT_EQ(KScene::current().nodes().length(), 5u);

    KDagPath path;
    ASSERT_TRUE(KDagPath::getAPathTo(KScene::current().findNode("rig"), path));
    EXPECT_EQ(path.length(), 1u);
    EXPECT_EQ(path.childCount(), 1u);
    ASSERT_TRUE(path.push(path.child(0)));
    EXPECT_EQ(path.fullPathName(), "|rig|arm");
    EXPECT_FALSE(path.push(KScene::current().findNode("rig")));
    EXPECT_FALSE(path.extendToShape()); // a transform without shapes
    ASSERT_TRUE(path.pop());
    EXPECT_EQ(path.partialPathName(), "rig");
    EXPECT_FALSE(path.pop(3));
    EXPECT_FALSE(KDagPath::getAPathTo(KScene::current().findNode("armScale"), path));
    EXPECT_FALSE(path.isValid());
}

} // namespace
