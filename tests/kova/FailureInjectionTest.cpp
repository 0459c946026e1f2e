#include "KovaTestSupport.h"

#include <kova/KDGModifier.h>
#include <kova/KGlobal.h>

namespace {

class FailureInjectionTest : public KovaTest {};

// The plug-in's failure tests make the host operations it calls fail (attribute creation,
// modifiers, plug reads, output values, node registration) and check what it makes of that;
// these are the effects on the host itself, and the operations the plug-in does not call.
TEST_F(FailureInjectionTest, NamedOperationsFailOnDemandAndCanBeRetried) {
    const KObject node = createNode("testScale", "n");
    KFailureInjection::failNext("KDGModifier::doIt");
    KDGModifier modifier;
    modifier.renameNode(node, "m");
    EXPECT_FALSE(modifier.doIt());
    EXPECT_EQ(KFnDependencyNode(node).name(), "n");
    EXPECT_TRUE(modifier.doIt()); // the queue is kept
    EXPECT_EQ(KFnDependencyNode(node).name(), "m");

    KFailureInjection::failNext("KGlobal::executeCommand");
    EXPECT_FALSE(KGlobal::executeCommand("setAttr m.input 2"));
    KFailureInjection::failNext("KDataHandle::setDouble");
    EXPECT_FALSE(plug(node, "input").setDouble(3.0));
    EXPECT_DOUBLE_EQ(plug(node, "input").asDouble(), 0.0);
    EXPECT_TRUE(KGlobal::executeCommand("setAttr m.input 2"));
    EXPECT_DOUBLE_EQ(plug(node, "input").asDouble(), 2.0);

    KFailureInjection::failNext("KPxNode::addAttribute");
    KFnPlugin plugin(module);
    EXPECT_FALSE(plugin.registerNode("again", KTypeId(0x7E0030), &ScaleNode::create,
                                     &ScaleNode::initialize));
    EXPECT_TRUE(plugin.registerNode("again", KTypeId(0x7E0030), &ScaleNode::create,
                                    &ScaleNode::initialize));
}

} // namespace
