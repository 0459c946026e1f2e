#include "KovaTestSupport.h"

#include <kova/KDGModifier.h>
#include <kova/KFnTypedAttribute.h>

namespace {

class ModifierTest : public KovaTest {};

TEST_F(ModifierTest, QueuesWhatIsNotKnownBadAndDoesNothingBeforeDoIt) {
    KDGModifier modifier;
    KStatus status;
    EXPECT_TRUE(modifier.createNode("noSuchType", &status).isNull());
    EXPECT_EQ(status, KStatus::kInvalidParameter);
    EXPECT_FALSE(modifier.connect(KPlug(), KPlug()));
    EXPECT_FALSE(modifier.renameNode(KObject(), "x"));
    EXPECT_EQ(modifier.pendingCount(), 0u);

    const KObject node = modifier.createNode("testScale", &status);
    ASSERT_TRUE(status);
    ASSERT_FALSE(node.isNull());
    modifier.renameNode(node, "renamed");
    modifier.newPlugValueDouble(KPlug(node, ScaleNode::input), 4.0);
    EXPECT_TRUE(KScene::current().findNode("renamed").isNull());
    EXPECT_EQ(modifier.pendingCount(), 3u);

    ASSERT_TRUE(modifier.doIt());
    EXPECT_EQ(KScene::current().findNode("renamed"), node);
    EXPECT_DOUBLE_EQ(plug(node, "output").asDouble(), 8.0);
    EXPECT_EQ(modifier.pendingCount(), 0u);
}

TEST_F(ModifierTest, DoItRunsInOrderAndStopsAtFirstFailure) {
    const KObject a = createNode("testScale", "a");
    const KObject b = createNode("testScale", "b");
    KDGModifier modifier;
    modifier.renameNode(a, "first");
    modifier.connect(plug(a, "output"), plug(b, "output")); // not writable: fails
    modifier.renameNode(b, "never");
    const KStatus status = modifier.doIt();
    EXPECT_FALSE(status);
    EXPECT_NE(status.errorString().str().find("connect"), std::string::npos);
    EXPECT_EQ(KFnDependencyNode(a).name(), "first");
    EXPECT_EQ(KFnDependencyNode(b).name(), "b");
    EXPECT_EQ(modifier.pendingCount(), 2u);
}

TEST_F(ModifierTest, AddsDynamicAttributesAndRunsCommands) {
    const KObject node = createNode("testScale", "dyn");
    KFnTypedAttribute typed;
    const KObject note = typed.create("note", "nt", KFnData::kString);
    KDGModifier modifier;
    ASSERT_TRUE(modifier.addAttribute(node, note));
    ASSERT_TRUE(modifier.commandToExecute("setAttr dyn.note \"hello there\""));
    ASSERT_TRUE(modifier.doIt());
    EXPECT_EQ(plug(node, "note").asString(), "hello there");

    KDGModifier removal;
    ASSERT_TRUE(removal.removeAttribute(node, note));
    ASSERT_TRUE(removal.doIt());
    EXPECT_FALSE(KFnDependencyNode(node).hasAttribute("note"));
}

} // namespace
