#include "KovaTestSupport.h"

#include <kova/KDGModifier.h>
#include <kova/KFnAttribute.h>
#include <kova/KGlobal.h>
#include <kova/KMessageCapture.h>
#include <kova/KObjectArray.h>

namespace {

class EvaluationTest : public KovaTest {
protected:
    // a -> b -> c, each output feeding the next input.
    void makeChain() {
        a = createNode("testScale", "a");
        b = createNode("testScale", "b");
        c = createNode("testScale", "c");
        KDGModifier modifier;
        ASSERT_TRUE(modifier.connect(plug(a, "output"), plug(b, "input")));
        ASSERT_TRUE(modifier.connect(plug(b, "output"), plug(c, "input")));
        ASSERT_TRUE(modifier.doIt());
    }
    KObject a, b, c;
};

TEST_F(EvaluationTest, ChainComputesOnDemandAndOnlyWhatIsDirty) {
    makeChain();
    ASSERT_TRUE(plug(a, "input").setDouble(1.5));
    KStatus status;
    EXPECT_DOUBLE_EQ(plug(c, "output").asDouble(&status), 12.0);
    EXPECT_TRUE(status);
    EXPECT_DOUBLE_EQ(plug(b, "output").asDouble(), 6.0);
    plug(c, "output").asDouble();
    EXPECT_EQ(scaleNode(a).computes, 1);
    EXPECT_EQ(scaleNode(c).computes, 1);

    // Changing the input dirties the whole chain through affects and connections.
    plug(a, "input").setDouble(2.0);
    EXPECT_DOUBLE_EQ(plug(c, "output").asDouble(), 16.0);
    EXPECT_EQ(scaleNode(a).computes, 2);
    EXPECT_EQ(scaleNode(b).computes, 2);
    EXPECT_EQ(scaleNode(c).computes, 2);

    // Changing a node downstream leaves upstream clean.
    plug(c, "mode").setInt(0);
    plug(c, "output").asDouble();
    EXPECT_EQ(scaleNode(a).computes, 2);
    EXPECT_EQ(scaleNode(c).computes, 3);
}

TEST_F(EvaluationTest, ThrowingComputeIsReportedAndLeavesPlugUnevaluated) {
    makeChain();
    plug(a, "input").setDouble(1.0);
    plug(b, "mode").setInt(1);
    KMessageCapture capture;
    KStatus status;
    plug(c, "output").asDouble(&status);
    EXPECT_FALSE(status);
    ASSERT_EQ(capture.errors().size(), 1u);
    const std::string message = capture.errors().front().str();
    EXPECT_NE(message.find("'b'"), std::string::npos) << message;
    EXPECT_NE(message.find("b.output"), std::string::npos) << message;
    EXPECT_NE(message.find("scale exploded"), std::string::npos) << message;

    // The host goes on: once the node behaves, the same plug evaluates.
    plug(b, "mode").setInt(0);
    EXPECT_DOUBLE_EQ(plug(c, "output").asDouble(&status), 8.0);
    EXPECT_TRUE(status);
}

TEST_F(EvaluationTest, FailingComputeStaysDirtyAndUnknownParameterKeepsTheStoredValue) {
    const KObject node = createNode("testScale");
    plug(node, "input").setDouble(5.0);
    EXPECT_DOUBLE_EQ(plug(node, "output").asDouble(), 10.0);
    plug(node, "mode").setInt(2);
    KStatus status;
    plug(node, "output").asDouble(&status);
    EXPECT_EQ(status, KStatus::kFailure);
    plug(node, "output").asDouble(&status);
    EXPECT_EQ(scaleNode(node).computes, 3); // still dirty: asked again

    plug(node, "mode").setInt(3);
    EXPECT_DOUBLE_EQ(plug(node, "output").asDouble(&status), 10.0);
    EXPECT_TRUE(status);
    plug(node, "output").asDouble();
    EXPECT_EQ(scaleNode(node).computes, 4); // clean after kUnknownParameter
}

TEST_F(EvaluationTest, ConnectedDestinationCannotBeSetAndDisconnectKeepsValue) {
    makeChain();
    plug(a, "input").setDouble(1.0);
    EXPECT_FALSE(plug(b, "input").setDouble(7.0));
    plug(c, "output").asDouble();
    KDGModifier modifier;
    ASSERT_TRUE(modifier.disconnect(plug(a, "output"), plug(b, "input")));
    ASSERT_TRUE(modifier.doIt());
    EXPECT_DOUBLE_EQ(plug(b, "input").asDouble(), 2.0);
    ASSERT_TRUE(plug(b, "input").setDouble(7.0));
    EXPECT_DOUBLE_EQ(plug(c, "output").asDouble(), 28.0);
}

TEST_F(EvaluationTest, CyclesAndSecondSourcesAreRefused) {
    makeChain();
    KDGModifier modifier;
    ASSERT_TRUE(modifier.connect(plug(c, "output"), plug(a, "mode")));
    const KStatus status = modifier.doIt();
    EXPECT_FALSE(status);
    EXPECT_NE(status.errorString().str().find("cycle"), std::string::npos);
    EXPECT_FALSE(plug(a, "mode").isConnected());
    // A destination that has a source is refused another one unless forced.
    EXPECT_FALSE(KGlobal::executeCommand("connectAttr a.output c.input"));
    ASSERT_TRUE(KGlobal::executeCommand("connectAttr -force a.output c.input"));
    EXPECT_EQ(plug(c, "input").source(), plug(a, "output"));
}

} // namespace

namespace {

std::vector<std::string> affectedNames(const KObject& node, const char* attribute) {
    KFnDependencyNode fnNode(node);
    KObjectArray affected;
    EXPECT_TRUE(fnNode.getAffectedAttributes(fnNode.attribute(attribute), affected));
    std::vector<std::string> names;
    for (unsigned int i = 0; i < affected.length(); ++i) {
        names.push_back(KFnAttribute(affected[i]).name().str());
    }
    return names;
}

TEST_F(EvaluationTest, ReportsTheDeclaredAffectsRelations) {
    const KObject node = createNode("testScale", "scale");
    EXPECT_EQ(affectedNames(node, "input"), std::vector<std::string>{"output"});
    EXPECT_EQ(affectedNames(node, "mode"), std::vector<std::string>{"output"});
    EXPECT_EQ(affectedNames(node, "output"), std::vector<std::string>{});
    KObjectArray affected;
    EXPECT_FALSE(KFnDependencyNode(node).getAffectedAttributes(KObject::kNullObj, affected));
}

} // namespace
