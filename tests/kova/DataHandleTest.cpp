#include "KovaTestSupport.h"

#include <kova/KArrayDataBuilder.h>
#include <kova/KArrayDataHandle.h>
#include <kova/KFnCompoundAttribute.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnGenericAttribute.h>
#include <kova/KFnMatrixAttribute.h>
#include <kova/KFnStringData.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KFnUnitAttribute.h>
#include <kova/KFnVectorArrayData.h>

namespace {

class DataHandleTest : public KovaTest {};

TEST_F(DataHandleTest, BuilderAddsAndRemovesElementsByLogicalIndex) {
    KFnNumericAttribute numeric;
    const KObject attribute = numeric.create("items", "it", KFnNumericData::kInt, 3.0);
    numeric.setArray(true);
    KArrayDataBuilder builder(attribute);
    builder.addElement(5).setInt(50);
    builder.addElement(1);
    EXPECT_EQ(builder.addLast().asInt(), 3); // index 6, the default
    EXPECT_EQ(builder.elementCount(), 3u);
    EXPECT_TRUE(builder.removeElement(1));
    EXPECT_FALSE(builder.removeElement(1));
    ASSERT_TRUE(builder.growArray(2));
    EXPECT_EQ(builder.elementCount(), 4u);

    const KObject node = createNode("testScale");
    ASSERT_TRUE(KFnDependencyNode(node).addAttribute(attribute));
    KPlug items = plug(node, "items");
    items.elementByLogicalIndex(0).setInt(9);

    KDataHandle value;
    ASSERT_TRUE(items.getValue(value));
    KArrayDataHandle array(value);
    EXPECT_EQ(array.elementCount(), 1u);
    ASSERT_TRUE(array.set(builder));
    EXPECT_EQ(array.elementCount(), 4u);
    EXPECT_EQ(array.elementIndex(), 5u);
    EXPECT_EQ(array.inputValue().asInt(), 50);
    ASSERT_TRUE(array.jumpToElement(8));
    EXPECT_EQ(array.inputValue().asInt(), 3);
    EXPECT_FALSE(array.jumpToElement(1));
    ASSERT_TRUE(array.jumpToArrayElement(1));
    EXPECT_EQ(array.elementIndex(), 6u);
    EXPECT_TRUE(array.next());
    EXPECT_TRUE(array.next());
    EXPECT_FALSE(array.next());
    // getValue gave a copy: the plug itself is unchanged.
    EXPECT_EQ(items.numElements(), 1u);
}

TEST_F(DataHandleTest, TypedAndGenericAttributesCheckTheDataKind) {
    KFnTypedAttribute typed;
    const KObject text =
        typed.create("label", "lb", KFnData::kString, KFnStringData().create("default"));
    KFnGenericAttribute generic;
    const KObject any = generic.create("payload", "pl");
    generic.addDataAccept(KFnData::kDoubleArray);
    EXPECT_TRUE(generic.accepts(KFnData::kDoubleArray));
    EXPECT_FALSE(generic.accepts(KFnData::kVectorArray));

    const KObject node = createNode("testScale");
    KFnDependencyNode fn(node);
    ASSERT_TRUE(fn.addAttribute(text));
    ASSERT_TRUE(fn.addAttribute(any));
    EXPECT_EQ(plug(node, "label").asString(), "default");

    KPlug payload = plug(node, "payload");
    const KObject doubles = KFnDoubleArrayData().create(KDoubleArray{1.0, 2.0});
    ASSERT_TRUE(payload.setKObject(doubles));
    KDataHandle handle;
    ASSERT_TRUE(payload.getValue(handle));
    EXPECT_EQ(handle.type(), KFnData::kDoubleArray);
    EXPECT_EQ(handle.data(), doubles); // shared, not copied
    EXPECT_EQ(KFnDoubleArrayData(handle.data()).array(), (KDoubleArray{1.0, 2.0}));
    payload.destructHandle(handle);
    EXPECT_TRUE(handle.isNull());

    EXPECT_FALSE(payload.setKObject(KFnVectorArrayData().create()));
    EXPECT_FALSE(payload.setString("text"));
    EXPECT_FALSE(plug(node, "label").setKObject(doubles));
}

TEST_F(DataHandleTest, NumericKindsMatricesAndTimes) {
    KFnNumericAttribute numeric;
    const KObject flag = numeric.create("flag", "fl", KFnNumericData::kBoolean, 0.0);
    const KObject count = numeric.create("count", "ct", KFnNumericData::kInt, 0.0);
    KFnMatrixAttribute matrixFn;
    const KObject matrix = matrixFn.create("xform", "xf", KFnMatrixAttribute::kFloat);
    KFnUnitAttribute unit;
    const KObject when = unit.create("when", "wh", KTime(12.0, KTime::k24FPS));
    const KObject node = createNode("testScale");
    KFnDependencyNode fn(node);
    for (const KObject& a : {flag, count, matrix, when}) {
        ASSERT_TRUE(fn.addAttribute(a));
    }
    plug(node, "flag").setDouble(0.25);
    EXPECT_TRUE(plug(node, "flag").asBool());
    EXPECT_DOUBLE_EQ(plug(node, "flag").asDouble(), 1.0);
    plug(node, "count").setDouble(7.9);
    EXPECT_EQ(plug(node, "count").asInt(), 7);

    EXPECT_EQ(plug(node, "xform").asMatrix(), KMatrix::identity);
    KMatrix m;
    m(3, 0) = 0.1;
    ASSERT_TRUE(plug(node, "xform").setMatrix(m));
    EXPECT_EQ(plug(node, "xform").asMatrix()(3, 0), static_cast<double>(0.1f)); // float storage

    EXPECT_EQ(plug(node, "when").asTime(), KTime(0.5, KTime::kSeconds));
    ASSERT_TRUE(plug(node, "when").setTime(KTime(1.0, KTime::kSeconds)));
    EXPECT_DOUBLE_EQ(plug(node, "when").asTime().as(KTime::k24FPS), 24.0);
    EXPECT_FALSE(plug(node, "count").setTime(KTime(1.0)));
}

TEST_F(DataHandleTest, CompoundAttributeRules) {
    KFnNumericAttribute numeric;
    const KObject child = numeric.create("inner", "inr", KFnNumericData::kFloat, 0.0);
    KFnCompoundAttribute compound;
    const KObject parent = compound.create("outer", "out2");
    ASSERT_TRUE(compound.addChild(child));
    EXPECT_FALSE(compound.addChild(child));  // has a parent now
    EXPECT_FALSE(compound.addChild(parent)); // itself
    EXPECT_EQ(KFnAttribute(child).parent(), parent);
    EXPECT_EQ(compound.child(0), child);

    const KObject node = createNode("testScale");
    EXPECT_FALSE(KFnDependencyNode(node).addAttribute(child)); // add the compound instead
    ASSERT_TRUE(KFnDependencyNode(node).addAttribute(parent));
    EXPECT_FALSE(compound.addChild(numeric.create("late", "lt", KFnNumericData::kFloat)));
    EXPECT_TRUE(KFnDependencyNode(node).hasAttribute("inr"));
    EXPECT_FALSE(KFnDependencyNode(node).addAttribute(
        numeric.create("input", "x2", KFnNumericData::kFloat)));
}

} // namespace
