#include "KovaTestSupport.h"

#include <kova/KDGModifier.h>
#include <kova/KFnGenericAttribute.h>
#include <kova/KGlobal.h>

namespace {

class FailureInjectionTest : public KovaTest {};

TEST_F(FailureInjectionTest, NamedOperationsFailOnDemand) {
    KFailureInjection::failNext("KFnGenericAttribute::create");
    KFnGenericAttribute generic;
    KStatus status;
    EXPECT_TRUE(generic.create("g", "g", &status).isNull());
    EXPECT_EQ(status, KStatus::kFailure);
    EXPECT_FALSE(generic.create("g", "g", &status).isNull()); // only the next call failed

    const KObject node = createNode("testScale", "n");
    KFailureInjection::failNext("KDataBlock::outputValue");
    plug(node, "output").asDouble(&status);
    EXPECT_FALSE(status);
    EXPECT_DOUBLE_EQ(plug(node, "output").asDouble(&status), 0.0);
    EXPECT_TRUE(status);

    KFailureInjection::failNext("KDGModifier::doIt");
    KDGModifier modifier;
    modifier.renameNode(node, "m");
    EXPECT_FALSE(modifier.doIt());
    EXPECT_TRUE(modifier.doIt());
    EXPECT_EQ(KFnDependencyNode(node).name(), "m");
}

TEST_F(FailureInjectionTest, RegistrationFailureCanBeRetried) {
    KFailureInjection::failNext("KPxNode::addAttribute");
    KFnPlugin plugin(module);
    EXPECT_FALSE(plugin.registerNode("again", KTypeId(0x7E0030), &ScaleNode::create,
                                     &ScaleNode::initialize));
    EXPECT_TRUE(plugin.registerNode("again", KTypeId(0x7E0030), &ScaleNode::create,
                                    &ScaleNode::initialize));
    KFailureInjection::failNext("KFnPlugin::registerNode");
    EXPECT_FALSE(plugin.registerNode("third", KTypeId(0x7E0031), &ScaleNode::create, nullptr));
}

TEST_F(FailureInjectionTest, CommandsAndHandleSetsFail) {
    KFailureInjection::failNext("KGlobal::executeCommand");
    EXPECT_FALSE(KGlobal::executeCommand("ls"));
    const KObject node = createNode("testScale", "n");
    KFailureInjection::failNext("KDataHandle::setDouble");
    EXPECT_FALSE(plug(node, "input").setDouble(3.0));
    EXPECT_DOUBLE_EQ(plug(node, "input").asDouble(), 0.0);
    KFailureInjection::failAlways("KPlug::getValue");
    KStatus status;
    plug(node, "input").asDouble(&status);
    EXPECT_FALSE(status);
}

} // namespace
