#include "ArrayNode.h"

#include <kova/KDGModifier.h>
#include <kova/KGlobal.h>
#include <kova/KPlugArray.h>

namespace {

class PlugTest : public ArrayNodeTest {
protected:
    void SetUp() override {
        ArrayNodeTest::SetUp();
        node = createNode("testArrays", "arr");
    }
    KObject node;
};

TEST_F(PlugTest, LogicalIndicesAreSparseAndPhysicalIndicesDense) {
    KPlug values = plug(node, "values");
    ASSERT_TRUE(values.isArray());
    values.elementByLogicalIndex(7).setDouble(70.0);
    values.elementByLogicalIndex(2).setDouble(20.0);
    values.elementByLogicalIndex(40).setDouble(400.0);

    EXPECT_EQ(values.numElements(), 3u);
    KIntArray indices;
    EXPECT_EQ(values.getExistingArrayAttributeIndices(indices), 3u);
    EXPECT_EQ(indices, (KIntArray{2, 7, 40}));
    EXPECT_EQ(values.elementByPhysicalIndex(1).logicalIndex(), 7u);
    EXPECT_DOUBLE_EQ(values.elementByPhysicalIndex(2).asDouble(), 400.0);
    KStatus status;
    values.elementByPhysicalIndex(3, &status);
    EXPECT_FALSE(status);
    EXPECT_DOUBLE_EQ(plug(node, "sum").asDouble(), 490.0 + 3.0);
}

TEST_F(PlugTest, NamesAndStructureOfElementsAndChildren) {
    const KPlug element = plug(node, "values").elementByLogicalIndex(3);
    EXPECT_EQ(element.name(), "arr.values[3]");
    EXPECT_EQ(element.partialName(), "vals[3]");
    EXPECT_EQ(element.partialName(true, false, true), "arr.values[3]");
    EXPECT_TRUE(element.isElement());
    EXPECT_FALSE(element.isArray());
    EXPECT_EQ(element.array(), plug(node, "values"));
    EXPECT_TRUE(element == ArrayNode::values);

    const KPlug pair = plug(node, "pair");
    ASSERT_TRUE(pair.isCompound());
    EXPECT_EQ(pair.numChildren(), 2u);
    const KPlug second = pair.child(1);
    EXPECT_TRUE(second.isChild());
    EXPECT_EQ(second.name(), "arr.pair.second");
    EXPECT_EQ(second.partialName(false, true), "pr.snd");
    EXPECT_EQ(second.parent(), pair);
    EXPECT_EQ(pair.child(ArrayNode::first), plug(node, "first"));
    // Children found either way feed the compute.
    pair.child(0).setDouble(10.0);
    plug(node, "second").setDouble(5.0);
    EXPECT_DOUBLE_EQ(plug(node, "sum").asDouble(), 15.0);
}

TEST_F(PlugTest, ConnectionsAreListedFromBothEnds) {
    const KObject other = createNode("testArrays", "other");
    KDGModifier modifier;
    modifier.connect(plug(node, "sum"), plug(other, "values").elementByLogicalIndex(5));
    modifier.connect(plug(node, "sum"), plug(other, "first"));
    ASSERT_TRUE(modifier.doIt());

    KPlugArray destinations;
    EXPECT_TRUE(plug(node, "sum").connectedTo(destinations, false, true));
    EXPECT_EQ(destinations.length(), 2u);
    const KPlug element = plug(other, "values").elementByLogicalIndex(5);
    EXPECT_TRUE(element.isDestination());
    EXPECT_FALSE(element.isSource());
    EXPECT_EQ(element.source(), plug(node, "sum"));
    EXPECT_EQ(plug(other, "values").numElements(), 1u);

    plug(node, "values").elementByLogicalIndex(0).setDouble(4.0);
    // other.sum = values[5] (4 + 1 + 2 = 7) + first (7) + second (2)
    EXPECT_DOUBLE_EQ(plug(other, "sum").asDouble(), 16.0);
    KPlugArray all;
    EXPECT_TRUE(KFnDependencyNode(other).getConnections(all));
    EXPECT_EQ(all.length(), 2u);

    // An array source into a single destination uses its element 0.
    ASSERT_TRUE(KGlobal::executeCommand("connectAttr arr.copies other.second"));
    EXPECT_EQ(plug(other, "second").source().name(), "arr.copies[0]");
}

TEST_F(PlugTest, ArrayBuilderOutputFollowsInputAndShrinks) {
    KPlug values = plug(node, "values");
    for (unsigned int i = 0; i < 4; ++i) {
        values.elementByLogicalIndex(i).setDouble(i + 1.0);
    }
    KPlug copies = plug(node, "copies");
    EXPECT_DOUBLE_EQ(copies.elementByLogicalIndex(3).asDouble(), 8.0);
    EXPECT_EQ(copies.numElements(), 4u);

    values.elementByLogicalIndex(1).setDouble(0.0); // zeros get no copy
    EXPECT_DOUBLE_EQ(copies.elementByLogicalIndex(2).asDouble(), 6.0);
    EXPECT_EQ(copies.numElements(), 3u);
    EXPECT_EQ(static_cast<ArrayNode&>(*KFnDependencyNode(node).userNode()).lastPreviousCount, 4u);
}

} // namespace
