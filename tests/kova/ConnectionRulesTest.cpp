#include "ArrayNode.h"

#include <kova/KDGModifier.h>
#include <kova/KFnGenericAttribute.h>
#include <kova/KFnMatrixAttribute.h>
#include <kova/KFnMessageAttribute.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KFnUnitAttribute.h>
#include <kova/KGlobal.h>
#include <kova/KPlugArray.h>

namespace {

class ConnectionRulesTest : public ArrayNodeTest {
protected:
    void SetUp() override {
        ArrayNodeTest::SetUp();
        from = createNode("testArrays", "from");
        to = createNode("testArrays", "to");
    }

    static KStatus connect(const KPlug& source, const KPlug& destination) {
        KDGModifier modifier;
        modifier.connect(source, destination);
        return modifier.doIt();
    }

    // Adds a dynamic attribute to `node` and returns its plug.
    static KPlug add(const KObject& node, const KObject& attribute) {
        EXPECT_TRUE(KFnDependencyNode(node).addAttribute(attribute));
        return KPlug(node, attribute);
    }

    KObject from, to;
};

TEST_F(ConnectionRulesTest, KindsAndFlagsMustFit) {
    KFnTypedAttribute typed;
    KFnUnitAttribute unit;
    KFnMatrixAttribute matrix;
    KFnMessageAttribute message;
    KFnNumericAttribute numeric;
    const KPlug text = add(to, typed.create("text", "tx", KFnData::kString));
    const KPlug time = add(to, unit.create("time", "tm", KFnUnitAttribute::kTime));
    const KPlug xform = add(to, matrix.create("xform", "xf"));
    const KPlug link = add(to, message.create("link", "lk"));
    const KPlug triple = add(to, numeric.create("triple", "tp", KFnNumericData::k3Double));

    const KPlug sum = plug(from, "sum");
    EXPECT_FALSE(connect(sum, text));
    EXPECT_FALSE(connect(sum, time));
    EXPECT_FALSE(connect(sum, xform));
    EXPECT_FALSE(connect(sum, link));
    EXPECT_FALSE(connect(sum, triple));
    EXPECT_TRUE(connect(plug(from, "message"), link));
    const KObject time1 = KScene::current().findNode("time1");
    EXPECT_TRUE(connect(plug(time1, "outTime"), time));
    const KObject transform = createNode("transform", "xf");
    EXPECT_TRUE(connect(plug(transform, "worldMatrix"), xform));
    EXPECT_EQ(xform.source().name(), "xf.worldMatrix[0]");
    EXPECT_TRUE(connect(plug(transform, "translate"), triple));
    EXPECT_FALSE(connect(plug(from, "sum"), plug(to, "sum"))); // not writable

    // Neither an attribute that is not connectable nor one that is not readable.
    const KObject sealed = numeric.create("sealed", "sl", KFnNumericData::kDouble);
    numeric.setConnectable(false);
    const KObject hidden = numeric.create("hiddenOut", "ho", KFnNumericData::kDouble);
    numeric.setReadable(false);
    EXPECT_FALSE(connect(plug(from, "sum"), add(to, sealed)));
    EXPECT_FALSE(connect(add(from, hidden), plug(to, "first")));
}

TEST_F(ConnectionRulesTest, GenericSourceFeedsTypedInputsOfADataTypeItAccepts) {
    const KTypeId pluginType(0x7f001);
    KFnGenericAttribute generic;
    const KObject source = generic.create("anything", "any");
    generic.addDataAccept(KFnData::kMesh);
    generic.addDataAccept(pluginType);
    const KPlug anything = add(from, source);
    KFnTypedAttribute typed;
    EXPECT_TRUE(connect(anything, add(to, typed.create("carried", "ca", pluginType))));
    EXPECT_TRUE(connect(anything, add(to, typed.create("shape", "sh", KFnData::kMesh))));
    EXPECT_FALSE(connect(anything, add(to, typed.create("other", "ot", KTypeId(0x7f002)))));
    EXPECT_FALSE(connect(anything, add(to, typed.create("text", "tx", KFnData::kString))));
}

TEST_F(ConnectionRulesTest, WholeCompoundConnectionFeedsEachChild) {
    ASSERT_TRUE(connect(plug(from, "pair"), plug(to, "pair")));
    plug(from, "first").setDouble(10.0);
    plug(from, "second").setDouble(20.0);
    EXPECT_DOUBLE_EQ(plug(to, "second").asDouble(), 20.0);
    EXPECT_EQ(plug(to, "first").source(), plug(from, "first"));
    EXPECT_DOUBLE_EQ(plug(to, "sum").asDouble(), 30.0);
    EXPECT_FALSE(connect(plug(from, "sum"), plug(to, "first"))); // fed through its compound
}

TEST_F(ConnectionRulesTest, WholeArrayConnectionFeedsEachElement) {
    KPlug values = plug(from, "values");
    values.elementByLogicalIndex(1).setDouble(1.0);
    values.elementByLogicalIndex(4).setDouble(4.0);
    ASSERT_TRUE(connect(plug(from, "copies"), plug(to, "values")));
    EXPECT_DOUBLE_EQ(plug(to, "sum").asDouble(), 2.0 + 8.0 + 3.0);
    EXPECT_DOUBLE_EQ(plug(to, "values").elementByLogicalIndex(4).asDouble(), 8.0);
    KPlugArray destinations;
    ASSERT_TRUE(plug(from, "copies").elementByLogicalIndex(4).destinations(destinations));
    EXPECT_EQ(destinations[0].name(), "to.values[4]");
}

TEST_F(ConnectionRulesTest, SingleSourceIntoArrayTakesNextFreeIndex) {
    plug(to, "values").elementByLogicalIndex(2).setDouble(5.0);
    ASSERT_TRUE(connect(plug(from, "sum"), plug(to, "values")));
    ASSERT_TRUE(connect(plug(from, "first"), plug(to, "values")));
    KIntArray indices;
    plug(to, "values").getExistingArrayAttributeIndices(indices);
    EXPECT_EQ(indices, (KIntArray{2, 3, 4}));
    EXPECT_DOUBLE_EQ(plug(to, "sum").asDouble(), 5.0 + 3.0 + 1.0 + 3.0);
}

TEST_F(ConnectionRulesTest, RemovingEndsDropsConnectionsAndDirtiesDownstream) {
    KFnNumericAttribute numeric;
    const KObject extra = numeric.create("extra", "ex", KFnNumericData::kDouble);
    const KPlug extraPlug = add(from, extra);
    ASSERT_TRUE(connect(extraPlug, plug(to, "first")));
    ASSERT_TRUE(KFnDependencyNode(from).removeAttribute(extra));
    EXPECT_FALSE(plug(to, "first").isConnected());

    ASSERT_TRUE(connect(plug(from, "sum"), plug(to, "second")));
    plug(from, "first").setDouble(4.0);
    EXPECT_DOUBLE_EQ(plug(to, "sum").asDouble(), 1.0 + 6.0);
    ASSERT_TRUE(KGlobal::executeCommand("delete from"));
    EXPECT_FALSE(plug(to, "second").isConnected());
    EXPECT_DOUBLE_EQ(plug(to, "second").asDouble(), 6.0); // keeps what it received
}

} // namespace
